// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_JVMFUNCTIONS_H_
#define GUARD_JVMFUNCTIONS_H_

#include <jni.h>

namespace chartbridge {

using JniTable = JNINativeInterface_;

/// The JVM's own JNI functions, as they were before the guard replaced some of them.
///
/// Written once, before the replaced functions can be called. The guard calls JNI only through this
/// table.
inline JniTable jvm{};

}  // namespace chartbridge

#endif  // GUARD_JVMFUNCTIONS_H_
