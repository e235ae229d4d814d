// SPDX-License-Identifier: Apache-2.0
#include "app/SignalCleanup.h"

#include <fcntl.h>
#include <jni.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <set>
#include <system_error>
#include <thread>

#include "platform/TeskJVM.h"

namespace chartbridge {

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};
// A shell's exit code for a program that a signal ended.
constexpr int kSignalCode = 128;
constexpr int kMostAttempts = 100;
// How long the cleaning up may take before another signal cuts it short.
constexpr std::time_t kPatience = 5;

std::mutex mutex;
bool javaRuns = false;
// How a signal gets from its handler, where next to nothing is allowed, to the watching thread.
int readEnd = -1;
int writeEnd = -1;
int endingSignal = 0;
// In seconds; 0 until there was one.
std::atomic<std::time_t> firstSignalAt = 0;

std::set<std::string>& Paths() {
  // Leaked on purpose: the watching thread may need it while the process ends.
  static auto* const paths = new std::set<std::string>;
  return *paths;
}

void SetAction(int signal, void (*action)(int)) {
  struct sigaction before {};
  sigaction(signal, nullptr, &before);
  if (before.sa_handler == SIG_IGN) return;
  struct sigaction after {};
  after.sa_handler = action;
  after.sa_flags = SA_RESTART;
  sigaction(signal, &after, nullptr);
}

/// A time that goes on, whoever sets the clock.
std::time_t Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec + 1;
}

/// The first signal begins the cleaning up. Others often follow at once (timeout sends its signal
/// to the program and to its group; a terminal and a parent both pass Ctrl-C on), and ending there
/// and then would leave a half of what Java is just putting in place.
void OnSignal(int signal) {
  const int error = errno;
  const std::time_t now = Now();
  std::time_t none = 0;
  if (firstSignalAt.compare_exchange_strong(none, now)) {
    const auto number = static_cast<unsigned char>(signal);
    const ssize_t ignored = write(writeEnd, &number, 1);
    static_cast<void>(ignored);
  } else if (now - firstSignalAt > kPatience) {
    SetAction(signal, SIG_DFL);
    // It comes when this function returns.
    std::raise(signal);
  }
  errno = error;
}

int NextSignal() {
  unsigned char number = 0;
  ssize_t count = 0;
  do {
    count = read(readEnd, &number, 1);
  } while (count < 0 && errno == EINTR);
  return count == 1 ? number : 0;
}

void RemovePaths() {
  for (const std::string& path : Paths()) {
    // Other threads go on, and may just be adding a file to the folder.
    for (int i = 0; i < kMostAttempts; ++i) {
      std::error_code error;
      std::filesystem::remove_all(path, error);
      if (!error) break;
    }
  }
}

[[noreturn]] void EndBySignal() {
  SetAction(endingSignal, SIG_DFL);
  // Threads of the JVM have it blocked, and when Java ends the process this runs on one of them.
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, endingSignal);
  pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
  std::raise(endingSignal);
  // Only where the signal is ignored.
  _exit(kSignalCode + endingSignal);
}

/// Returns only where Java cannot be reached.
void EndJava() {
  JNIEnv* env = nullptr;
  if (!TeskJVM::GetInstance()->AttachCurrentThread(&env)) return;
  jclass system = env->FindClass("java/lang/System");
  if (system == nullptr) return;
  const jmethodID exit = env->GetStaticMethodID(system, "exit", "(I)V");
  if (exit == nullptr) return;
  // Java ends the process with exit() as soon as it has cleaned up. The last function that was
  // registered runs first: before objects go away that the command is still using.
  std::atexit(EndBySignal);
  env->CallStaticVoidMethod(system, exit, jint{kSignalCode + endingSignal});
}

void Watch() {
  const int signal = NextSignal();
  if (signal == 0) return;
  // Kept to the end: nobody makes another file, or ends Java, any more.
  const std::lock_guard<std::mutex> lock(mutex);
  endingSignal = signal;
  RemovePaths();
  if (javaRuns) EndJava();
  EndBySignal();
}

}  // namespace

void SignalCleanup::Begin() {
  int ends[2];
  // Without a pipe the signals end the process as they always do.
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  readEnd = ends[0];
  writeEnd = ends[1];
  std::thread(Watch).detach();
  for (const int signal : kSignals) SetAction(signal, OnSignal);
}

std::unique_lock<std::mutex> SignalCleanup::Lock() { return std::unique_lock<std::mutex>(mutex); }

void SignalCleanup::Add(const std::string& path) { Paths().insert(path); }

void SignalCleanup::Remove(const std::string& path) { Paths().erase(path); }

void SignalCleanup::SetJavaRuns(bool runs) { javaRuns = runs; }

}  // namespace chartbridge
