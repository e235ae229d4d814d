// SPDX-License-Identifier: Apache-2.0
#include "host/RunningJvm.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>

#include "host/FloatScope.h"
#include "host/JavaDescriptors.h"
#include "host/JvmLauncher.h"
#include "host/JvmSettings.h"
#include "host/TemplateCallback.h"

namespace chartbridge {
namespace {

std::atomic<JavaVM*> theVm{nullptr};
std::mutex startMutex;
bool ended = false;

void Tell(const JvmSettings& settings, const std::string& message) {
  if (settings.message) {
    settings.message(message);
    return;
  }
  std::fprintf(stderr, "%s\n", message.c_str());
}

}  // namespace

JavaVM* RunningJvm::Get() { return theVm.load(std::memory_order_acquire); }

bool RunningJvm::Start() {
  if (Get() != nullptr) return true;
  const std::lock_guard<std::mutex> lock(startMutex);
  if (Get() != nullptr) return true;
  const JvmSettings settings = GetJvmSettings();
  if (ended) {
    Tell(settings, "cannot start Java: this process has ended its JVM, and there is no second one");
    return false;
  }
  JvmLauncher launcher(settings);
  JavaVM* vm = launcher.Launch();
  if (vm == nullptr) Tell(settings, launcher.Error());
  if (vm != nullptr) BindTemplateCallback(vm);
  JavaDescriptors::Mark();
  theVm.store(vm, std::memory_order_release);
  return vm != nullptr;
}

bool RunningJvm::Destroy() {
  const std::lock_guard<std::mutex> lock(startMutex);
  JavaVM* vm = Get();
  if (vm == nullptr || Attach() == nullptr) return false;
  const FloatScope floats;
  theVm.store(nullptr, std::memory_order_release);
  ended = true;
  return vm->DestroyJavaVM() == JNI_OK;
}

// The JVM remembers each thread's env in thread-local memory, and asking it costs a few
// nanoseconds. A memory of our own would save two of them and be wrong as soon as somebody else
// detaches the thread.
JNIEnv* RunningJvm::OwnEnv() {
  JavaVM* vm = Get();
  void* env = nullptr;
  if (vm == nullptr || vm->GetEnv(&env, JNI_VERSION_1_8) != JNI_OK) return nullptr;
  return static_cast<JNIEnv*>(env);
}

JNIEnv* RunningJvm::Attach() {
  JNIEnv* own = OwnEnv();
  if (own != nullptr) return own;
  JavaVM* vm = Get();
  void* env = nullptr;
  const FloatScope floats;
  // A daemon: an attached thread must not keep the JVM from ending.
  if (vm == nullptr || vm->AttachCurrentThreadAsDaemon(&env, nullptr) != JNI_OK) return nullptr;
  return static_cast<JNIEnv*>(env);
}

}  // namespace chartbridge
