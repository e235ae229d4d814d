// SPDX-License-Identifier: Apache-2.0
#include "host/TemplateCallback.h"

#include <dlfcn.h>

#include "host/FloatScope.h"

namespace chartbridge {
namespace {

constexpr char kClass[] = "com/tesk/charteditor/template/ApplyTemplate";
constexpr char kFunction[] = "Java_com_tesk_charteditor_template_ApplyTemplate_apply";

bool Bind(JNIEnv* env, void* function) {
  jclass type = env->FindClass(kClass);
  bool isBound = false;
  if (type != nullptr) {
    char name[] = "apply";
    char signature[] = "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;";
    const JNINativeMethod method = {name, signature, function};
    isBound = env->RegisterNatives(type, &method, 1) == JNI_OK;
  }
  // A class that is not there, or another one of that name, is no fault of this host's.
  env->ExceptionClear();
  env->DeleteLocalRef(type);
  return isBound;
}

}  // namespace

bool BindTemplateCallback(JavaVM* vm) {
  void* function = dlsym(RTLD_DEFAULT, kFunction);
  void* own = nullptr;
  if (function == nullptr) return false;
  const FloatScope floats;
  const bool wasAttached = vm->GetEnv(&own, JNI_VERSION_1_8) == JNI_OK;
  if (!wasAttached && vm->AttachCurrentThreadAsDaemon(&own, nullptr) != JNI_OK) return false;
  auto* env = static_cast<JNIEnv*>(own);
  // An exception that the caller has yet to look at must stay.
  jthrowable pending = env->ExceptionOccurred();
  env->ExceptionClear();
  const bool isBound = Bind(env, function);
  if (pending != nullptr) env->Throw(pending);
  env->DeleteLocalRef(pending);
  if (!wasAttached) vm->DetachCurrentThread();
  return isBound;
}

}  // namespace chartbridge
