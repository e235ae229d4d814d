// SPDX-License-Identifier: Apache-2.0
#include "tests/integration/ProcessState.h"

#include <fcntl.h>
#include <fenv.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <xmmintrin.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>
#include <thread>

extern char** environ;

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// The last real-time signal.
constexpr int kLastSignal = 64;
// Of the SSE control and status register: rounding, masks, denormals. The rest is what happened.
constexpr unsigned kSseControls = 0xFFC0;

std::string Hex(unsigned long long value) {
  char text[32];
  std::snprintf(text, sizeof text, "%llx", value);
  return text;
}

// Signals that a thread gets by its own fault, that nobody can block, that the C library keeps for
// itself (32 and 33), the two by which Java stops and wakes its own threads, whose handlers are
// Java's, and the profilers'.
bool IsOfThread(int signal) {
  const std::set<int> signals{SIGSEGV, SIGBUS,  SIGFPE, SIGILL, SIGTRAP,      SIGSYS,  SIGKILL,
                              SIGSTOP, SIGPROF, 32,     33,     SIGRTMAX - 2, SIGRTMAX};
  return signals.count(signal) != 0;
}

// The kernel's own view: the C library hides its two signals, and adds a flag.
struct KernelAction {
  void* handler;
  unsigned long flags;
  void* restorer;
  unsigned long mask;
};

void AddSignals(ProcessState& state) {
  for (int signal = 1; signal <= kLastSignal; ++signal) {
    KernelAction action{};
    if (syscall(SYS_rt_sigaction, signal, nullptr, &action, sizeof action.mask) != 0) continue;
    const bool isDefault = action.handler == nullptr;
    const bool isIgnored = action.handler == reinterpret_cast<void*>(1);
    state["signal " + std::to_string(signal)] =
        isDefault   ? "default"
        : isIgnored ? "ignored"
                    : "handler " + Hex(reinterpret_cast<unsigned long long>(action.handler)) +
                          ", flags " + Hex(action.flags) + ", mask " + Hex(action.mask);
  }
}

void AddMask(ProcessState& state) {
  sigset_t mask;
  pthread_sigmask(SIG_SETMASK, nullptr, &mask);
  std::string blocked;
  for (int signal = 1; signal <= kLastSignal; ++signal) {
    if (sigismember(&mask, signal) == 1) blocked += " " + std::to_string(signal);
  }
  state["blocked signals"] = blocked;
}

void AddFloatingPoint(ProcessState& state) {
  unsigned short x87 = 0;
  __asm__ volatile("fnstcw %0" : "=m"(x87));
  state["rounding"] = std::to_string(fegetround());
  state["traps"] = Hex(static_cast<unsigned>(fegetexcept()));
  state["sse controls"] = Hex(_mm_getcsr() & kSseControls);
  state["x87 controls"] = Hex(x87);
}

void AddLocale(ProcessState& state) {
  state["locale"] = std::setlocale(LC_ALL, nullptr);
  state["largest bytes of a character"] = std::to_string(MB_CUR_MAX);
}

void AddEnvironment(ProcessState& state) {
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    state["variable " + text.substr(0, text.find('='))] = text;
  }
}

ProcessState Descriptors() {
  std::vector<int> numbers;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
    numbers.push_back(std::stoi(entry.path().filename()));
  }
  ProcessState state;
  for (const int number : numbers) {
    const int flags = fcntl(number, F_GETFD);
    std::error_code error;
    const std::string target = fs::read_symlink("/proc/self/fd/" + std::to_string(number), error);
    // The one by which the folder was read, or another that is gone.
    if (flags < 0 || error) continue;
    const bool isInherited = (flags & FD_CLOEXEC) == 0;
    state["descriptor " + std::to_string(number)] =
        target + (isInherited ? ", inherited" : ", closed on exec");
  }
  return state;
}

// Threads of the JVM read this and that in /proc at any time: only what stays open counts.
void AddDescriptors(ProcessState& state) {
  const ProcessState first = Descriptors();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  for (const auto& [name, value] : Descriptors()) {
    const auto before = first.find(name);
    if (before != first.end() && before->second == value) state[name] = value;
  }
}

void AddLimits(ProcessState& state) {
  for (int resource = 0; resource < RLIMIT_NLIMITS; ++resource) {
    rlimit limit{};
    getrlimit(static_cast<__rlimit_resource>(resource), &limit);
    state["limit " + std::to_string(resource)] =
        std::to_string(limit.rlim_cur) + " of " + std::to_string(limit.rlim_max);
  }
}

void AddFolders(ProcessState& state) {
  std::error_code error;
  state["working folder"] = fs::current_path(error);
  const mode_t mask = umask(0);
  umask(mask);
  state["file mode mask"] = Hex(mask);
}

std::string Line(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  return line;
}

// The value of a line "SigBlk:\t0000000000000200" of a file in /proc.
unsigned long long HexField(const fs::path& file, const std::string& name) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind(name + ":", 0) == 0) {
      return std::strtoull(line.c_str() + name.size() + 1, nullptr, 16);
    }
  }
  return 0;
}

}  // namespace

ProcessState CaptureProcessState() {
  ProcessState state;
  AddSignals(state);
  AddMask(state);
  AddFloatingPoint(state);
  AddLocale(state);
  AddEnvironment(state);
  AddDescriptors(state);
  AddLimits(state);
  AddFolders(state);
  return state;
}

std::vector<std::string> Differences(const ProcessState& before, const ProcessState& after) {
  std::set<std::string> names;
  for (const auto& [name, value] : before) names.insert(name);
  for (const auto& [name, value] : after) names.insert(name);
  std::vector<std::string> lines;
  for (const std::string& name : names) {
    const auto old = before.find(name);
    const auto now = after.find(name);
    const std::string was = old == before.end() ? "none" : old->second;
    const std::string is = now == after.end() ? "none" : now->second;
    if (was != is) lines.push_back(name + ": " + was + " -> " + is);
  }
  return lines;
}

std::vector<std::string> ThreadsThatTakeSignals() {
  std::vector<std::string> lines;
  for (const auto& entry : fs::directory_iterator("/proc/self/task")) {
    if (std::stoi(entry.path().filename()) == gettid()) continue;
    const unsigned long long blocked = HexField(entry.path() / "status", "SigBlk");
    std::string taken;
    for (int signal = 1; signal <= kLastSignal; ++signal) {
      const bool isBlocked = (blocked >> (signal - 1) & 1) != 0;
      if (!isBlocked && !IsOfThread(signal)) taken += " " + std::to_string(signal);
    }
    if (!taken.empty()) lines.push_back("thread " + Line(entry.path() / "comm") + " takes" + taken);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

}  // namespace chartbridge
