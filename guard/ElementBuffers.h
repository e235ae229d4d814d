// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_ELEMENTBUFFERS_H_
#define GUARD_ELEMENTBUFFERS_H_

#include <jni.h>

#include <cstddef>
#include <cstdint>

namespace chartbridge {

/// Where the elements in a buffer came from.
struct ElementSource {
  /// The reference that they were obtained through. Its owner may have deleted it since. Null for
  /// the text of a string, which nothing is written back to.
  jarray array;
  jsize length;
  /// The JNI letter of the element type, for example 'B'; a letter of the guard's own for texts.
  char type;
  /// The `ReferenceEpoch` at that time.
  std::uint64_t epoch;
};

/// The copies of Java arrays and strings that native code has out.
///
/// A buffer is found by its address alone, so that releasing it depends on no array, and an address
/// that is not out is never touched. Safe on any thread.
class ElementBuffers {
 public:
  /// How much memory `bytes` bytes of elements get; all behind them is zero.
  ///
  /// Native code may read a little beyond the end: the result of an image map is three blocks, each
  /// of which begins with its length in four bytes, and the lengths are read without a look at how
  /// long the array is. Of an empty array that is three lengths, and behind one whole block two
  /// more. Texts need one zero unit. No more than that, since the allocator is fastest up to 1032
  /// bytes, and arrays of 1 kB are common.
  static constexpr std::size_t MemoryFor(std::size_t bytes) {
    constexpr std::size_t kLength = 4;
    return bytes + 2 * kLength > 3 * kLength ? bytes + 2 * kLength : 3 * kLength;
  }

  /// Memory for `bytes` bytes and the zeros behind them, 16-byte aligned and never null for 0. Null
  /// when memory is short.
  static void* New(const ElementSource& source, std::size_t bytes);

  /// Tells where a buffer that is out came from. False for every other address, and for null.
  static bool Find(const void* buffer, ElementSource& source);

  /// As `Find`, and takes the buffer off the list, so that exactly one caller frees it.
  static bool Take(const void* buffer, ElementSource& source);

  /// Frees a buffer that was taken.
  static void Free(void* buffer);

  /// Whether the buffer is out and is still the one that was obtained under that number.
  static bool IsOut(const void* buffer, std::uint64_t number);

  /// Frees the buffers that the calling thread has obtained since the mark (`ObtainedBuffers`) and
  /// that are still out. Returns how many there were.
  static std::size_t FreeObtainedSince(std::uint64_t mark);
};

}  // namespace chartbridge

#endif  // GUARD_ELEMENTBUFFERS_H_
