// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_CAUGHT_H_
#define GUARD_CAUGHT_H_

#include "guard/jniguard.h"

namespace chartbridge {

/// Counts one caught call, and logs "`function`: `what`" when logging is on. Both texts are plain
/// literals.
void Caught(jniguard_kind kind, const char* function, const char* what);

/// Turns the log on or off.
void LogCaught(bool on);

}  // namespace chartbridge

#endif  // GUARD_CAUGHT_H_
