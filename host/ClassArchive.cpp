// SPDX-License-Identifier: Apache-2.0
#include "host/ClassArchive.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/ArchivePlaces.h"
#include "host/DefaultOptions.h"
#include "host/GivenOptions.h"
#include "host/JvmLocator.h"
#include "host/JvmSettings.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// Made in some seconds, also on a busy machine.
constexpr unsigned kSecondsAtMost = 600;
// Low, but not the lowest, which a busy machine would never let finish.
constexpr int kNice = 10;
// For several JVMs and installations; those of JVMs that have gone are some 30 MB each.
constexpr std::size_t kArchivesInCache = 4;

// Makes room for one more, and clears away what processes left that were killed.
void DropOldArchives(const fs::path& folder) {
  std::vector<std::pair<fs::file_time_type, fs::path>> archives;
  const auto abandoned = fs::file_time_type::clock::now() - std::chrono::seconds(kSecondsAtMost);
  std::error_code error;
  for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator();
       at.increment(error)) {
    const fs::path path = at->path();
    std::error_code unknown;
    const auto time = fs::last_write_time(path, unknown);
    if (unknown) continue;
    if (path.extension() == ".jsa") archives.emplace_back(time, path);
    if (path.extension() == ".part" && time < abandoned) fs::remove(path, unknown);
  }
  std::sort(archives.rbegin(), archives.rend());
  for (std::size_t i = kArchivesInCache - 1; i < archives.size(); ++i) {
    fs::remove(archives[i].second, error);
  }
}

/// Makes one archive in processes of its own.
class ArchiveMaking {
 public:
  ArchiveMaking(const ArchivePlaces& places, std::string target)
      : _target(std::move(target)),
        // Another process that took this one for dead must not write to the same file.
        _unfinished(_target + "." + std::to_string(getpid()) + ".part"),
        _lock(_target + ".making"),
        _failed(_target + ".failed"),
        _arguments{places.Java(), "-Xshare:dump",
                   // It can put objects of the JDK into the archive, which other collectors read.
                   "-XX:+UseG1GC", "-Xmx256m", "-XX:-UsePerfData",
                   "-XX:SharedClassListFile=" + places.ClassList(),
                   "-XX:SharedArchiveFile=" + _unfinished, "-Xlog:disable", "-cp", places.Jar()} {
    for (std::string& argument : _arguments) _pointers.push_back(argument.data());
    _pointers.push_back(nullptr);
  }

  bool Begin() {
    if (access(_failed.c_str(), F_OK) == 0 || IsGoingOn()) return false;
    DropOldArchives(fs::path(_target).parent_path());
    const pid_t first = fork();
    if (first < 0) return false;
    if (first == 0) {
      // Nobody has to wait for the child of a child that is gone.
      if (fork() == 0) Work();
      _exit(0);
    }
    int status = 0;
    while (waitpid(first, &status, 0) < 0 && errno == EINTR) {
    }
    return true;
  }

 private:
  bool IsGoingOn() const {
    struct stat status {};
    if (stat(_lock.c_str(), &status) != 0) return false;
    if (std::time(nullptr) - status.st_mtim.tv_sec < kSecondsAtMost) return true;
    // Whoever had it was killed.
    unlink(_lock.c_str());
    return false;
  }

  // From here on in a copy of a process that has threads: nothing but system calls.
  [[noreturn]] void Work() {
    LeaveParent();
    const int lock = open(_lock.c_str(), O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (lock < 0) _exit(1);
    unlink(_unfinished.c_str());
    const pid_t java = fork();
    if (java == 0) {
      char* environment[] = {nullptr};
      alarm(kSecondsAtMost);
      execve(_pointers[0], _pointers.data(), environment);
      _exit(1);
    }
    int status = 0;
    const bool isMade = java > 0 && waitpid(java, &status, 0) == java && status == 0 &&
                        rename(_unfinished.c_str(), _target.c_str()) == 0;
    if (!isMade) {
      unlink(_unfinished.c_str());
      close(open(_failed.c_str(), O_WRONLY | O_CREAT, S_IRUSR | S_IWUSR));
    }
    unlink(_lock.c_str());
    _exit(0);
  }

  static void LeaveParent() {
    setsid();
    setpriority(PRIO_PROCESS, 0, kNice);
    umask(S_IRWXG | S_IRWXO);
    for (int number = 1; number < NSIG; ++number) signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nothing = open("/dev/null", O_RDWR);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) dup2(nothing, descriptor);
    close_range(3, ~0U, 0);
    if (chdir("/") != 0) _exit(1);
  }

  std::string _target;
  std::string _unfinished;
  std::string _lock;
  std::string _failed;
  std::vector<std::string> _arguments;
  std::vector<char*> _pointers;
};

bool IsArchiveChosen(const JvmSettings& settings) {
  const GivenOptions given(settings);
  return !settings.sharedArchive.empty() || !given.AreReadable() ||
         !DefaultOptions(given.All()).SearchesArchive();
}

bool BeginToMake() {
  const JvmSettings settings = GetJvmSettings();
  if (settings.classPath.empty() || IsArchiveChosen(settings)) return false;
  const ArchivePlaces places(LocateJvm(settings.javaHome).library, settings.classPath.front());
  if (places.Jar().empty() || !places.Find().empty()) return false;
  const std::string target = places.InCache();
  if (target.empty() || access(places.Java().c_str(), X_OK) != 0) return false;
  return ArchiveMaking(places, target).Begin();
}

}  // namespace

bool MakeClassArchive() noexcept {
  try {
    return BeginToMake();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace chartbridge
