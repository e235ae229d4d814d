// SPDX-License-Identifier: Apache-2.0
#include "host/ChildSignal.h"

#include <csignal>

namespace chartbridge {

void KeepChildSignal(JNIEnv* env) {
  struct sigaction own {};
  const bool isKnown = sigaction(SIGCHLD, nullptr, &own) == 0;
  jclass type = env->FindClass("java/lang/ProcessImpl");
  if (isKnown) sigaction(SIGCHLD, &own, nullptr);
  // Another JVM may have no such class.
  env->ExceptionClear();
  env->DeleteLocalRef(type);
}

}  // namespace chartbridge
