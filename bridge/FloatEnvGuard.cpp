// SPDX-License-Identifier: Apache-2.0
#include "bridge/FloatEnvGuard.h"

FloatEnvGuard::FloatEnvGuard() : saved(fegetenv(&env) == 0) {}

FloatEnvGuard::~FloatEnvGuard() {
  if (!saved) return;
  fesetenv(&env);
}
