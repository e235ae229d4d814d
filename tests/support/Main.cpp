// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
  // The same texts and times on every machine.
  setenv("TZ", "UTC", 1);
  tzset();
  ucnv_setDefaultName("UTF-8");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
