// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_CONTRACTTEST_H_
#define TESTS_SUPPORT_CONTRACTTEST_H_

#include <gtest/gtest.h>

#include "tests/support/FakeJvm.h"

namespace chartbridge::testing {

/// A test on a fresh fake JVM and a platform that works, with the log recording from the start.
///
/// At its end the process-wide lock must be free.
class ContractTest : public ::testing::Test {
 protected:
  ContractTest();
  ~ContractTest() override;

  FakeJvm jvm;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_CONTRACTTEST_H_
