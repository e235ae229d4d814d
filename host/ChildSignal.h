// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_CHILDSIGNAL_H_
#define HOST_CHILDSIGNAL_H_

#include <jni.h>

namespace chartbridge {

/// Keeps SIGCHLD as the host has it.
///
/// Java's class for processes sets SIGCHLD to its default action when it is initialised, once. That
/// happens at the first process that Java starts, and on Java 25 at the first look into the
/// environment. Here it happens at once, and the host's action is put back.
///
/// @param env of a JVM that has just been started
void KeepChildSignal(JNIEnv* env);

}  // namespace chartbridge

#endif  // HOST_CHILDSIGNAL_H_
