// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_FLOATSCOPE_H_
#define HOST_FLOATSCOPE_H_

#include <cfenv>

namespace chartbridge {

/// The default floating-point environment on the calling thread for the life of the object, and the
/// thread's own afterwards: rounding, traps and flags.
///
/// The JVM counts on the default one. Under a trap, a division in its own code that is harmless
/// otherwise ends the process, and every thread that it starts inherits the starter's traps.
class FloatScope {
 public:
  FloatScope();
  ~FloatScope();

  FloatScope(const FloatScope&) = delete;
  FloatScope& operator=(const FloatScope&) = delete;

 private:
  std::fenv_t _own{};
  bool _isSaved;
};

}  // namespace chartbridge

#endif  // HOST_FLOATSCOPE_H_
