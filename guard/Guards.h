// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_GUARDS_H_
#define GUARD_GUARDS_H_

#include "guard/JvmFunctions.h"

namespace chartbridge {

// Each of these puts one family of guarded functions into `table`, a copy of the JVM's own. `jvm`
// must be filled before any of them can be called.

/// Local, global and weak references, local frames, and exceptions.
void GuardReferences(JniTable& table);
/// Classes, method IDs and object types.
void GuardLookups(JniTable& table);
/// Object construction and method calls, in their plain, va_list and array forms.
void GuardCalls(JniTable& table);
/// Array lengths, regions and object elements.
void GuardArrays(JniTable& table);
/// Get and Release of primitive array elements.
void GuardElements(JniTable& table);
/// Strings and direct buffers.
void GuardTexts(JniTable& table);

}  // namespace chartbridge

#endif  // GUARD_GUARDS_H_
