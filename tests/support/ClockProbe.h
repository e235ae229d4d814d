// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_CLOCKPROBE_H_
#define TESTS_SUPPORT_CLOCKPROBE_H_

#include <ctime>

namespace chartbridge::testing {

/// The clock that the library reads (`ftime`, `ctime`) and its look at the environment (`getenv`),
/// logged, with the clock's reading chosen by the test.
///
/// Events: "ftime", "ctime(<seconds>)" and "getenv(DumpChartTimePath)"; other variables are not
/// logged.
class ClockProbe {
 public:
  static ClockProbe& Get();

  /// Back to the real clock.
  void Reset();
  /// What the clock says from now on.
  void Set(std::time_t seconds, unsigned short milliseconds);

  bool IsSet() const { return _set; }
  std::time_t Seconds() const { return _seconds; }
  unsigned short Milliseconds() const { return _milliseconds; }

 private:
  bool _set = false;
  std::time_t _seconds = 0;
  unsigned short _milliseconds = 0;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_CLOCKPROBE_H_
