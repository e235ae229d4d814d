// SPDX-License-Identifier: Apache-2.0
#include "app/NativeText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace chartbridge {
namespace {

/// Each test starts with a locale of its own choice in the environment, and ends in the "C" locale.
class NativeTextTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) unsetenv(name);
  }
  void TearDown() override {
    SetUp();
    std::setlocale(LC_ALL, "C");
  }
};

TEST_F(NativeTextTest, NoLocaleMeansUtf8AlsoForTheJvm) {
  AdoptUserEncoding();
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
  EXPECT_STREQ(std::getenv("LC_CTYPE"), "C.UTF-8");
  EXPECT_EQ(std::getenv("LC_ALL"), nullptr);
}

TEST_F(NativeTextTest, OverridingCLocaleIsReplaced) {
  setenv("LC_ALL", "C", 1);
  AdoptUserEncoding();
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
  EXPECT_STREQ(std::getenv("LC_ALL"), "C.UTF-8");
}

TEST_F(NativeTextTest, LocaleThatIsNotInstalledMeansUtf8) {
  setenv("LANG", "xx_YY.ISO-8859-1", 1);
  AdoptUserEncoding();
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
}

TEST_F(NativeTextTest, NumbersKeepTheirDecimalPoint) {
  setenv("LC_ALL", "C.UTF-8", 1);
  AdoptUserEncoding();
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(NativeTextTest, Utf8LocaleOfTheUserStays) {
  setenv("LC_ALL", "C.UTF-8", 1);
  AdoptUserEncoding();
  EXPECT_STREQ(std::getenv("LC_ALL"), "C.UTF-8");
  EXPECT_EQ(std::getenv("LC_CTYPE"), nullptr);
}

TEST_F(NativeTextTest, LineEndsBecomeBlanks) {
  EXPECT_EQ(OnOneLine("one"), "one");
  EXPECT_EQ(OnOneLine("one  \r\n\t two\n\nthree\n"), "one two three");
  EXPECT_EQ(OnOneLine("\n one"), "one");
  EXPECT_EQ(OnOneLine(""), "");
}

}  // namespace
}  // namespace chartbridge
