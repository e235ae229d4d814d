// SPDX-License-Identifier: Apache-2.0
#include "host/GuardBuffers.h"

#include <dlfcn.h>

#include <cstddef>

namespace chartbridge {
namespace {

struct Functions {
  unsigned long long (*mark)();
  std::size_t (*freeUnreleased)(unsigned long long);
};

// By its soname, which finds the library under whatever path it was loaded, also by the JVM itself.
Functions Find() {
  void* library = dlopen(CHARTBRIDGE_GUARD_SONAME, RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) return {};
  Functions found{};
  found.mark = reinterpret_cast<decltype(found.mark)>(dlsym(library, "jniguard_mark"));
  found.freeUnreleased =
      reinterpret_cast<decltype(found.freeUnreleased)>(dlsym(library, "jniguard_free_unreleased"));
  // A guard of an older version has neither.
  return found.mark != nullptr && found.freeUnreleased != nullptr ? found : Functions{};
}

const Functions& Guard() {
  static const Functions functions = Find();
  return functions;
}

}  // namespace

unsigned long long GuardBuffers::Mark() { return Guard().mark == nullptr ? 0 : Guard().mark(); }

void GuardBuffers::FreeSince(unsigned long long mark) {
  if (Guard().freeUnreleased != nullptr) Guard().freeUnreleased(mark);
}

}  // namespace chartbridge
