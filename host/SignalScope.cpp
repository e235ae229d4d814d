// SPDX-License-Identifier: Apache-2.0
#include "host/SignalScope.h"

#include <initializer_list>

#include "host/JavaSignals.h"

namespace chartbridge {
namespace {

sigset_t SignalsFromOutside() {
  sigset_t signals;
  sigfillset(&signals);
  for (const int own : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, JavaWakeSignal()}) {
    sigdelset(&signals, own);
  }
  // Comes to the thread that has used up the time; where it is blocked, a profiler sees nothing.
  sigdelset(&signals, SIGPROF);
  return signals;
}

}  // namespace

SignalScope::SignalScope() {
  const sigset_t signals = SignalsFromOutside();
  pthread_sigmask(SIG_BLOCK, &signals, &_own);
}

SignalScope::~SignalScope() {
  sigset_t now;
  pthread_sigmask(SIG_SETMASK, nullptr, &now);
  sigset_t kept;
  sigandset(&kept, &_own, &now);
  pthread_sigmask(SIG_SETMASK, &kept, nullptr);
}

}  // namespace chartbridge
