// SPDX-License-Identifier: Apache-2.0
#include "guard/JavaErrors.h"

#include <cstdio>

#include "guard/Caught.h"
#include "guard/JvmFunctions.h"

namespace chartbridge {
namespace {

constexpr const char* kClassNames[] = {
    "java/lang/NullPointerException",     "java/lang/NoClassDefFoundError",
    "java/lang/NoSuchMethodError",        "java/lang/OutOfMemoryError",
    "java/lang/IllegalArgumentException",
};
constexpr int kErrors = sizeof(kClassNames) / sizeof(kClassNames[0]);

// Global references for the life of the process: a class looked up only when memory is short would
// come too late.
jclass classes[kErrors];

jclass FindGlobal(JNIEnv* env, const char* name) {
  jclass local = jvm.FindClass(env, name);
  if (local == nullptr) return nullptr;
  auto global = static_cast<jclass>(jvm.NewGlobalRef(env, local));
  jvm.DeleteLocalRef(env, local);
  return global;
}

}  // namespace

bool PrepareJavaErrors(JNIEnv* env) {
  for (int i = 0; i < kErrors; ++i) {
    classes[i] = FindGlobal(env, kClassNames[i]);
    if (classes[i] == nullptr) return false;
  }
  return true;
}

void Raise(JNIEnv* env, JavaError error, const char* function, const char* what) {
  if (jvm.ExceptionCheck(env)) return;
  char message[200];
  std::snprintf(message, sizeof message, "JNI %s: %s", function, what);
  jvm.ThrowNew(env, classes[static_cast<int>(error)], message);
}

void Refuse(JNIEnv* env, jniguard_kind kind, JavaError error, const char* function,
            const char* what) {
  Caught(kind, function, what);
  Raise(env, error, function, what);
}

}  // namespace chartbridge
