// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_COMMANDRUN_H_
#define TESTS_APP_COMMANDRUN_H_

#include <map>
#include <string>
#include <vector>

namespace chartbridge {

/// How to run a program: everything but the program.
struct RunSettings {
  /// What the program reads from standard input.
  std::string input;
  /// Environment variables to set; those with the value kUnset are removed.
  std::map<std::string, std::string> environment;
  /// The folder to run in. Empty: this process's.
  std::string folder;
  /// Whether it ignores Ctrl-C from the start, as in the background of a script. It ignores no
  /// other of the signals that end programs, whatever this process was started to ignore.
  bool ignoresInterruption = false;
};

/// The value of an environment variable that is to be removed.
extern const std::string kUnset;

/// What a program did.
struct RunResult {
  /// The exit code; 128 plus the signal for a program that a signal ended.
  int exitCode = -1;
  bool endedBySignal = false;
  std::string output;
  std::string errors;
};

/// Runs a program to its end, within some 100 seconds. The first argument is the program, looked
/// for on the path.
RunResult RunProgram(const std::vector<std::string>& arguments, const RunSettings& settings = {});

/// Runs the command `chartbridge` of this build.
RunResult RunCommand(const std::vector<std::string>& arguments, const RunSettings& settings = {});

}  // namespace chartbridge

#endif  // TESTS_APP_COMMANDRUN_H_
