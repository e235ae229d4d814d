// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_STARTEDPROGRAM_H_
#define TESTS_APP_STARTEDPROGRAM_H_

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tests/app/CommandRun.h"

namespace chartbridge {

/// A program that runs beside the test.
class StartedProgram {
 public:
  /// Starts it. The first argument is the program, looked for on the path.
  explicit StartedProgram(const std::vector<std::string>& arguments,
                          const RunSettings& settings = {});
  /// Ends it if it still runs.
  ~StartedProgram();

  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  void Send(int signal) const;

  /// Waits for its end, at most some 100 seconds after its start. Once.
  RunResult Result();

 private:
  struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  using TemporaryFile = std::unique_ptr<std::FILE, CloseFile>;

  static TemporaryFile NewTemporaryFile(const std::string& content = "");
  static std::string ContentOf(const TemporaryFile& file);

  TemporaryFile _input;
  TemporaryFile _output;
  TemporaryFile _errors;
  pid_t _process;
};

}  // namespace chartbridge

#endif  // TESTS_APP_STARTEDPROGRAM_H_
