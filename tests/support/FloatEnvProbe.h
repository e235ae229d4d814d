// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FLOATENVPROBE_H_
#define TESTS_SUPPORT_FLOATENVPROBE_H_

#include <set>

namespace chartbridge::testing {

/// The library's `fegetenv` and `fesetenv`: logged, carried out, and made to fail where a test says
/// so.
///
/// Events: "fegetenv", "fegetenv fails", and "fesetenv" for a restore of the environment that was
/// saved last and not restored yet; a restore of any other one says so.
class FloatEnvProbe {
 public:
  static FloatEnvProbe& Get();

  /// Nothing fails from now on; the counting starts again.
  void Reset();
  /// Lets the nth save from the last `Reset` (1 is the first) fail.
  void FailSave(int nth);
  void FailEverySave();

  /// Called in place of the C library.
  int Save(void* env);
  int Restore(const void* env);

 private:
  std::set<int> _failing;
  bool _all_fail = false;
  int _saves = 0;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FLOATENVPROBE_H_
