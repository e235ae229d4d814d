// SPDX-License-Identifier: Apache-2.0
#include "tests/app/CommandRun.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace chartbridge {

const std::string kUnset = "\x01unset";

namespace {

constexpr unsigned kSecondsAtMost = 60;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using TemporaryFile = std::unique_ptr<std::FILE, CloseFile>;

TemporaryFile NewTemporaryFile(const std::string& content = "") {
  TemporaryFile file(std::tmpfile());
  if (!file) throw std::runtime_error("no temporary file");
  std::fwrite(content.data(), 1, content.size(), file.get());
  std::rewind(file.get());
  return file;
}

std::string ContentOf(const TemporaryFile& file) {
  std::rewind(file.get());
  std::string content;
  char chunk[4096];
  for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, file.get())) > 0;) {
    content.append(chunk, n);
  }
  return content;
}

[[noreturn]] void BecomeProgram(const std::vector<std::string>& arguments,
                                const RunSettings& settings) {
  if (!settings.folder.empty() && chdir(settings.folder.c_str()) != 0) _exit(126);
  for (const auto& [name, value] : settings.environment) {
    if (value == kUnset) {
      unsetenv(name.c_str());
    } else {
      setenv(name.c_str(), value.c_str(), 1);
    }
  }
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  // The alarm outlives exec and ends a program that hangs.
  alarm(kSecondsAtMost);
  execvp(argv[0], argv.data());
  _exit(127);
}

}  // namespace

RunResult RunProgram(const std::vector<std::string>& arguments, const RunSettings& settings) {
  const TemporaryFile input = NewTemporaryFile(settings.input);
  const TemporaryFile output = NewTemporaryFile();
  const TemporaryFile errors = NewTemporaryFile();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("cannot fork");
  if (child == 0) {
    dup2(fileno(input.get()), STDIN_FILENO);
    dup2(fileno(output.get()), STDOUT_FILENO);
    dup2(fileno(errors.get()), STDERR_FILENO);
    BecomeProgram(arguments, settings);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  RunResult result;
  result.exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  result.output = ContentOf(output);
  result.errors = ContentOf(errors);
  return result;
}

RunResult RunCommand(const std::vector<std::string>& arguments, const RunSettings& settings) {
  std::vector<std::string> all = {CHARTBRIDGE_COMMAND};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunProgram(all, settings);
}

}  // namespace chartbridge
