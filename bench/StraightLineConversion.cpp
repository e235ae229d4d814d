// SPDX-License-Identifier: Apache-2.0
#include "bench/StraightLineConversion.h"

#include <cfenv>
#include <cstddef>

namespace chartbridge {

StraightLineConversion::StraightLineConversion(JNIEnv* env, bool keepFloatEnv)
    : _env(env),
      _keepFloatEnv(keepFloatEnv),
      _class(env->FindClass("com/tesk/vizconverter/VizConverter")),
      _object(nullptr) {
  _object = env->NewObject(_class, env->GetMethodID(_class, "<init>", "()V"));
}

bool StraightLineConversion::Failed() const {
  if (!_keepFloatEnv) return _env->ExceptionOccurred() != nullptr;
  std::fenv_t floatEnv;
  fegetenv(&floatEnv);
  const bool failed = _env->ExceptionOccurred() != nullptr;
  fesetenv(&floatEnv);
  return failed;
}

bool StraightLineConversion::Convert(const std::string& input, std::string& output) const {
  const auto size = static_cast<jsize>(input.size());
  const jbyteArray array = _env->NewByteArray(size);
  if (Failed()) return false;
  _env->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(input.data()));
  if (Failed()) return false;
  const jmethodID method = _env->GetMethodID(_class, "ConvertGPL", "([B)[B");
  const auto result = static_cast<jbyteArray>(_env->CallObjectMethod(_object, method, array));
  if (Failed()) return false;
  const jsize length = _env->GetArrayLength(result);
  jbyte* elements = _env->GetByteArrayElements(result, nullptr);
  output.assign(reinterpret_cast<const char*>(elements), static_cast<std::size_t>(length));
  _env->ReleaseByteArrayElements(result, elements, JNI_ABORT);
  return !Failed();
}

}  // namespace chartbridge
