// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JAVATHREADSTART_H_
#define HOST_JAVATHREADSTART_H_

#include <jni.h>

namespace chartbridge {

/// Lets Java threads begin with the signals from outside blocked, whoever starts them.
///
/// A thread has the signal mask of the one that starts it. For Java threads that is often a thread
/// of the host, when a chart is drawn first, and handlers of the host would run on it. This puts a
/// function in front of the JVM's own that blocks the signals while the thread is made.
///
/// @param env of a JVM that has just been started
/// @param library the JVM's library, as `dlopen` gave it
/// @return false, with nothing changed, where the JVM's own function is not found
bool BlockSignalsInJavaThreads(JNIEnv* env, void* library);

}  // namespace chartbridge

#endif  // HOST_JAVATHREADSTART_H_
