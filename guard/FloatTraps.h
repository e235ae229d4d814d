// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_FLOATTRAPS_H_
#define GUARD_FLOATTRAPS_H_

#include "guard/JvmFunctions.h"

namespace chartbridge {

/// Runs every function of the table without the floating-point traps of its caller.
///
/// The JVM computes in floating point on the threads that call it: when it loads a class, when it
/// makes an array and has to make room, when it compiles. A caller that has traps enabled would die
/// of what is harmless there. Where no trap is enabled, and that is nearly everywhere, nothing is
/// changed before the call or after it. Otherwise the caller's traps are enabled again afterwards,
/// unless Java has enabled some itself: that stays. Rounding and denormals are nobody's business
/// here.
///
/// The functions with `...` are left out: the guard does them by those with a `va_list`.
void HoldTraps(JniTable& table);

/// The traps of the calling thread, held for the life of the object.
class TrapScope {
 public:
  TrapScope();
  ~TrapScope();

  TrapScope(const TrapScope&) = delete;
  TrapScope& operator=(const TrapScope&) = delete;

  /// Whether the calling thread has any trap enabled.
  static bool IsNeeded();

 private:
  unsigned _sse;
  unsigned short _x87;
};

}  // namespace chartbridge

#endif  // GUARD_FLOATTRAPS_H_
