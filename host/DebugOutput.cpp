// SPDX-License-Identifier: Apache-2.0
#include "host/DebugOutput.h"

#include <cstdio>
#include <mutex>
#include <utility>

#include "host/DebugText.h"

namespace chartbridge {
namespace {

struct Output {
  std::mutex mutex;
  std::function<void(const std::string&)> callback;
};

// Leaked on purpose, as threads may still write while the process ends.
Output& TheOutput() {
  static auto* const output = new Output;
  return *output;
}

}  // namespace

void SetDebugOutput(std::function<void(const std::string&)> output) {
  const std::lock_guard<std::mutex> lock(TheOutput().mutex);
  TheOutput().callback = std::move(output);
}

void WriteDebugText(const std::string& text) {
  const std::lock_guard<std::mutex> lock(TheOutput().mutex);
  if (TheOutput().callback) {
    TheOutput().callback(text);
    return;
  }
  std::fprintf(stderr, "%s\n", text.c_str());
}

}  // namespace chartbridge
