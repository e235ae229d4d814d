// SPDX-License-Identifier: Apache-2.0
// Standard input, output and error that are closed, full, or all that there is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "tests/app/Samples.h"
#include "tests/app/StartedProgram.h"
#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::Contains;
using testing::Not;
using testing::StartsWith;

constexpr const char* kNoInput =
    "chartbridge: standard input: is not open for reading; give it a file or a pipe\n";
constexpr const char* kNoOutput =
    "chartbridge: standard output: is not open for writing; give it a file or a pipe\n";

const std::string kReport =
    "<document xmlns=\"urn:chartbridge:document:1\"><paragraph>Tea</paragraph></document>\n";
const std::string kReportWithFinding =
    "<document xmlns=\"urn:chartbridge:document:1\"><paragraf/></document>\n";
const std::string kSheet =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:template match='/'><xsl:copy-of select='.'/></xsl:template></xsl:stylesheet>";
const std::string kTemplate =
    "{\"version\": 1, \"chart\": {\"elements\": [{\"pie\": {\"x\": {\"column\": \"a\"}}}]}}";

/// The command line that runs the command with changes to its streams in the notation of shells,
/// such as "<&-" for a closed standard input.
std::vector<std::string> Redirected(const std::vector<std::string>& arguments,
                                    const std::string& changes) {
  std::vector<std::string> all = {"sh", "-c", "exec \"$0\" \"$@\" " + changes, CHARTBRIDGE_COMMAND};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return all;
}

std::string Closing(const std::set<int>& streams) {
  std::string changes;
  for (const int stream : streams) changes += " " + std::to_string(stream) + ">&-";
  return changes;
}

constexpr const char* kToFullDevice = ">/dev/full";

class StandardStreamsTest : public testing::Test {
 protected:
  StandardStreamsTest() {
    folder.Write("sales.gpl", kChart);
    folder.Write("sales.csv", kData);
    folder.Write("line.gpl", "draw line: x year, y sales\n");
    folder.Write("values.txt", "1\n2\n");
    folder.Write("report.xml", kReport);
    folder.Write("wrong.xml", kReportWithFinding);
    folder.Write("same.xsl", kSheet);
    folder.Write("pie.json", kTemplate);
    settings.folder = folder.Path();
  }

  const TreeFolder folder;
  RunSettings settings;
};

/// Every way to lack some of them.
const std::vector<std::set<int>> kStreams = {{0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}};

struct Case {
  std::vector<std::string> arguments;
  /// What standard input holds; empty when it is not read.
  std::string input;
  /// The file that is written; empty for standard output.
  std::string output;
};

void PrintTo(const Case& command, std::ostream* out) {
  for (const std::string& argument : command.arguments) *out << argument << " ";
}

std::vector<Case> Cases() {
  std::ifstream model(CHARTBRIDGE_EXAMPLES "/trees/iris.pmml", std::ios::binary);
  const std::string iris(std::istreambuf_iterator<char>(model), {});
  return {{{"render", "sales.gpl", "-d", "sales.csv", "-o", "a.svg"}, "", "a.svg"},
          {{"render", "-", "-d", "sales.csv", "-o", "a.svg"}, kChart, "a.svg"},
          {{"render", "sales.gpl", "-d", "sales.csv", "-o", "-", "-t", "svg"}, "", ""},
          {{"json", "sales.gpl", "-d", "sales.csv", "-o", "a.json"}, "", "a.json"},
          {{"json", "-", "-d", "sales.csv", "-o", "-"}, kChart, ""},
          {{"convert", "gpl", "sales.gpl", "-o", "a.xml"}, "", "a.xml"},
          {{"convert", "gpl", "-"}, kChart, ""},
          {{"tree", "render", "iris.pmml", "-o", "a.svg"}, "", "a.svg"},
          {{"tree", "size", "-"}, iris, ""},
          {{"document", "export", "report.xml", "-o", "a.txt"}, "", "a.txt"},
          {{"document", "export", "-", "-o", "-", "--to", "txt"}, kReport, ""}};
}

/// What a command does that lacks some of its streams.
void ExpectRight(const Case& command, const std::set<int>& closed, const std::string& expected,
                 const TreeFolder& folder, RunSettings settings) {
  settings.input = command.input;
  const RunResult result = RunProgram(Redirected(command.arguments, Closing(closed)), settings);
  const bool lacksInput = !command.input.empty() && closed.count(0) > 0;
  const bool lacksOutput = command.output.empty() && closed.count(1) > 0;
  const std::string errors = lacksOutput ? kNoOutput : lacksInput ? kNoInput : "";
  EXPECT_EQ(result.errors, closed.count(2) > 0 ? "" : errors);
  EXPECT_EQ(result.exitCode, errors.empty() ? 0 : 1);
  const std::string written = command.output.empty() ? result.output : folder.Read(command.output);
  EXPECT_EQ(written, errors.empty() ? expected : "");
}

class ClosedStreamsTest : public StandardStreamsTest, public testing::WithParamInterface<Case> {};

TEST_P(ClosedStreamsTest, EachMayBeClosed) {
  const Case& command = GetParam();
  settings.input = command.input;
  const RunResult result = RunCommand(command.arguments, settings);
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  const std::string whole = command.output.empty() ? result.output : folder.Read(command.output);
  ASSERT_NE(whole, "");
  for (const std::set<int>& closed : kStreams) {
    SCOPED_TRACE(testing::PrintToString(closed));
    if (!command.output.empty()) std::filesystem::remove(folder.File(command.output));
    ExpectRight(command, closed, whole, folder, settings);
  }
  EXPECT_THAT(folder.Names(), Not(Contains(StartsWith("."))));
}

INSTANTIATE_TEST_SUITE_P(Commands, ClosedStreamsTest, testing::ValuesIn(Cases()));

/// Messages go nowhere, rather than into the first file that the command opens.
TEST_F(StandardStreamsTest, MessagesWithoutAPlaceSpoilNoFile) {
  folder.Write("broken.csv", "region,product,revenue\nNorth\n");
  const RunResult result = RunProgram(
      Redirected({"render", "sales.gpl", "-d", "broken.csv", "-o", "a.png", "-v"}, Closing({2})),
      settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(folder.Read("broken.csv"), "region,product,revenue\nNorth\n");
  EXPECT_EQ(folder.Read("sales.gpl"), kChart);
  EXPECT_EQ(folder.Read("a.png"), "");
}

TEST_F(StandardStreamsTest, ASignalEndsTheCommandWhicheverIsClosed) {
  for (const std::set<int>& closed : kStreams) {
    StartedProgram program(
        Redirected({"render", "sales.gpl", "-d", "sales.csv", "-o", "large.png", "--size", "1200"},
                   Closing(closed)),
        settings);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    program.Send(SIGTERM);
    const RunResult result = program.Result();
    EXPECT_EQ(result.exitCode, 128 + SIGTERM) << testing::PrintToString(closed);
    EXPECT_EQ(folder.Read("large.png"), "");
  }
}

TEST_F(StandardStreamsTest, AnAnswerThatCannotBeWrittenIsAFailure) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--version"}, {"--help"}, {"tree", "batch", "--help"}}) {
    const RunResult result = RunProgram(Redirected(arguments, kToFullDevice));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "chartbridge: standard output: No space left on device\n");
    const RunResult other = RunProgram(Redirected(arguments, Closing({1})));
    EXPECT_EQ(other.exitCode, 1);
    EXPECT_EQ(other.errors, kNoOutput);
  }
}

TEST_F(StandardStreamsTest, AResultThatCannotBeWrittenIsAFailure) {
  const std::vector<std::vector<std::string>> commands = {
      {"render", "sales.gpl", "-d", "sales.csv", "-o", "-"},
      {"json", "sales.gpl", "-d", "sales.csv", "-o", "-"},
      {"convert", "gpl", "sales.gpl"},
      {"convert", "style", "sales.gpl", "--sheet", "same.xsl"},
      {"convert", "template", "pie.json"},
      {"histogram", "line.gpl", "--values", "values.txt"},
      {"tree", "render", "iris.pmml", "-o", "-"},
      {"tree", "size", "iris.pmml"},
      {"tree", "batch", "iris.pmml", "-o", "out", "--depth", "1"},
      {"document", "build", "report.xml", "-o", "-"},
      {"document", "export", "report.xml", "-o", "-", "--to", "txt"},
      {"document", "check", "wrong.xml"},
      {"doctor"}};
  for (const std::vector<std::string>& arguments : commands) {
    const RunResult result = RunProgram(Redirected(arguments, kToFullDevice), settings);
    EXPECT_EQ(result.exitCode, 1) << testing::PrintToString(arguments);
    EXPECT_EQ(result.errors, "chartbridge: standard output: No space left on device\n")
        << testing::PrintToString(arguments);
  }
}

TEST_F(StandardStreamsTest, AFileDoesNotNeedStandardOutput) {
  const RunResult result = RunProgram(
      Redirected({"render", "sales.gpl", "-d", "sales.csv", "-o", "a.svg"}, kToFullDevice),
      settings);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

}  // namespace
}  // namespace chartbridge
