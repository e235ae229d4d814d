// SPDX-License-Identifier: Apache-2.0
#include "host/JavaDescriptors.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <set>
#include <tuple>
#include <vector>

namespace chartbridge {
namespace {

using Clock = std::chrono::steady_clock;

constexpr char kFolder[] = "/proc/self/fd";
constexpr int kOftenAtFirst = 32;
constexpr std::chrono::seconds kLater{1};

// A descriptor and the file that it stands for, so that a number that is used again is another.
using OpenFile = std::tuple<int, dev_t, ino_t>;

struct State {
  std::mutex mutex;
  std::string home;
  std::set<OpenFile> ofHost;
};

// Leaked on purpose, as threads may still draw while the process ends.
State& TheState() {
  static auto* const state = new State;
  return *state;
}

std::atomic<bool> hasBegun{false};
std::atomic<int> looks{0};
std::atomic<Clock::rep> lastLook{0};

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

std::vector<int> Descriptors() {
  std::vector<int> numbers;
  const std::unique_ptr<DIR, CloseFolder> folder(opendir(kFolder));
  if (folder == nullptr) return numbers;
  while (const dirent* entry = readdir(folder.get())) {
    if (entry->d_name[0] == '.') continue;
    const int number = std::atoi(entry->d_name);
    if (number != dirfd(folder.get())) numbers.push_back(number);
  }
  return numbers;
}

bool IsInherited(int number) {
  const int flags = fcntl(number, F_GETFD);
  return flags >= 0 && (flags & FD_CLOEXEC) == 0;
}

OpenFile FileOf(int number) {
  struct stat status {};
  if (fstat(number, &status) != 0) return {number, 0, 0};
  return {number, status.st_dev, status.st_ino};
}

bool IsForReadingOnly(int number) {
  const int flags = fcntl(number, F_GETFL);
  return flags >= 0 && (flags & O_ACCMODE) == O_RDONLY;
}

std::string TargetOf(int number) {
  char target[PATH_MAX];
  const std::string link = std::string(kFolder) + "/" + std::to_string(number);
  const ssize_t length = readlink(link.c_str(), target, sizeof target);
  return length < 0 ? std::string() : std::string(target, static_cast<std::size_t>(length));
}

bool EndsIn(const std::string& path, const std::string& ending) {
  if (path.size() < ending.size()) return false;
  return std::equal(
      ending.begin(), ending.end(), path.end() - static_cast<long>(ending.size()),
      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

bool IsOfJava(const std::string& path, const std::string& home) {
  if (!home.empty() && path.compare(0, home.size(), home) == 0) return true;
  if (path == "/dev/random" || path == "/dev/urandom") return true;
  for (const char* ending : {".jar", ".ttf", ".ttc", ".otf", ".pfa", ".pfb"}) {
    if (EndsIn(path, ending)) return true;
  }
  return false;
}

bool IsToBeMarked(int number, const OpenFile& file, const State& state) {
  return IsInherited(number) && IsForReadingOnly(number) && state.ofHost.count(file) == 0 &&
         IsOfJava(TargetOf(number), state.home);
}

void MarkFile(int number, const State& state) {
  const OpenFile file = FileOf(number);
  // Asked again last, as close to the mark as can be: the owner of a file that came in between may
  // have marked it.
  if (!IsToBeMarked(number, file, state) || !IsInherited(number)) return;
  fcntl(number, F_SETFD, FD_CLOEXEC);
  // Another thread has closed Java's file and opened another by the same number meanwhile.
  if (FileOf(number) != file) fcntl(number, F_SETFD, 0);
}

void MarkAll() {
  State& state = TheState();
  // Another thread is just doing it.
  const std::unique_lock<std::mutex> lock(state.mutex, std::try_to_lock);
  if (!lock.owns_lock()) return;
  lastLook = Clock::now().time_since_epoch().count();
  for (const int number : Descriptors()) MarkFile(number, state);
}

// The home of ".../lib/server/libjvm.so", with a slash at its end.
std::string HomeOf(const std::string& library) {
  char resolved[PATH_MAX];
  const std::string path = realpath(library.c_str(), resolved) == nullptr ? library : resolved;
  const std::size_t end = path.rfind("/lib/server/");
  return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

}  // namespace

void JavaDescriptors::Begin(const std::string& javaLibrary) {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.home = HomeOf(javaLibrary);
  state.ofHost.clear();
  for (const int number : Descriptors()) {
    if (IsInherited(number)) state.ofHost.insert(FileOf(number));
  }
  hasBegun = true;
}

void JavaDescriptors::Mark() noexcept {
  if (!hasBegun) return;
  try {
    MarkAll();
  } catch (...) {
    // There is no memory for the list. The next look marks what this one has not.
  }
}

void JavaDescriptors::MarkNowAndThen() noexcept {
  if (!hasBegun) return;
  const Clock::duration since(Clock::now().time_since_epoch().count() - lastLook);
  if (looks >= kOftenAtFirst && since < kLater) return;
  ++looks;
  Mark();
}

}  // namespace chartbridge
