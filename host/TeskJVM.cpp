// SPDX-License-Identifier: Apache-2.0
#include "platform/TeskJVM.h"

#include "host/RunningJvm.h"

using chartbridge::RunningJvm;

TeskJVM* TeskJVM::GetInstance() {
  static TeskJVM instance;
  return &instance;
}

CriticalSection& TeskJVM::CritSect() {
  // Leaked on purpose: threads may hold it while the process ends.
  static auto* const section = new CriticalSection;
  return *section;
}

bool TeskJVM::StartJVM() { return RunningJvm::Start(); }

bool TeskJVM::IsStarted() { return RunningJvm::Get() != nullptr; }

JNIEnv* TeskJVM::GetEnv() { return RunningJvm::Attach(); }

bool TeskJVM::AttachCurrentThread(JNIEnv** env) {
  *env = RunningJvm::Attach();
  return *env != nullptr;
}
