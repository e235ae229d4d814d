// SPDX-License-Identifier: Apache-2.0
#include "host/PendingException.h"

#include <cstddef>

#include "host/IcuText.h"

namespace chartbridge {
namespace {

std::string Utf8(JNIEnv* env, jstring string) {
  const jsize length = env->GetStringLength(string);
  std::u16string units(static_cast<std::size_t>(length), u'\0');
  env->GetStringRegion(string, 0, length, reinterpret_cast<jchar*>(units.data()));
  return ToUtf8(units);
}

// A text that an object gives by a method of its class or of one above it; empty when it throws.
std::string TextOf(JNIEnv* env, jobject object, const char* className, const char* method) {
  const jclass type = env->FindClass(className);
  const jmethodID id =
      type == nullptr ? nullptr : env->GetMethodID(type, method, "()Ljava/lang/String;");
  const auto text =
      id == nullptr ? nullptr : static_cast<jstring>(env->CallObjectMethod(object, id));
  if (env->ExceptionCheck() == JNI_TRUE) {
    env->ExceptionClear();
    return {};
  }
  return text == nullptr ? std::string() : Utf8(env, text);
}

}  // namespace

std::string TakePendingException(JNIEnv* env) {
  const jthrowable exception = env->ExceptionOccurred();
  if (exception == nullptr) return {};
  env->ExceptionClear();
  const std::string text = TextOf(env, exception, "java/lang/Throwable", "toString");
  if (!text.empty()) return text;
  const std::string type =
      TextOf(env, env->GetObjectClass(exception), "java/lang/Class", "getName");
  return (type.empty() ? "an exception" : type) + ", whose text cannot be had";
}

}  // namespace chartbridge
