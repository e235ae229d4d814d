// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class TreeBatchTest : public testing::Test {
 protected:
  /// The files that `tree batch ARGUMENTS -o out` prints. They are what is in the folder, whole.
  std::vector<std::string> Files(std::vector<std::string> arguments) const {
    std::filesystem::remove_all(folder.File("out"));
    arguments.insert(arguments.begin(), "batch");
    arguments.insert(arguments.end(), {"-o", "out"});
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    std::vector<std::string> files;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_GT(folder.Read(line).size(), 500U) << line;
      files.push_back(line);
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("out"))) {
      count += entry.exists() ? 1 : 0;
    }
    EXPECT_EQ(count, files.size());
    return files;
  }

  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& reason) {
    const std::vector<std::string> names = folder.Names();
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
    EXPECT_EQ(folder.Names(), names);
  }

  const TreeFolder folder;
};

TEST_F(TreeBatchTest, ForestBecomesOverviewAndTrees) {
  const std::vector<std::string> files = Files({"titanic-forest.pmml", "--name", "Wer überlebte?"});
  ASSERT_EQ(files.size(), 10U);
  EXPECT_EQ(files[0], "out/Wer-uberlebte-overview.png");
  for (std::size_t i = 1; i < files.size(); ++i) {
    EXPECT_EQ(files[i], "out/Wer-uberlebte-tree-" + std::to_string(i) + ".png");
    EXPECT_THAT(folder.Read(files[i]), StartsWith("\x89PNG"));
  }
}

TEST_F(TreeBatchTest, TreeBecomesOverviewAndBranches) {
  EXPECT_THAT(
      Files({"iris.pmml", "--type", "svg"}),
      ElementsAre("out/iris-overview.svg", "out/iris-branch-1.svg", "out/iris-branch-2.svg"));
  EXPECT_THAT(folder.Read("out/iris-overview.svg"), StartsWith("<?xml"));
}

TEST_F(TreeBatchTest, TheOverviewOfATreeIsItsPicture) {
  Files({"iris.pmml", "--type", "svg", "--depth", "1", "--left-to-right"});
  EXPECT_EQ(folder.Read("out/iris-overview.svg"),
            folder
                .Tree({"render", "iris.pmml", "-o", "-", "--type", "svg", "--depth", "1",
                       "--left-to-right"})
                .output);
}

TEST_F(TreeBatchTest, OptionsReachThePictures) {
  Files({"iris.pmml", "--type", "svg"});
  const std::string plain = folder.Read("out/iris-overview.svg");
  folder.Write("display.xml", DisplayData("depth=\"1\""));
  folder.Write(
      "style.xml",
      "<style xmlns=\"urn:chartbridge:style:1\"><colors background=\"#FFEEDD\"/></style>\n");
  folder.Write("samples.csv",
               "Sepal.Length,Sepal.Width,Petal.Length,Petal.Width\n5.1,3.5,1.4,0.2\n");
  const std::vector<std::vector<std::string>> options = {
      {"--display", "display.xml"}, {"--style-file", "style.xml"}, {"--samples", "samples.csv"}};
  for (std::vector<std::string> option : options) {
    option.insert(option.begin(), {"iris.pmml", "--type", "svg"});
    Files(option);
    EXPECT_NE(folder.Read("out/iris-overview.svg"), plain) << option[3];
  }
}

TEST_F(TreeBatchTest, FoldersAreMade) {
  EXPECT_EQ(folder.Tree({"batch", "iris.pmml", "-o", "a/b/c"}).exitCode, 0);
  EXPECT_TRUE(std::filesystem::exists(folder.File("a/b/c/iris-overview.png")));
}

TEST_F(TreeBatchTest, MissingFiles) {
  ExpectFailure({"batch", "none.pmml", "-o", "out"}, "none.pmml: No such file or directory");
  ExpectFailure({"batch", "iris.pmml", "-o", "out", "--samples", "none.csv"},
                "none.csv: No such file or directory");
  ExpectFailure({"batch", "iris.pmml", "-o", "out", "--style-file", "none.xml"},
                "none.xml: No such file or directory");
}

TEST_F(TreeBatchTest, OutputIsAFile) {
  folder.Write("file", "old");
  ExpectFailure({"batch", "iris.pmml", "-o", "file"},
                "file: Cannot write into \"file\": \"" + folder.File("file") + "\" is no folder.");
  EXPECT_EQ(folder.Read("file"), "old");
}

TEST_F(TreeBatchTest, WrongDocumentsAreNamed) {
  folder.Write("wrong", "hello");
  ExpectFailure({"batch", "wrong", "-o", "out"},
                "wrong: PMML document, line 1, column 1: not well-formed XML: Content is not "
                "allowed in prolog.");
  ExpectFailure({"batch", "iris.pmml", "-o", "out", "--style-file", "wrong"},
                "wrong: Style document: line 1, column 1: found \"h\", expected \"<\": this is not "
                "XML.");
  folder.Write("wrong.csv", "a,b\n1\n");
  ExpectFailure({"batch", "iris.pmml", "-o", "out", "--samples", "wrong.csv"},
                "wrong.csv: CSV line 2 has 1 field where the header names 2 columns; the field of "
                "column \"b\" is missing.");
}

TEST_F(TreeBatchTest, NeedsTheGuard) {
  const RunResult result = folder.Tree({"batch", "iris.pmml", "-o", "out", "--no-guard"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.errors,
            "chartbridge: --no-guard: tree batch does not work without it "
            "(see chartbridge tree batch --help)\n");
  EXPECT_THAT(folder.NewNames(), ElementsAre());
}

TEST_F(TreeBatchTest, FormatMustBeKnownAndTheFolderOne) {
  const RunResult type = folder.Tree({"batch", "iris.pmml", "-o", "out", "--type", "tiff"});
  EXPECT_EQ(type.exitCode, 2);
  EXPECT_THAT(type.errors, StartsWith("chartbridge: --type: tiff is none of png, "));
  const RunResult stream = folder.Tree({"batch", "iris.pmml", "-o", "-"});
  EXPECT_EQ(stream.exitCode, 2);
  EXPECT_THAT(
      stream.errors,
      StartsWith("chartbridge: -o must name a folder (see chartbridge tree batch --help)\n"));
  EXPECT_THAT(folder.NewNames(), ElementsAre());
}

}  // namespace
}  // namespace chartbridge
