// SPDX-License-Identifier: Apache-2.0
#include "bench/StraightLineConversion.h"

#include <cstddef>

namespace chartbridge {

StraightLineConversion::StraightLineConversion(JNIEnv* env)
    : _env(env), _class(env->FindClass("com/tesk/vizconverter/VizConverter")), _object(nullptr) {
  _object = env->NewObject(_class, env->GetMethodID(_class, "<init>", "()V"));
}

bool StraightLineConversion::Convert(const std::string& input, std::string& output) const {
  const auto size = static_cast<jsize>(input.size());
  const jbyteArray array = _env->NewByteArray(size);
  if (_env->ExceptionOccurred() != nullptr) return false;
  _env->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(input.data()));
  if (_env->ExceptionOccurred() != nullptr) return false;
  const jmethodID method = _env->GetMethodID(_class, "ConvertGPL", "([B)[B");
  const auto result = static_cast<jbyteArray>(_env->CallObjectMethod(_object, method, array));
  if (_env->ExceptionOccurred() != nullptr) return false;
  const jsize length = _env->GetArrayLength(result);
  jbyte* elements = _env->GetByteArrayElements(result, nullptr);
  output.assign(reinterpret_cast<const char*>(elements), static_cast<std::size_t>(length));
  _env->ReleaseByteArrayElements(result, elements, JNI_ABORT);
  return _env->ExceptionOccurred() == nullptr;
}

}  // namespace chartbridge
