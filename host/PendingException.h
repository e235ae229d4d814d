// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_PENDINGEXCEPTION_H_
#define HOST_PENDINGEXCEPTION_H_

#include <jni.h>

#include <string>

namespace chartbridge {

/// Clears the Java exception that is pending on the env's thread and tells it in one line of UTF-8:
/// its `toString`, or its class where that throws too. Empty when none is pending.
///
/// The references that it makes are local and stay.
std::string TakePendingException(JNIEnv* env);

}  // namespace chartbridge

#endif  // HOST_PENDINGEXCEPTION_H_
