// SPDX-License-Identifier: Apache-2.0
#include "guard/OwnEnv.h"

#include "guard/Caught.h"
#include "guard/FloatTraps.h"

namespace chartbridge {
namespace {

JavaVM* theVm = nullptr;

JNIEnv* AskJvm() {
  void* env = nullptr;
  if (theVm->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK) return static_cast<JNIEnv*>(env);
  return nullptr;
}

// Never detached again: references that the thread makes from here on may be used by others.
JNIEnv* Attach() {
  void* env = nullptr;
  const TrapScope traps;
  JavaVMAttachArgs arguments{JNI_VERSION_1_8, nullptr, nullptr};
  if (theVm->AttachCurrentThreadAsDaemon(&env, &arguments) != JNI_OK) return nullptr;
  return static_cast<JNIEnv*>(env);
}

}  // namespace

JNIEnv* FindOwnEnv(JNIEnv* given) {
  JNIEnv* own = AskJvm();
  const bool attached = own != nullptr;
  if (!attached) own = Attach();
  // A JVM that takes no more threads leaves no better choice than what the caller asked for.
  if (own == nullptr) return given;
  knownOwnEnv = own;
  if (own != given) {
    Caught(JNIGUARD_OTHER_THREAD, "JNI",
           attached ? "the env belongs to another thread"
                    : "the env belongs to another thread, and this one was not attached");
  }
  return own;
}

void SetOwnEnvVm(JavaVM* vm) { theVm = vm; }

void ForgetOwnEnv() { knownOwnEnv = nullptr; }

}  // namespace chartbridge
