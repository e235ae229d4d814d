// SPDX-License-Identifier: Apache-2.0
// Which signals the host takes for the JVM and keeps from its threads, without a JVM.
#include <gtest/gtest.h>

#include <csignal>

#include "host/JavaSignals.h"
#include "host/SignalScope.h"

namespace chartbridge {
namespace {

class SignalParts : public testing::Test {
 protected:
  void SetUp() override { pthread_sigmask(SIG_SETMASK, nullptr, &_own); }
  void TearDown() override { pthread_sigmask(SIG_SETMASK, &_own, nullptr); }

  static void Change(int how, int signal) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, signal);
    pthread_sigmask(how, &signals, nullptr);
  }

  static bool IsBlocked(int signal) {
    sigset_t now;
    pthread_sigmask(SIG_SETMASK, nullptr, &now);
    return sigismember(&now, signal) == 1;
  }

 private:
  sigset_t _own{};
};

void OnSignal(int) {}

TEST_F(SignalParts, TheLastSignalIsFree) { EXPECT_EQ(FreeSuspendSignal(), SIGRTMAX); }

TEST_F(SignalParts, ASignalWithAHandlerIsTaken) {
  struct sigaction action {};
  struct sigaction own {};
  action.sa_handler = OnSignal;
  sigaction(SIGRTMAX, &action, &own);
  EXPECT_EQ(FreeSuspendSignal(), SIGRTMAX - 1);
  sigaction(SIGRTMAX, &own, nullptr);
}

// A host that waits for a signal, or reads it from a descriptor, blocks it and sets no action.
TEST_F(SignalParts, ASignalThatIsBlockedIsTaken) {
  Change(SIG_BLOCK, SIGRTMAX);
  EXPECT_EQ(FreeSuspendSignal(), SIGRTMAX - 1);
  Change(SIG_BLOCK, SIGRTMAX - 1);
  // The one before is Java's own.
  EXPECT_EQ(FreeSuspendSignal(), SIGRTMAX - 3);
}

TEST_F(SignalParts, NoneIsFreeWhereAllAreBlocked) {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  EXPECT_EQ(FreeSuspendSignal(), 0);
}

TEST_F(SignalParts, AScopeBlocksWhatComesFromOutside) {
  {
    const SignalScope signals;
    for (const int signal :
         {SIGHUP, SIGINT, SIGTERM, SIGUSR1, SIGUSR2, SIGCHLD, SIGALRM, SIGRTMIN}) {
      EXPECT_TRUE(IsBlocked(signal)) << signal;
    }
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, JavaWakeSignal()}) {
      EXPECT_FALSE(IsBlocked(signal)) << signal;
    }
  }
  EXPECT_FALSE(IsBlocked(SIGTERM));
}

// A profiler of the process's threads sees the JVM's, too, unless the host keeps it out.
TEST_F(SignalParts, AScopeLeavesTheProfilersSignal) {
  {
    const SignalScope signals;
    EXPECT_FALSE(IsBlocked(SIGPROF));
  }
  Change(SIG_BLOCK, SIGPROF);
  const SignalScope signals;
  EXPECT_TRUE(IsBlocked(SIGPROF));
}

}  // namespace
}  // namespace chartbridge
