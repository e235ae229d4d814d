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
  for (int signal = SIGRTMAX; signal >= SIGRTMIN; --signal) {
    if (signal != JavaWakeSignal() && IsDefault(signal)) return signal;
  }
  return 0;
}

}  // namespace chartbridge
