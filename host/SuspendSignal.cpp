// SPDX-License-Identifier: Apache-2.0
#include "host/SuspendSignal.h"

#include <unistd.h>

#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

#include "host/JavaSignals.h"

namespace chartbridge {
namespace {

constexpr char kName[] = "_JAVA_SR_SIGNUM";

std::string Variable(int signal) { return std::string(kName) + "=" + std::to_string(signal); }

// setenv would move the array under the hands of threads that read it.
void Use(char** entries) { __atomic_store_n(&environ, entries, __ATOMIC_RELEASE); }

}  // namespace

struct SuspendSignal::Environment {
  std::string variable;
  std::vector<char*> entries;
};

SuspendSignal::SuspendSignal() {
  const int signal = FreeSuspendSignal();
  if (signal == 0 || std::getenv(kName) != nullptr) return;
  _own = environ;
  _extended = Extend(_own, signal);
  Use(_extended->entries.data());
}

SuspendSignal::~SuspendSignal() {
  if (_extended == nullptr) return;
  if (IsUntouched()) {
    Use(_own);
  } else {
    unsetenv(kName);
  }
}

// Kept for ever: a thread that is reading the environment when it is taken away again goes on
// reading here.
SuspendSignal::Environment* SuspendSignal::Extend(char** own, int signal) {
  static auto* const all = new std::deque<Environment>;
  Environment& extended = all->emplace_back();
  extended.variable = Variable(signal);
  for (char** entry = own; entry != nullptr && *entry != nullptr; ++entry) {
    extended.entries.push_back(*entry);
  }
  extended.entries.push_back(extended.variable.data());
  extended.entries.push_back(nullptr);
  return &extended;
}

// Whether nobody has changed the environment meanwhile.
bool SuspendSignal::IsUntouched() const {
  const std::vector<char*>& entries = _extended->entries;
  if (environ != entries.data()) return false;
  // The last two are the variable and the end.
  for (std::size_t i = 0; i + 2 < entries.size(); ++i) {
    if (_own[i] != entries[i]) return false;
  }
  return true;
}

}  // namespace chartbridge
