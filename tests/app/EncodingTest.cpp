// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::StartsWith;

/// The user's locale, as the environment says it.
struct Locale {
  const char* description;
  const char* variable;
  const char* value;
};

class EncodingTest : public testing::TestWithParam<Locale> {
 protected:
  RunSettings Settings() const {
    RunSettings settings;
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) settings.environment[name] = kUnset;
    if (GetParam().variable != nullptr) {
      settings.environment[GetParam().variable] = GetParam().value;
    }
    return settings;
  }

  const SampleFolder folder;
};

TEST_P(EncodingTest, FileNamesBeyondAsciiWork) {
  folder.Write("Umsätze €.gpl", kChart);
  folder.Write("größe.csv", kData);
  const RunResult result = folder.Run(
      {"render", "Umsätze €.gpl", "-d", "größe.csv", "-o", "Jahr ’26 日本 📈.png"}, Settings());
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(folder.Read("Jahr ’26 日本 📈.png"), StartsWith("\x89PNG"));
}

TEST_P(EncodingTest, ReasonsBeyondAsciiArePrinted) {
  folder.Write("süß.gpl", "draw bar: x région, y sum of revenue\n");
  const RunResult result =
      folder.Run({"render", "süß.gpl", "-d", "sales.csv", "-o", "a.png"}, Settings());
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: süß.gpl: line 1, column 13: The data has no column "
                         "\"région\";"));
}

TEST_P(EncodingTest, ReasonsOfConversionsBeyondAsciiArePrinted) {
  folder.Write("süß.gpl", "größe 3\n");
  const RunResult result = folder.Run({"convert", "gpl", "süß.gpl"}, Settings());
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: süß.gpl: line 1, column 1: found \"größe\", "));
}

INSTANTIATE_TEST_SUITE_P(Locales, EncodingTest,
                         testing::Values(Locale{"Utf8", "LC_ALL", "C.UTF-8"},
                                         Locale{"C", "LC_ALL", "C"},
                                         Locale{"Posix", "LANG", "POSIX"},
                                         Locale{"None", nullptr, nullptr},
                                         Locale{"NotInstalled", "LANG", "de_DE.ISO-8859-1"}),
                         [](const testing::TestParamInfo<Locale>& parameter) {
                           return std::string(parameter.param.description);
                         });

}  // namespace
}  // namespace chartbridge
