// SPDX-License-Identifier: Apache-2.0
#include "tests/app/StartedProgram.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>

namespace chartbridge {

namespace {

constexpr unsigned kSecondsAtMost = 100;

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
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) signal(number, SIG_DFL);
  if (settings.ignoresInterruption) signal(SIGINT, SIG_IGN);
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  // The alarm outlives exec and ends a program that hangs.
  alarm(kSecondsAtMost);
  execvp(argv[0], argv.data());
  _exit(127);
}

int WaitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

}  // namespace

StartedProgram::TemporaryFile StartedProgram::NewTemporaryFile(const std::string& content) {
  TemporaryFile file(std::tmpfile());
  if (!file) throw std::runtime_error("no temporary file");
  std::fwrite(content.data(), 1, content.size(), file.get());
  std::rewind(file.get());
  return file;
}

std::string StartedProgram::ContentOf(const TemporaryFile& file) {
  std::rewind(file.get());
  std::string content;
  char chunk[4096];
  for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, file.get())) > 0;) {
    content.append(chunk, n);
  }
  return content;
}

StartedProgram::StartedProgram(const std::vector<std::string>& arguments,
                               const RunSettings& settings)
    : _input(NewTemporaryFile(settings.input)),
      _output(NewTemporaryFile()),
      _errors(NewTemporaryFile()),
      _process(fork()) {
  if (_process < 0) throw std::runtime_error("cannot fork");
  if (_process > 0) return;
  dup2(fileno(_input.get()), STDIN_FILENO);
  dup2(fileno(_output.get()), STDOUT_FILENO);
  dup2(fileno(_errors.get()), STDERR_FILENO);
  BecomeProgram(arguments, settings);
}

StartedProgram::~StartedProgram() {
  if (_process == 0) return;
  kill(_process, SIGKILL);
  WaitFor(_process);
}

void StartedProgram::Send(int signal) const { kill(_process, signal); }

RunResult StartedProgram::Result() {
  const int status = WaitFor(_process);
  _process = 0;
  RunResult result;
  result.endedBySignal = WIFSIGNALED(status);
  result.exitCode = result.endedBySignal ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  result.output = ContentOf(_output);
  result.errors = ContentOf(_errors);
  return result;
}

}  // namespace chartbridge
