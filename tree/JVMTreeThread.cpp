// SPDX-License-Identifier: Apache-2.0
#include "tree/JVMTreeThread.h"

#include "bridge/AttachedEnv.h"
#include "bridge/FloatEnvGuard.h"
#include "tree/TreeEditor.h"

JVMTreeThread::JVMTreeThread() {
  const FloatEnvGuard guard;
  JNIEnv* env = chartbridge::AttachedEnv();
  TreeEditor::GetInstance()->SetEnv(env);
}

JVMTreeThread::~JVMTreeThread() = default;
