// SPDX-License-Identifier: Apache-2.0
#include "host/JavaSignals.h"

#include <csignal>

namespace chartbridge {
namespace {

bool IsDefault(int signal) {
  struct sigaction action {};
  if (sigaction(signal, nullptr, &action) != 0) return false;
  return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

}  // namespace

int JavaWakeSignal() { return SIGRTMAX - 2; }

int FreeSuspendSignal() {
  // One that is read by signalfd or sigwait is blocked and has the default action.
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  for (int signal = SIGRTMAX; signal >= SIGRTMIN; --signal) {
    const bool isRead = sigismember(&blocked, signal) == 1;
    if (signal != JavaWakeSignal() && !isRead && IsDefault(signal)) return signal;
  }
  return 0;
}

}  // namespace chartbridge
