// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_JNITABLE_H_
#define TESTS_SUPPORT_JNITABLE_H_

#include <jni.h>

namespace chartbridge::testing {

/// The function table of a `FakeJvm`. Functions outside its model fail the test by their name and
/// return zero.
JNINativeInterface_ MakeJniTable();

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_JNITABLE_H_
