// SPDX-License-Identifier: Apache-2.0
#ifndef APP_INTERRUPTION_H_
#define APP_INTERRUPTION_H_

#include <csignal>

namespace chartbridge {

/// For its scope, Ctrl-C, a termination request and the end of the terminal do not end the process
/// but can be asked for. One at a time.
class Interruption {
 public:
  Interruption();
  /// Puts back what the signals did before.
  ~Interruption();

  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// Whether one of the signals came since the construction.
  bool HasCome() const;

 private:
  struct sigaction _hangup {};
  struct sigaction _interrupt {};
  struct sigaction _terminate {};
};

}  // namespace chartbridge

#endif  // APP_INTERRUPTION_H_
