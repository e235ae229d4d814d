// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_SUSPENDSIGNAL_H_
#define HOST_SUSPENDSIGNAL_H_

namespace chartbridge {

/// Tells a JVM that is created during its life to leave SIGUSR2 alone and to use a real-time signal
/// in its place.
///
/// The JVM takes the number from the environment variable `_JAVA_SR_SIGNUM` and from nowhere else.
/// Where the variable is set already, somebody has chosen, and nothing happens. Otherwise the
/// process has it for the life of the object, and the environment that it had before afterwards.
/// The signal is chosen by the calling thread's mask, so the object comes before a `SignalScope`.
/// Other threads may read the environment meanwhile. One that changes it at this very moment runs
/// the risk that it always does.
class SuspendSignal {
 public:
  SuspendSignal();
  ~SuspendSignal();

  SuspendSignal(const SuspendSignal&) = delete;
  SuspendSignal& operator=(const SuspendSignal&) = delete;

 private:
  struct Environment;

  static Environment* Extend(char** own, int signal);
  bool IsUntouched() const;

  char** _own = nullptr;
  Environment* _extended = nullptr;
};

}  // namespace chartbridge

#endif  // HOST_SUSPENDSIGNAL_H_
