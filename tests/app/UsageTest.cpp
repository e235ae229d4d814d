// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/CommandRun.h"
#include "tests/app/Samples.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

void ExpectUsageError(const std::vector<std::string>& arguments, const std::string& reason,
                      const std::string& command) {
  const RunResult result = RunCommand(arguments);
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "chartbridge: " + reason + " (see " + command + " --help)\n");
}

TEST(UsageTest, SaysItsVersion) {
  const RunResult result = RunCommand({"--version"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "chartbridge " CHARTBRIDGE_VERSION "\n");
  EXPECT_EQ(result.errors, "");
}

TEST(UsageTest, HelpIsEverywhereAndHasExamples) {
  const std::vector<std::vector<std::string>> commands = {{},
                                                          {"render"},
                                                          {"convert"},
                                                          {"convert", "gpl"},
                                                          {"convert", "upgrade"},
                                                          {"convert", "image"},
                                                          {"convert", "style"},
                                                          {"convert", "template"},
                                                          {"histogram"}};
  for (std::vector<std::string> arguments : commands) {
    arguments.push_back("--help");
    const RunResult result = RunCommand(arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments.front();
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, HasSubstr("Usage: chartbridge"));
    EXPECT_THAT(result.output, HasSubstr("Examples:\n  chartbridge "));
  }
}

TEST(UsageTest, HelpNamesEveryOptionOfRender) {
  const RunResult result = RunCommand({"render", "--help"});
  for (const char* option : {"CHART", "--data", "--output", "--type", "--size", "--locale",
                             "--texts", "--style ", "--style-file", "--template ", "--templates ",
                             "--map", "--classpath", "--no-guard", "--verbose"}) {
    EXPECT_THAT(result.output, HasSubstr(option));
  }
}

TEST(UsageTest, WhatIsMissingIsNamed) {
  ExpectUsageError({}, "A subcommand is required", "chartbridge");
  ExpectUsageError({"render"}, "chart is required", "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv"}, "--output is required",
                   "chartbridge render");
  ExpectUsageError({"convert"}, "A subcommand is required", "chartbridge convert");
  ExpectUsageError({"convert", "gpl"}, "input is required", "chartbridge convert gpl");
}

TEST(UsageTest, GraphLanguageNeedsData) {
  const SampleFolder folder;
  const RunResult result = folder.Run({"render", "sales.gpl", "-o", "a.png"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.errors,
            "chartbridge: --data is required: graph language holds no data "
            "(see chartbridge render --help)\n");
}

TEST(UsageTest, WhatIsUnknownIsNamed) {
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "a.png", "--colour"},
                   "The following argument was not expected: --colour", "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "a.tiff"},
                   "a.tiff: the ending is none of png, jpeg, jpg, bmp, gif, svg, pdf; "
                   "name the format with --type",
                   "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "a.png", "--type", "tiff"},
                   "--type: tiff is none of png, jpeg, jpg, bmp, gif, svg, pdf",
                   "chartbridge render");
}

TEST(UsageTest, SizeMustBeAPercentage) {
  for (const char* size : {"0", "-5", "10001", "nan"}) {
    ExpectUsageError(
        {"render", "a.gpl", "-d", "a.csv", "-o", "a.png", std::string("--size=") + size},
        "--size: must be more than 0 and at most 10000 percent", "chartbridge render");
  }
  const RunResult result =
      RunCommand({"render", "a.gpl", "-d", "a.csv", "-o", "a.png", "--size", "big"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, HasSubstr("--size"));
}

TEST(UsageTest, OnlyOneInputIsStandardInput) {
  ExpectUsageError({"render", "-", "-d", "-", "-o", "a.png"},
                   "only one of the inputs can be standard input", "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "-", "--template", "-", "-o", "a.png"},
                   "only one of the inputs can be standard input", "chartbridge render");
}

TEST(UsageTest, MapNeedsAPngFile) {
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "a.svg", "--map"},
                   "--map goes with a PNG picture; -o must name a file that ends in .png",
                   "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "-", "--map"},
                   "--map goes with a PNG picture; -o must name a file that ends in .png",
                   "chartbridge render");
  ExpectUsageError({"render", "a.gpl", "-d", "a.csv", "-o", "a.png", "--map", "--type", "svg"},
                   "--map goes with a PNG picture, not with --type svg", "chartbridge render");
}

TEST(UsageTest, WrongUsageTakesOneLine) {
  const std::vector<std::vector<std::string>> commands = {
      {"draw"},
      {"render", "a.gpl", "-o", "a.png", "b", "c"},
      {"render", "a.gpl", "-o", "a.png", "--size", "two\nlines"},
      {"render", "a.gpl", "-o", "a.png", "--type", "two\nlines"},
      {"render", "a.gpl", "-o", "two\nlines"},
      {"json", "a.gpl", "-o", "a.json", "--geo"},
      {"json", "a.gpl", "-o", "a.json", "--renderer", "two\nlines"},
      {"view"},
      {"convert", "template", "a.json", "--set", "two\nlines"},
      {"convert", "image", "a.svg", "-o", "a.two\nlines"},
      {"histogram", "a.gpl", "--values", "a", "--fill", "two\nlines"},
      {"tree"},
      {"tree", "batch", "a.pmml", "-o", "-"},
      {"tree", "show", "a.pmml", "--geometry", "two\nlines"},
      {"document", "export", "a.xml", "-o", "a.two\nlines"},
      {"document", "export", "a.xml", "-o", "a.csv", "--table", "0"},
      {"doctor", "--json", "--quiet"}};
  for (const std::vector<std::string>& arguments : commands) {
    const RunResult result = RunCommand(arguments);
    EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, MatchesRegex("chartbridge: [^\n]+ \\(see chartbridge[a-z ]* "
                                            "--help\\)\n"));
  }
}

TEST(UsageTest, AFailureTakesOneLineWhateverTheNamesAre) {
  const RunResult result = RunCommand({"tree", "size", "two\nlines.pmml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "chartbridge: two lines.pmml: No such file or directory\n");
}

TEST(UsageTest, WrongUsageTouchesNoFile) {
  const WorkFolder folder;
  folder.Write("a.png", "old");
  RunSettings settings;
  settings.folder = folder.Path();
  const RunResult result = RunCommand({"render", "a.gpl", "-o", "a.png", "--size", "0"}, settings);
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(folder.Read("a.png"), "old");
}

}  // namespace
}  // namespace chartbridge
