// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_TESKJVM_H_
#define PLATFORM_TESKJVM_H_

#include <jni.h>

#include "platform/CriticalSection.h"

/// The process's one Java virtual machine. The host owns it and decides how it is found and with
/// which options it starts.
class TeskJVM {
 public:
  /// The host's JVM object, or null when the host has none. The library never deletes it.
  static TeskJVM* GetInstance();

  /// The process-wide recursive lock that serialises all Java work of the library.
  static CriticalSection& CritSect();

  /// Creates the JVM if there is none yet. True when it runs afterwards. May be called on any
  /// thread, also when it runs already.
  bool StartJVM();

  /// Whether the JVM exists.
  bool IsStarted();

  /// A `JNIEnv*` that is valid for the calling thread, or null when there is none.
  JNIEnv* GetEnv();

  /// Attaches the calling thread if needed and stores its `JNIEnv*` in `*env`.
  ///
  /// The library sets `*env` to null first and ignores the result: an implementation that cannot
  /// attach leaves it null, and the operation then ends in its failure value. A thread must stay
  /// attached while Java objects made on it are in use.
  bool AttachCurrentThread(JNIEnv** env);
};

#endif  // PLATFORM_TESKJVM_H_
