// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kCompare =
    std::string(CHARTBRIDGE_EXAMPLES) + "/client-templates/compare-groups.json";

TEST(ConvertTemplateTest, SlotsAreFilledAndTheChartRenders) {
  const SampleFolder folder;
  const RunResult result =
      folder.Run({"convert", "template", kCompare, "--set", "category=region", "--set",
                  "measure=revenue", "--set", "title=A = \"B\" \xC3\xA4", "-o", "chart.xml"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output + result.errors, "");
  const std::string chart = folder.Read("chart.xml");
  EXPECT_THAT(chart, HasSubstr("<titles title=\"A = &quot;B&quot; \xC3\xA4\""));
  EXPECT_THAT(chart, Not(HasSubstr("<color")));
  EXPECT_EQ(folder.Run({"render", "chart.xml", "-d", "sales.csv", "-o", "a.png"}).exitCode, 0);
}

TEST(ConvertTemplateTest, TemplateMayComeFromStandardInput) {
  const SampleFolder folder;
  RunSettings settings;
  settings.input =
      "{\"version\":1,\"chart\":{\"elements\":[{\"pie\":{\"x\":{\"column\":\"a\"}}}]}}";
  const RunResult result = folder.Run({"convert", "template", "-"}, settings);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("<pie>"));
}

void ExpectFailure(const std::vector<std::string>& settings, const std::string& content,
                   const std::string& reason) {
  const SampleFolder folder;
  folder.Write("a.json", content);
  folder.Write("out", "old");
  std::vector<std::string> arguments = {"convert", "template", "a.json", "-o", "out"};
  for (const std::string& setting : settings) {
    arguments.insert(arguments.end(), {"--set", setting});
  }
  const RunResult result = folder.Run(arguments);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
  EXPECT_EQ(folder.Read("out"), "old");
}

TEST(ConvertTemplateTest, FailureNamesThePlaceOrTheOption) {
  const std::string text =
      "{\"version\": 1, \"slots\": [{\"name\": \"n\", \"kind\": \"number\"}],\n"
      "\"chart\": {\"width\": {\"slot\": \"n\"}, \"elements\": [{\"bar\": {}}]}}\n";
  ExpectFailure({}, "", "a.json: The template is empty.");
  ExpectFailure({}, text, "a.json: line 1, column 26: slot \"n\" has no value; expected a number");
  ExpectFailure({"n=many"}, text, "--set: the value of slot \"n\" is \"many\"; expected a number");
  ExpectFailure({"m=1"}, text, "--set: there is no slot \"m\"; expected n");
  ExpectFailure({"n=500"}, text,
                "a.json: line 2, column 56: a bar needs x or y: the column along that axis");
  ExpectFailure(
      {"n=5"}, text,
      "a.json: line 2, column 20: the width is 5; expected 16 to 10000 (the value of slot "
      "\"n\")");
}

TEST(ConvertTemplateTest, SettingHasASlotAndAValue) {
  const SampleFolder folder;
  for (const std::string setting : {"bins", "=5"}) {
    const RunResult result = folder.Run({"convert", "template", kCompare, "--set", setting});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors, "chartbridge: --set: \"" + setting +
                                 "\" is not of the form slot=value "
                                 "(see chartbridge convert template --help)\n");
  }
}

}  // namespace
}  // namespace chartbridge
