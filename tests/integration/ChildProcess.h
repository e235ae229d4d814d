// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_CHILDPROCESS_H_
#define TESTS_INTEGRATION_CHILDPROCESS_H_

#include <map>
#include <string>
#include <vector>

namespace chartbridge {

/// How a program ended, and what it wrote.
struct ChildResult {
  enum class End { kExit, kSignal, kTimeLimit };

  End end = End::kExit;
  /// The exit code or the signal.
  int code = 0;
  std::string output;
  std::string errors;

  /// In words, for messages: "exit 0", "signal 6", "time limit".
  std::string Words() const;
};

/// Runs a program in a folder of its own that is removed afterwards, with no core dumps, and ends
/// it after `seconds`.
///
/// `environment` is added to this process's; an empty value removes the variable.
ChildResult RunChild(const std::vector<std::string>& command,
                     const std::map<std::string, std::string>& environment, int seconds);

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_CHILDPROCESS_H_
