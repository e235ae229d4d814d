// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_OWNENV_H_
#define GUARD_OWNENV_H_

#include <jni.h>

namespace chartbridge {

/// The calling thread's env as last seen, or null. The initial-exec model keeps the check below at
/// a load and a compare.
__attribute__((tls_model("initial-exec"))) inline thread_local JNIEnv* knownOwnEnv = nullptr;

/// The slow way of `OwnEnv`: asks the JVM, counts a foreign env, attaches the thread as a daemon if
/// it is not attached.
JNIEnv* FindOwnEnv(JNIEnv* given);

/// The env of the calling thread, whichever env native code used.
inline JNIEnv* OwnEnv(JNIEnv* given) {
  return __builtin_expect(given == knownOwnEnv, 1) ? given : FindOwnEnv(given);
}

/// Tells which JVM to ask. Called once, before the first `OwnEnv`.
void SetOwnEnvVm(JavaVM* vm);

/// To be called on a thread that leaves the JVM: its env is no longer valid, and its memory may
/// become another thread's.
void ForgetOwnEnv();

}  // namespace chartbridge

#endif  // GUARD_OWNENV_H_
