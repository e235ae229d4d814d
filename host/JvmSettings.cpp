// SPDX-License-Identifier: Apache-2.0
#include "host/JvmSettings.h"

#include <mutex>
#include <utility>

namespace chartbridge {
namespace {

// Leaked on purpose, as threads may still ask while the process ends.
struct Store {
  std::mutex mutex;
  JvmSettings settings;
};

Store& TheStore() {
  static auto* const store = new Store;
  return *store;
}

}  // namespace

std::vector<std::string> DefaultJvmOptions() {
  return {"-XX:+UseSerialGC",           "-Xms16m",
          "-XX:MinHeapFreeRatio=20",    "-XX:MaxHeapFreeRatio=40",
          "-XX:-ShrinkHeapInSteps",     "-XX:-UsePerfData",
          "-XX:+DisableAttachMechanism"};
}

void SetJvmSettings(JvmSettings settings) {
  const std::lock_guard<std::mutex> lock(TheStore().mutex);
  TheStore().settings = std::move(settings);
}

JvmSettings GetJvmSettings() {
  const std::lock_guard<std::mutex> lock(TheStore().mutex);
  return TheStore().settings;
}

}  // namespace chartbridge
