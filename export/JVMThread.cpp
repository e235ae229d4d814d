// SPDX-License-Identifier: Apache-2.0
#include "export/JVMThread.h"

JVMThread::~JVMThread() = default;
