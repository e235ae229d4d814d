// SPDX-License-Identifier: Apache-2.0
//
// Preloaded into the command: counts what it changes in folders of a test, and sends it signals in
// front of one of these changes. Environment:
//   FILE_CHANGES_IN      the beginning of the paths that count
//   FILE_CHANGES_LOG     a file that gets a line for each change
//   FILE_CHANGES_SIGNAL  in front of which change the signals come, from 1
//   FILE_CHANGES_SIGNALS how many SIGTERM come, each with time to be seen; 1 when not given
//   FILE_CHANGES_SLEEP   how many seconds the change waits before it is made
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr unsigned kMillisecond = 1000;
constexpr unsigned kTimeToBeSeen = 60 * kMillisecond;

std::atomic<long> changes = 0;

const char* Setting(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

long NumberOf(const char* name, long otherwise) {
  const char* value = Setting(name);
  return *value == '\0' ? otherwise : std::strtol(value, nullptr, 10);
}

/// usleep that signals do not shorten.
void Wait(unsigned microseconds) {
  for (unsigned left = microseconds; left > 0;) {
    const unsigned step = left < kMillisecond ? left : kMillisecond;
    usleep(step);
    left -= step;
  }
}

void Log(const char* what, const char* path) {
  const char* log = Setting("FILE_CHANGES_LOG");
  if (*log == '\0') return;
  const int file = static_cast<int>(
      syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  const std::string line = std::string(what) + " " + path + "\n";
  const ssize_t ignored = write(file, line.data(), line.size());
  static_cast<void>(ignored);
  close(file);
}

void BeforeChange(const char* what, const char* path) {
  const char* folder = Setting("FILE_CHANGES_IN");
  if (*folder == '\0' || std::strncmp(path, folder, std::strlen(folder)) != 0) return;
  Log(what, path);
  if (++changes != NumberOf("FILE_CHANGES_SIGNAL", 0)) return;
  for (long i = 0; i < NumberOf("FILE_CHANGES_SIGNALS", 1); ++i) {
    kill(getpid(), SIGTERM);
    Wait(kTimeToBeSeen);
  }
  for (long i = 0; i < NumberOf("FILE_CHANGES_SLEEP", 0); ++i) Wait(1000 * kMillisecond);
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, va_list rest) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

}  // namespace

#define CHANGE_OF_PATH(name)                                 \
  extern "C" int name(const char* path) noexcept {           \
    BeforeChange(#name, path);                               \
    static auto* const real = Real<int(const char*)>(#name); \
    return real(path);                                       \
  }

#define CHANGE_OF_NAME(name)                                              \
  extern "C" int name(const char* from, const char* to) noexcept {        \
    BeforeChange(#name, to);                                              \
    static auto* const real = Real<int(const char*, const char*)>(#name); \
    return real(from, to);                                                \
  }

#define NEW_FILE(name)                                                 \
  extern "C" int name(const char* path, int flags, ...) {              \
    va_list rest;                                                      \
    va_start(rest, flags);                                             \
    const mode_t mode = ModeOf(flags, rest);                           \
    va_end(rest);                                                      \
    if ((flags & O_CREAT) != 0) BeforeChange(#name, path);             \
    static auto* const real = Real<int(const char*, int, ...)>(#name); \
    return real(path, flags, mode);                                    \
  }

CHANGE_OF_PATH(unlink)
CHANGE_OF_PATH(remove)
CHANGE_OF_PATH(rmdir)
CHANGE_OF_NAME(rename)
CHANGE_OF_NAME(link)
NEW_FILE(open)
NEW_FILE(open64)

extern "C" int mkdir(const char* path, mode_t mode) noexcept {
  BeforeChange("mkdir", path);
  static auto* const real = Real<int(const char*, mode_t)>("mkdir");
  return real(path, mode);
}

extern "C" char* mkdtemp(char* pattern) noexcept {
  BeforeChange("mkdtemp", pattern);
  static auto* const real = Real<char*(char*)>("mkdtemp");
  return real(pattern);
}

extern "C" int mkostemp(char* pattern, int flags) {
  BeforeChange("mkostemp", pattern);
  static auto* const real = Real<int(char*, int)>("mkostemp");
  return real(pattern, flags);
}
