// SPDX-License-Identifier: Apache-2.0
#include "tests/support/AccessorProbe.h"

#include "bridge/JAccessor.h"
#include "tests/support/FieldAt.h"

// The base-object destructor, which only the destructors of derived classes call.
void RealDestructor(JAccessor* accessor) __asm__("__real__ZN9JAccessorD2Ev");
void WrapDestructor(JAccessor* accessor) __asm__("__wrap__ZN9JAccessorD2Ev");

void WrapDestructor(JAccessor* accessor) {
  chartbridge::testing::AccessorProbe::Get().Look(*accessor);
  RealDestructor(accessor);
}

namespace chartbridge::testing {

AccessorProbe& AccessorProbe::Get() {
  static thread_local AccessorProbe probe;
  return probe;
}

void AccessorProbe::Reset() { *this = AccessorProbe(); }

void AccessorProbe::Look(const JAccessor& accessor) {
  _env = FieldAt<JNIEnv*>(&accessor, sizeof(void*));
  ++_destructions;
}

}  // namespace chartbridge::testing
