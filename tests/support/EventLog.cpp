// SPDX-License-Identifier: Apache-2.0
#include "tests/support/EventLog.h"

#include <utility>

#include "tests/support/KitScope.h"

namespace chartbridge::testing {
namespace {

std::size_t Index(Source source) { return static_cast<std::size_t>(source); }

}  // namespace

EventLog& EventLog::Get() {
  static EventLog log;
  return log;
}

void EventLog::Start() {
  Clear();
  for (auto& included : _included) included.store(true, std::memory_order_relaxed);
  Include(Source::kMemory, false);
  _recording.store(true, std::memory_order_relaxed);
}

void EventLog::Stop() { _recording.store(false, std::memory_order_relaxed); }

void EventLog::Clear() {
  const std::lock_guard<std::mutex> lock(_mutex);
  _events.clear();
}

void EventLog::Include(Source source, bool included) {
  _included[Index(source)].store(included, std::memory_order_relaxed);
}

void EventLog::Record(Source source, std::string text) {
  if (!_recording.load(std::memory_order_relaxed)) return;
  if (!_included[Index(source)].load(std::memory_order_relaxed)) return;
  const KitScope kit;
  const std::lock_guard<std::mutex> lock(_mutex);
  _events.push_back({source, std::move(text)});
}

std::vector<std::string> EventLog::Texts() const {
  const std::lock_guard<std::mutex> lock(_mutex);
  std::vector<std::string> texts;
  for (const Event& event : _events) texts.push_back(event.text);
  return texts;
}

std::vector<std::string> EventLog::Texts(Source source) const {
  const std::lock_guard<std::mutex> lock(_mutex);
  std::vector<std::string> texts;
  for (const Event& event : _events) {
    if (event.source == source) texts.push_back(event.text);
  }
  return texts;
}

}  // namespace chartbridge::testing
