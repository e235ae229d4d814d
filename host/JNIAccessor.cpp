// SPDX-License-Identifier: Apache-2.0
#include "platform/JNIAccessor.h"

#include <string>

#include "host/IcuText.h"

namespace {

void RaiseUnsupportedEncoding(JNIEnv* env, const char* encoding) {
  if (env->ExceptionCheck()) return;
  jclass type = env->FindClass("java/io/UnsupportedEncodingException");
  if (type != nullptr) env->ThrowNew(type, encoding);
}

}  // namespace

JNIAccessor::JNIAccessor(JNIEnv* env) : _env(env) {}

JNIAccessor::~JNIAccessor() = default;

// Not NewStringUTF: that takes Java's modified UTF-8, in which characters beyond the basic plane
// look different.
jstring JNIAccessor::ToJString(const char* text, const char* encoding) const {
  if (_env == nullptr || text == nullptr) return nullptr;
  std::u16string decoded;
  if (!chartbridge::DecodeText(text, encoding, decoded)) {
    RaiseUnsupportedEncoding(_env, encoding == nullptr ? "(default)" : encoding);
    return nullptr;
  }
  return _env->NewString(reinterpret_cast<const jchar*>(decoded.data()),
                         static_cast<jsize>(decoded.size()));
}
