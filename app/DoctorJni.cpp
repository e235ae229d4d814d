// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorJni.h"

#include "bridge/JAccessor.h"
#include "bridge/UnicodeConverter.h"

namespace chartbridge {

std::string DoctorText(JNIEnv* env, jstring text) {
  return JAccessor(env).FromJString(text, "utf-8");
}

jstring DoctorString(JNIEnv* env, const std::string& text) {
  const UnicodeConverter converter(text);
  if (converter.length() == 0) return nullptr;
  jstring result = env->NewString(converter.toString(), static_cast<jsize>(converter.length()));
  if (env->ExceptionCheck() == JNI_FALSE) return result;
  env->ExceptionClear();
  return nullptr;
}

jobject DoctorCall(JNIEnv* env, jobject object, const char* method, const char* signature) {
  jclass type = env->GetObjectClass(object);
  jmethodID id = env->GetMethodID(type, method, signature);
  jobject result = id == nullptr ? nullptr : env->CallObjectMethod(object, id);
  if (env->ExceptionCheck() == JNI_FALSE) return result;
  env->ExceptionClear();
  return nullptr;
}

std::string DoctorCallForText(JNIEnv* env, jobject object, const char* method) {
  return DoctorText(env,
                    static_cast<jstring>(DoctorCall(env, object, method, "()Ljava/lang/String;")));
}

std::string DoctorProperty(JNIEnv* env, const char* name) {
  jclass system = env->FindClass("java/lang/System");
  jmethodID get =
      system == nullptr
          ? nullptr
          : env->GetStaticMethodID(system, "getProperty", "(Ljava/lang/String;)Ljava/lang/String;");
  jstring key = get == nullptr ? nullptr : env->NewStringUTF(name);
  jobject value = key == nullptr ? nullptr : env->CallStaticObjectMethod(system, get, key);
  if (env->ExceptionCheck() == JNI_FALSE) return DoctorText(env, static_cast<jstring>(value));
  env->ExceptionClear();
  return "";
}

}  // namespace chartbridge
