// SPDX-License-Identifier: Apache-2.0
#include "guard/JvmTexts.h"

#include <mutex>
#include <new>
#include <set>

namespace chartbridge {
namespace {

struct State {
  std::mutex mutex;
  std::set<const char*> out;
};

// Leaked on purpose: native code may release texts while the process ends. Null when memory is
// short.
State* TheState() {
  static auto* const state = new (std::nothrow) State;
  return state;
}

}  // namespace

bool JvmTexts::Add(const char* chars) {
  State* state = TheState();
  if (state == nullptr) return false;
  const std::lock_guard<std::mutex> lock(state->mutex);
  try {
    state->out.insert(chars);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool JvmTexts::Take(const char* chars) {
  State* state = TheState();
  if (state == nullptr) return false;
  const std::lock_guard<std::mutex> lock(state->mutex);
  return state->out.erase(chars) != 0;
}

}  // namespace chartbridge
