// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ClockProbe.h"

#include <sys/timeb.h>

#include <cstring>
#include <string>

#include "tests/support/EventLog.h"
#include "tests/support/KitScope.h"

using chartbridge::testing::ClockProbe;
using chartbridge::testing::EventLog;
using chartbridge::testing::KitScope;
using chartbridge::testing::Source;

extern "C" {
int RealFtime(timeb* now) __asm__("__real_ftime");
char* RealCtime(const std::time_t* seconds) __asm__("__real_ctime");
char* RealGetenv(const char* name) __asm__("__real_getenv");
int WrapFtime(timeb* now) __asm__("__wrap_ftime");
char* WrapCtime(const std::time_t* seconds) __asm__("__wrap_ctime");
char* WrapGetenv(const char* name) __asm__("__wrap_getenv");

int WrapFtime(timeb* now) {
  const KitScope kit;
  EventLog::Get().Record(Source::kClock, "ftime");
  const ClockProbe& clock = ClockProbe::Get();
  if (!clock.IsSet()) return RealFtime(now);
  now->time = clock.Seconds();
  now->millitm = clock.Milliseconds();
  return 0;
}

char* WrapCtime(const std::time_t* seconds) {
  const KitScope kit;
  EventLog::Get().Record(Source::kClock, "ctime(" + std::to_string(*seconds) + ")");
  return RealCtime(seconds);
}

char* WrapGetenv(const char* name) {
  if (std::strcmp(name, "DumpChartTimePath") == 0) {
    const KitScope kit;
    EventLog::Get().Record(Source::kClock, "getenv(DumpChartTimePath)");
  }
  return RealGetenv(name);
}
}

namespace chartbridge::testing {

ClockProbe& ClockProbe::Get() {
  static ClockProbe clock;
  return clock;
}

void ClockProbe::Reset() { _set = false; }

void ClockProbe::Set(std::time_t seconds, unsigned short milliseconds) {
  _set = true;
  _seconds = seconds;
  _milliseconds = milliseconds;
}

}  // namespace chartbridge::testing
