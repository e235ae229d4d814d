// SPDX-License-Identifier: Apache-2.0
#include "bridge/AttachedEnv.h"

#include "platform/TeskJVM.h"

namespace chartbridge {

JNIEnv* AttachedEnv() {
  JNIEnv* env = nullptr;
  TeskJVM* jvm = TeskJVM::GetInstance();
  if (jvm == nullptr) return nullptr;
  jvm->AttachCurrentThread(&env);
  return env;
}

}  // namespace chartbridge
