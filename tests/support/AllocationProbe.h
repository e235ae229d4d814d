// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_ALLOCATIONPROBE_H_
#define TESTS_SUPPORT_ALLOCATIONPROBE_H_

#include <cstddef>
#include <map>

namespace chartbridge::testing {

/// The `operator new`, `operator new[]` and `operator delete[]` that the library calls.
///
/// When the log includes `Source::kMemory`, arrays are logged as "new[] <bytes> bytes: buffer <n>"
/// and "delete[] buffer <n>", numbered from the last `Reset` on. An allocation of this thread can
/// be made to throw `std::bad_alloc`. What the test kit itself allocates neither counts nor fails.
class AllocationProbe {
 public:
  static AllocationProbe& Get();

  void Reset();
  /// Lets the nth single allocation (1 is the next one) throw. One-shot.
  void FailNew(int nth) { _failing_new = nth; }
  /// Lets the nth array allocation (1 is the next one) throw. One-shot.
  void FailNewArray(int nth) { _failing_new_array = nth; }

  void* New(std::size_t size);
  void* NewArray(std::size_t size);
  void DeleteArray(void* block);

 private:
  int _failing_new = 0;
  int _failing_new_array = 0;
  int _buffers = 0;
  std::map<void*, int> _numbers;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_ALLOCATIONPROBE_H_
