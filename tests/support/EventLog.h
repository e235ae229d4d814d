// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_EVENTLOG_H_
#define TESTS_SUPPORT_EVENTLOG_H_

#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <vector>

namespace chartbridge::testing {

/// Who reported an event.
enum class Source { kJni, kPlatform, kFloatEnv, kIcu, kClock, kMemory };

struct Event {
  Source source;
  std::string text;
};

/// The one log that everything outside the library writes to: the JVM, the platform, the C library
/// and ICU.
///
/// Because there is only one, a test sees the order of calls across all of them.
class EventLog {
 public:
  static EventLog& Get();

  /// Forgets everything and records from now on, all sources but memory.
  void Start();
  void Stop();
  void Clear();

  /// Leaves a source in or out of the recording.
  void Include(Source source, bool included = true);

  void Record(Source source, std::string text);

  std::vector<std::string> Texts() const;
  std::vector<std::string> Texts(Source source) const;

 private:
  static constexpr std::size_t kSources = 6;

  // Read without the mutex, so that a stopped log adds no synchronisation that could hide a data
  // race from ThreadSanitizer.
  std::atomic<bool> _recording{false};
  std::array<std::atomic<bool>, kSources> _included{};
  mutable std::mutex _mutex;
  std::vector<Event> _events;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_EVENTLOG_H_
