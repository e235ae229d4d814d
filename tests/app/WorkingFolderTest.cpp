// SPDX-License-Identifier: Apache-2.0
// A command in a folder that somebody has removed, in which Java does not start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/app/Samples.h"
#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kGone =
    ": the working folder has been removed; change to another, or give the full path\n";

class WorkingFolderTest : public testing::Test {
 protected:
  RunResult Run(const std::vector<std::string>& arguments, const std::string& input = "") const {
    mkdir(files.File("gone").c_str(), 0700);
    RunSettings settings;
    settings.folder = files.File("gone");
    settings.input = input;
    settings.environment["TMPDIR"] = temporary.Path();
    settings.environment["DumpChartTimePath"] = kUnset;
    std::vector<std::string> all = {"sh", "-c", "rmdir \"$PWD\"; exec \"$0\" \"$@\"",
                                    CHARTBRIDGE_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const RunResult result = RunProgram(all, settings);
    EXPECT_THAT(temporary.Names(), IsEmpty());
    return result;
  }

  void ExpectGone(const std::vector<std::string>& arguments, const std::string& path) const {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + path + kGone);
  }

  const SampleFolder files;
  const TreeFolder trees;
  const WorkFolder temporary;
  const std::string chart = files.File("sales.gpl");
  const std::string data = files.File("sales.csv");
  const std::string model = trees.File("iris.pmml");
};

TEST_F(WorkingFolderTest, FullPathsWork) {
  const RunResult picture = Run({"render", chart, "-d", data, "-o", files.File("a.png")});
  EXPECT_EQ(picture.exitCode, 0) << picture.errors;
  EXPECT_EQ(picture.errors, "");
  EXPECT_NE(files.Read("a.png"), "");
  const RunResult json = Run({"json", chart, "-d", data, "-o", files.File("a.json"),
                              "--interactive", "--data-file", files.File("rows.json")});
  EXPECT_EQ(json.exitCode, 0) << json.errors;
  EXPECT_NE(files.Read("rows.json"), "");
  EXPECT_EQ(Run({"tree", "batch", model, "-o", trees.File("out")}).exitCode, 0);
  EXPECT_EQ(Run({"--help"}).exitCode, 0);
}

TEST_F(WorkingFolderTest, SoDoStandardInputAndOutput) {
  const RunResult result = Run({"convert", "gpl", "-"}, kChart);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("<chart "));
}

/// A document from standard input refers to files of the working folder, of which there are none.
TEST_F(WorkingFolderTest, ADocumentFindsNoFiles) {
  const RunResult result = Run({"document", "check", "-"},
                               "<document xmlns=\"urn:chartbridge:document:1\">\n"
                               "<image src=\"etc/hostname\" alternative=\"none\"/></document>");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.output, HasSubstr("etc/hostname"));
}

TEST_F(WorkingFolderTest, APathFromThereIsRefusedOnOneLine) {
  ExpectGone({"render", "sales.gpl", "-d", data, "-o", files.File("a.png")}, "sales.gpl");
  ExpectGone({"render", chart, "-d", "sales.csv", "-o", files.File("a.png")}, "sales.csv");
  ExpectGone({"render", chart, "-d", data, "-o", "a.png"}, "a.png");
  ExpectGone({"render", chart, "-d", data, "-o", "a.png", "--map"}, "a.png");
  ExpectGone({"json", chart, "-d", data, "-o", files.File("a.json"), "--interactive", "--data-file",
              "rows.json"},
             "rows.json");
  ExpectGone({"tree", "batch", model, "-o", "out"}, "out");
  ExpectGone({"tree", "size", "iris.pmml"}, "iris.pmml");
  ExpectGone({"render", chart, "-d", data, "-o", files.File("a.png"), "--templates", "house"},
             "house");
  ExpectGone({"render", chart, "-d", data, "-o", files.File("a.png"), "--classpath", "my.jar"},
             "my.jar");
  ExpectGone({"document", "export", "report.xml", "-o", files.File("a.pdf")}, "report.xml");
}

TEST_F(WorkingFolderTest, SoIsOneFromAFolderWithAPathThatIsTooLong) {
  const std::string script =
      "n=$(printf 'n%.0s' {1..200}); for i in {1..25}; do mkdir $n; cd -P $n || exit 9; done; "
      "exec \"$0\" \"$@\"";
  RunSettings settings;
  settings.folder = trees.Path();
  const auto run = [&](const std::string& picture) {
    return RunProgram(
        {"bash", "-c", script, CHARTBRIDGE_COMMAND, "render", chart, "-d", data, "-o", picture},
        settings);
  };
  const RunResult full = run(files.File("a.png"));
  EXPECT_EQ(full.exitCode, 0) << full.errors;
  std::filesystem::remove_all(trees.File(std::string(200, 'n')));
  EXPECT_EQ(run("a.png").errors,
            "chartbridge: a.png: the path of the working folder is too long; change to another, or "
            "give the full path\n");
}

}  // namespace
}  // namespace chartbridge
