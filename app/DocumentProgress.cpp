// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentProgress.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <utility>

namespace chartbridge {

namespace {

using std::chrono::seconds;

constexpr seconds kStep(1);
// Nobody needs to be told of less.
constexpr seconds kQuietTime(2);
// Back to the first column, and nothing behind it.
constexpr const char* kClearLine = "\r\033[K";

}  // namespace

DocumentProgress::DocumentProgress(std::string work) : _work(std::move(work)) {
  if (isatty(STDERR_FILENO) == 0) return;
  _teller = std::thread([this] { Tell(); });
}

DocumentProgress::~DocumentProgress() {
  if (!_teller.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(_mutex);
    _hasEnded = true;
  }
  _ended.notify_one();
  _teller.join();
}

void DocumentProgress::Tell() {
  std::unique_lock<std::mutex> lock(_mutex);
  for (seconds passed = kStep; !_ended.wait_for(lock, kStep, [this] { return _hasEnded; });
       passed += kStep) {
    if (passed < kQuietTime) continue;
    std::cerr << kClearLine << _work << ": " << passed.count() << " s" << std::flush;
  }
  std::cerr << kClearLine << std::flush;
}

}  // namespace chartbridge
