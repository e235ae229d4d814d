// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorJavaError.h"

#include "app/DoctorJni.h"
#include "app/NativeText.h"

namespace chartbridge {

namespace {

constexpr int kCausesShown = 4;

std::string TypeOf(JNIEnv* env, jthrowable error) {
  return DoctorCallForText(env, env->GetObjectClass(error), "getName");
}

std::string MessageOf(JNIEnv* env, jthrowable error) {
  return OnOneLine(DoctorCallForText(env, error, "getMessage"));
}

std::string TextOf(const std::string& type, const std::string& message) {
  return message.empty() ? type : type + ": " + message;
}

}  // namespace

std::optional<DoctorJavaError> DoctorJavaError::Take(JNIEnv* env) {
  jthrowable thrown = env->ExceptionOccurred();
  if (thrown == nullptr) return std::nullopt;
  env->ExceptionClear();

  DoctorJavaError error;
  error._type = TypeOf(env, thrown);
  error._message = MessageOf(env, thrown);
  error._text = TextOf(error._type, error._message);
  for (int count = 0; count < kCausesShown; ++count) {
    thrown =
        static_cast<jthrowable>(DoctorCall(env, thrown, "getCause", "()Ljava/lang/Throwable;"));
    if (thrown == nullptr) break;
    error._text += ", caused by " + TextOf(TypeOf(env, thrown), MessageOf(env, thrown));
  }
  return error;
}

}  // namespace chartbridge
