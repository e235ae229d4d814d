// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_RUNNINGJVM_H_
#define HOST_RUNNINGJVM_H_

#include <jni.h>

namespace chartbridge {

/// The process's JVM as the host library knows it. Safe on any thread.
class RunningJvm {
 public:
  /// The JVM, or null before its start and after its end.
  static JavaVM* Get();

  /// Starts the JVM by the present settings if none was started. True when it runs afterwards.
  static bool Start();

  /// Ends the JVM in order. True when one ran and ended cleanly.
  static bool Destroy();

  /// The calling thread's env; null when there is no JVM or the thread is not attached.
  static JNIEnv* OwnEnv();

  /// The calling thread's env, attaching the thread as a daemon if needed; null when that fails.
  static JNIEnv* Attach();
};

}  // namespace chartbridge

#endif  // HOST_RUNNINGJVM_H_
