// SPDX-License-Identifier: Apache-2.0
#include "host/LocalFrame.h"

#include <algorithm>
#include <new>
#include <string>

#include "host/DebugText.h"
#include "host/GuardBuffers.h"
#include "host/JavaDescriptors.h"
#include "host/PendingException.h"
#include "host/RunningJvm.h"

namespace chartbridge {
namespace {

// More than this the JVM refuses to set aside; it makes more as they are needed.
constexpr int kMaxCapacity = 65536;

// Called while C++ exceptions leave the frame, too, so nothing may leave this.
void TellPendingException(JNIEnv* env) {
  try {
    const std::string exception = TakePendingException(env);
    if (exception.empty()) return;
    WriteDebugText("LocalFrame: a Java exception was still pending and is cleared: " + exception);
  } catch (...) {
    // There is no memory for the text, or the host's output throws: the exception is cleared.
  }
}

}  // namespace

struct LocalFrame::Frame {
  JNIEnv* env;
  unsigned long long mark;
};

LocalFrame::LocalFrame(int capacity) noexcept : _frame(nullptr) {
  JNIEnv* env = RunningJvm::Attach();
  if (env == nullptr) return;
  // Nothing may leave this: a host that has no memory left draws without a frame.
  auto* frame = new (std::nothrow) Frame{env, GuardBuffers::Mark()};
  if (frame == nullptr) return;
  if (env->PushLocalFrame(std::clamp(capacity, 1, kMaxCapacity)) == JNI_OK) {
    _frame = frame;
    return;
  }
  env->ExceptionClear();
  delete frame;
}

LocalFrame::~LocalFrame() noexcept {
  if (_frame == nullptr) return;
  TellPendingException(_frame->env);
  GuardBuffers::FreeSince(_frame->mark);
  _frame->env->PopLocalFrame(nullptr);
  delete _frame;
  JavaDescriptors::MarkNowAndThen();
}

}  // namespace chartbridge
