// SPDX-License-Identifier: Apache-2.0
#include "tests/integration/ChildProcess.h"
#include "tests/integration/ReadFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

void Redirect(const char* path, int target) {
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(file, target);
  close(file);
}

[[noreturn]] void Become(const std::vector<std::string>& command,
                         const std::map<std::string, std::string>& environment,
                         const std::string& folder) {
  for (const auto& [name, value] : environment) {
    if (value.empty()) {
      unsetenv(name.c_str());
    } else {
      setenv(name.c_str(), value.c_str(), 1);
    }
  }
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  if (chdir(folder.c_str()) != 0) _exit(126);
  Redirect("stdout", STDOUT_FILENO);
  Redirect("stderr", STDERR_FILENO);
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(127);
}

// Waits until the child ends; ends it when the time is over. False in that case.
bool WaitFor(pid_t child, int seconds, int& status) {
  using Clock = std::chrono::steady_clock;
  const auto limit = Clock::now() + std::chrono::seconds(seconds);
  while (Clock::now() < limit) {
    if (waitpid(child, &status, WNOHANG) == child) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return false;
}

}  // namespace

std::string ChildResult::Words() const {
  switch (end) {
    case End::kExit:
      return "exit " + std::to_string(code);
    case End::kSignal:
      return "signal " + std::to_string(code);
    case End::kTimeLimit:
      break;
  }
  return "time limit";
}

ChildResult RunChild(const std::vector<std::string>& command,
                     const std::map<std::string, std::string>& environment, int seconds) {
  const TempFolder folder;
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("cannot fork");
  if (child == 0) Become(command, environment, folder.Path());
  int status = 0;
  ChildResult result;
  if (!WaitFor(child, seconds, status)) {
    result.end = ChildResult::End::kTimeLimit;
  } else if (WIFSIGNALED(status)) {
    result.end = ChildResult::End::kSignal;
    result.code = WTERMSIG(status);
  } else {
    result.code = WEXITSTATUS(status);
  }
  result.output = ReadFile(folder.Path() + "/stdout");
  result.errors = ReadFile(folder.Path() + "/stderr");
  return result;
}

}  // namespace chartbridge
