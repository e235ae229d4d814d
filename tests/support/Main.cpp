// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  // The same times on every machine.
  setenv("TZ", "UTC", 1);
  tzset();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
