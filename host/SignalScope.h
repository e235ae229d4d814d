// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_SIGNALSCOPE_H_
#define HOST_SIGNALSCOPE_H_

#include <csignal>

namespace chartbridge {

/// Blocks, on the calling thread, all signals that can come from outside, for the life of the
/// object: threads that are started meanwhile begin with them blocked, so that handlers of the host
/// run on the host's own threads.
///
/// Signals that a thread gets by its own fault stay as they are, and so does the one by which Java
/// wakes a thread of its own, and SIGPROF, by which profilers stop whichever thread computes. At
/// the end the mask is what it was, except for signals that the JVM has unblocked on this thread
/// because it needs them (SIGSEGV and the like): those stay unblocked.
class SignalScope {
 public:
  SignalScope();
  ~SignalScope();

  SignalScope(const SignalScope&) = delete;
  SignalScope& operator=(const SignalScope&) = delete;

 private:
  sigset_t _own{};
};

}  // namespace chartbridge

#endif  // HOST_SIGNALSCOPE_H_
