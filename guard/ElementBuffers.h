// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_ELEMENTBUFFERS_H_
#define GUARD_ELEMENTBUFFERS_H_

#include <jni.h>

#include <cstddef>
#include <cstdint>

namespace chartbridge {

/// Where the elements in a buffer came from.
struct ElementSource {
  /// The reference that they were obtained through. Its owner may have deleted it since.
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
  /// Memory for `bytes` bytes, 16-byte aligned and never null for 0. Null when memory is short.
  static void* New(const ElementSource& source, std::size_t bytes);

  /// Tells where a buffer that is out came from. False for every other address, and for null.
  static bool Find(const void* buffer, ElementSource& source);

  /// As `Find`, and takes the buffer off the list, so that exactly one caller frees it.
  static bool Take(const void* buffer, ElementSource& source);

  /// Frees a buffer that was taken.
  static void Free(void* buffer);
};

}  // namespace chartbridge

#endif  // GUARD_ELEMENTBUFFERS_H_
