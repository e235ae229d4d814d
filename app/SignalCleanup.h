// SPDX-License-Identifier: Apache-2.0
#ifndef APP_SIGNALCLEANUP_H_
#define APP_SIGNALCLEANUP_H_

#include <mutex>
#include <string>

namespace chartbridge {

/// Lets Ctrl-C, a termination request and the end of the terminal end the command without a trace:
/// files that are not complete go away, Java's too, and then the process ends by that same signal,
/// so that a shell sees 128 plus its number and a script stops. Signals that follow within five
/// seconds change nothing; a later one ends the command at once, should the cleaning up hang.
class SignalCleanup {
 public:
  /// Begins to watch for the signals; those that the caller ignores, as nohup does, stay ignored.
  /// Once, at the start of the process.
  static void Begin();

  /// While it is held, no signal ends the process. Held for every change that belongs together with
  /// a call below; for a short time.
  static std::unique_lock<std::mutex> Lock();

  /// From now on a signal removes this file, or this folder with all that is in it. The lock is
  /// held.
  static void Add(const std::string& path);
  /// Takes an `Add` back. The lock is held.
  static void Remove(const std::string& path);

  /// Whether there is a JVM that must be told of the end. The lock is held.
  static void SetJavaRuns(bool runs);
};

}  // namespace chartbridge

#endif  // APP_SIGNALCLEANUP_H_
