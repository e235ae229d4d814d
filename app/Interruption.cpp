// SPDX-License-Identifier: Apache-2.0
#include "app/Interruption.h"

namespace chartbridge {

namespace {

volatile sig_atomic_t hasCome = 0;

void OnSignal(int) { hasCome = 1; }

/// Leaves a signal ignored that the caller ignores, as nohup does.
void Catch(int signal, struct sigaction& before) {
  sigaction(signal, nullptr, &before);
  if (before.sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

}  // namespace

Interruption::Interruption() {
  hasCome = 0;
  Catch(SIGHUP, _hangup);
  Catch(SIGINT, _interrupt);
  Catch(SIGTERM, _terminate);
}

Interruption::~Interruption() {
  sigaction(SIGHUP, &_hangup, nullptr);
  sigaction(SIGINT, &_interrupt, nullptr);
  sigaction(SIGTERM, &_terminate, nullptr);
}

bool Interruption::HasCome() const { return hasCome != 0; }

}  // namespace chartbridge
