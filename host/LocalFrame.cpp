// SPDX-License-Identifier: Apache-2.0
#include "host/LocalFrame.h"

#include <algorithm>

#include "host/RunningJvm.h"

namespace chartbridge {
namespace {

// More than this the JVM refuses to set aside; it makes more as they are needed.
constexpr int kMaxCapacity = 65536;

}  // namespace

LocalFrame::LocalFrame(int capacity) : _env(RunningJvm::Attach()) {
  if (_env == nullptr) return;
  if (_env->PushLocalFrame(std::clamp(capacity, 1, kMaxCapacity)) == JNI_OK) return;
  _env->ExceptionClear();
  _env = nullptr;
}

LocalFrame::~LocalFrame() {
  if (_env != nullptr) _env->PopLocalFrame(nullptr);
}

}  // namespace chartbridge
