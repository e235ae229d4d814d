// SPDX-License-Identifier: Apache-2.0
#include "host/JavaThreadStart.h"

#include <dlfcn.h>

#include "host/SignalScope.h"

namespace chartbridge {
namespace {

using StartFunction = void(JNICALL*)(JNIEnv*, jobject);

StartFunction start = nullptr;

void JNICALL StartBlocked(JNIEnv* env, jobject thread) {
  const SignalScope signals;
  start(env, thread);
}

}  // namespace

bool BlockSignalsInJavaThreads(JNIEnv* env, void* library) {
  // What java.lang.Thread binds its method to, under this name in every JVM since the first.
  start = reinterpret_cast<StartFunction>(dlsym(library, "JVM_StartThread"));
  if (start == nullptr) return false;
  jclass type = env->FindClass("java/lang/Thread");
  char name[] = "start0";
  char signature[] = "()V";
  const JNINativeMethod method = {name, signature, reinterpret_cast<void*>(&StartBlocked)};
  const bool isBound = type != nullptr && env->RegisterNatives(type, &method, 1) == JNI_OK;
  env->ExceptionClear();
  env->DeleteLocalRef(type);
  return isBound;
}

}  // namespace chartbridge
