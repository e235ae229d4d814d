// SPDX-License-Identifier: Apache-2.0
#include "guard/ReferenceEpoch.h"

#include <atomic>

namespace chartbridge {
namespace {

jvmtiEnv* theJvmti = nullptr;

// Room for a thread's own count below the number of the thread.
constexpr unsigned kCountBits = 40;

std::atomic<std::uint64_t> threads{0};

bool HasJavaFrames() {
  jint frames = 0;
  return theJvmti->GetFrameCount(nullptr, &frames) != JVMTI_ERROR_NONE || frames > 0;
}

}  // namespace

void ReferenceEpoch::SetJvmti(jvmtiEnv* jvmti) { theJvmti = jvmti; }

bool ReferenceEpoch::HasLasted(std::uint64_t epoch) {
  return epoch == Current() && !HasJavaFrames();
}

std::uint64_t ReferenceEpoch::Begin() {
  current_ = (threads.fetch_add(1, std::memory_order_relaxed) + 1) << kCountBits;
  return current_;
}

}  // namespace chartbridge
