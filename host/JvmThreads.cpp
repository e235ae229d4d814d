// SPDX-License-Identifier: Apache-2.0
#include "host/JvmThreads.h"

#include "host/FloatScope.h"
#include "host/RunningJvm.h"

namespace chartbridge {

bool DetachCurrentThread() {
  if (RunningJvm::OwnEnv() == nullptr) return true;
  const FloatScope floats;
  return RunningJvm::Get()->DetachCurrentThread() == JNI_OK;
}

bool DestroyJvm() { return RunningJvm::Destroy(); }

}  // namespace chartbridge
