// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_FLOATENVGUARD_H_
#define BRIDGE_FLOATENVGUARD_H_

#include <cfenv>

/// Keeps the calling thread's floating-point environment (rounding mode, exception masks and flags)
/// across Java work, so that a JVM that changes it cannot change the host's arithmetic.
///
/// The environment is put back when the guard leaves its scope, by exception or not, and only if it
/// could be saved.
class FloatEnvGuard {
 public:
  FloatEnvGuard();
  ~FloatEnvGuard();

  FloatEnvGuard(const FloatEnvGuard&) = delete;
  FloatEnvGuard& operator=(const FloatEnvGuard&) = delete;

 private:
  std::fenv_t env;
  bool saved;
};

#endif  // BRIDGE_FLOATENVGUARD_H_
