// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_MALLOCPROBE_H_
#define TESTS_SUPPORT_MALLOCPROBE_H_

#include <cstddef>
#include <vector>

namespace chartbridge::testing {

/// The `malloc` and `free` that the library itself calls on this thread, from `Start` on. What the
/// test kit allocates does not count.
class MallocProbe {
 public:
  struct Block {
    void* memory;
    std::size_t size;
    bool freed;
  };

  static MallocProbe& Get();

  void Start();
  /// Stops the recording and frees what the library left, so that it counts as no leak of the test.
  void Stop();

  /// Lets the next call find no memory.
  void FailNext() { _fail_next = true; }

  const std::vector<Block>& Blocks() const { return _blocks; }

  /// Called in place of the C library.
  void* Allocate(std::size_t size);
  void Free(void* memory);

 private:
  bool _recording = false;
  bool _fail_next = false;
  std::vector<Block> _blocks;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_MALLOCPROBE_H_
