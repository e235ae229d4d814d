// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FloatEnvProbe.h"

#include <cfenv>
#include <vector>

#include "tests/support/EventLog.h"
#include "tests/support/KitScope.h"

extern "C" {
int RealFegetenv(fenv_t* env) __asm__("__real_fegetenv");
int RealFesetenv(const fenv_t* env) __asm__("__real_fesetenv");
int WrapFegetenv(fenv_t* env) __asm__("__wrap_fegetenv");
int WrapFesetenv(const fenv_t* env) __asm__("__wrap_fesetenv");

int WrapFegetenv(fenv_t* env) { return chartbridge::testing::FloatEnvProbe::Get().Save(env); }
int WrapFesetenv(const fenv_t* env) {
  return chartbridge::testing::FloatEnvProbe::Get().Restore(env);
}
}

namespace chartbridge::testing {
namespace {

std::vector<const void*>& SavedEnvs() {
  static thread_local std::vector<const void*> saved;
  return saved;
}

}  // namespace

FloatEnvProbe& FloatEnvProbe::Get() {
  static thread_local FloatEnvProbe probe;
  return probe;
}

void FloatEnvProbe::Reset() {
  _failing.clear();
  _all_fail = false;
  _saves = 0;
  SavedEnvs().clear();
}

void FloatEnvProbe::FailSave(int nth) { _failing.insert(nth); }

void FloatEnvProbe::FailEverySave() { _all_fail = true; }

int FloatEnvProbe::Save(void* env) {
  const KitScope kit;
  ++_saves;
  if (_all_fail || _failing.count(_saves) != 0) {
    EventLog::Get().Record(Source::kFloatEnv, "fegetenv fails");
    return 1;
  }
  EventLog::Get().Record(Source::kFloatEnv, "fegetenv");
  SavedEnvs().push_back(env);
  return RealFegetenv(static_cast<fenv_t*>(env));
}

int FloatEnvProbe::Restore(const void* env) {
  const KitScope kit;
  const bool latest = !SavedEnvs().empty() && SavedEnvs().back() == env;
  EventLog::Get().Record(Source::kFloatEnv,
                         latest ? "fesetenv" : "fesetenv of another environment");
  if (latest) SavedEnvs().pop_back();
  return RealFesetenv(static_cast<const fenv_t*>(env));
}

}  // namespace chartbridge::testing
