// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_ELEMENTBUFFERS_H_
#define GUARD_ELEMENTBUFFERS_H_

#include <jni.h>

#include <cstddef>
#include <cstdint>

namespace chartbridge {

/// What the guard keeps in front of each element buffer that is out.
struct alignas(16) ElementHeader {
  /// The reference that the elements were obtained through. Its owner may have deleted it since.
  jarray array;
  jsize length;
  /// The JNI letter of the element type, for example 'B'.
  char type;
  /// The `ReferenceEpoch` at that time.
  std::uint64_t epoch;
};

/// The copies of Java arrays that native code has out.
///
/// A buffer is found by its address alone, so that releasing it depends on no array, and an address
/// that is not out is never touched. Safe on any thread.
class ElementBuffers {
 public:
  /// Memory for `bytes` bytes behind a header, 16-byte aligned and never null-sized. Null when
  /// memory is short.
  static void* New(const ElementHeader& header, std::size_t bytes);

  /// The header of a buffer that is out; null for every other address, and for null.
  static const ElementHeader* Find(const void* buffer);

  /// As `Find`, and takes the buffer off the list, so that exactly one caller frees it.
  static const ElementHeader* Take(const void* buffer);

  /// Frees a buffer that was taken.
  static void Free(void* buffer);
};

}  // namespace chartbridge

#endif  // GUARD_ELEMENTBUFFERS_H_
