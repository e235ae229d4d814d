// SPDX-License-Identifier: Apache-2.0
#include "app/Interruption.h"

namespace chartbridge {

namespace {

volatile sig_atomic_t hasCome = 0;

void OnSignal(int) { hasCome = 1; }

}  // namespace

Interruption::Interruption() {
  hasCome = 0;
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_RESTART;
  sigaction(SIGHUP, &action, &_hangup);
  sigaction(SIGINT, &action, &_interrupt);
  sigaction(SIGTERM, &action, &_terminate);
}

Interruption::~Interruption() {
  sigaction(SIGHUP, &_hangup, nullptr);
  sigaction(SIGINT, &_interrupt, nullptr);
  sigaction(SIGTERM, &_terminate, nullptr);
}

bool Interruption::HasCome() const { return hasCome != 0; }

}  // namespace chartbridge
