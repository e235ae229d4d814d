// SPDX-License-Identifier: Apache-2.0
// Symbolic links in place of files that a command writes.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/app/Samples.h"
#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

class LinkedOutputTest : public testing::Test {
 protected:
  LinkedOutputTest() {
    folder.Write("sales.gpl", kChart);
    folder.Write("sales.csv", kData);
    folder.Write("report.xml",
                 "<document xmlns=\"urn:chartbridge:document:1\"><paragraph>Tea</paragraph>"
                 "</document>\n");
    folder.Write("picture.svg",
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>");
    std::filesystem::create_directory(folder.File("far"));
  }

  /// Runs a command that writes files to which links lead that dangle.
  void ExpectWrittenThrough(const std::vector<std::string>& arguments,
                            const std::vector<std::string>& files) const {
    for (const std::string& file : files) {
      ASSERT_EQ(symlink(("far/" + file).c_str(), folder.File(file).c_str()), 0);
    }
    RunSettings settings;
    settings.folder = folder.Path();
    const RunResult result = RunCommand(arguments, settings);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    for (const std::string& file : files) {
      EXPECT_TRUE(std::filesystem::is_symlink(folder.File(file))) << file;
      EXPECT_NE(folder.Read("far/" + file), "") << file;
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("far"))) {
      std::filesystem::remove(entry.path());
      ++count;
    }
    EXPECT_EQ(count, files.size());
  }

  const TreeFolder folder;
};

TEST_F(LinkedOutputTest, LeadsChartsToTheirFiles) {
  ExpectWrittenThrough({"render", "sales.gpl", "-d", "sales.csv", "-o", "a.svg"}, {"a.svg"});
  ExpectWrittenThrough({"convert", "gpl", "sales.gpl", "-o", "a.xml"}, {"a.xml"});
  ExpectWrittenThrough({"convert", "image", "picture.svg", "-o", "a.png"}, {"a.png"});
  ExpectWrittenThrough({"json", "sales.gpl", "-d", "sales.csv", "-o", "a.json", "--interactive",
                        "--data-file", "rows.json"},
                       {"a.json", "rows.json"});
}

TEST_F(LinkedOutputTest, LeadsAPictureWithItsMapToItsFiles) {
  ExpectWrittenThrough({"render", "sales.gpl", "-d", "sales.csv", "-o", "m.png", "--map"},
                       {"m.png", "m.html", "m.json"});
}

TEST_F(LinkedOutputTest, LeadsTreesAndDocumentsToTheirFiles) {
  ExpectWrittenThrough({"tree", "render", "iris.pmml", "-o", "t.svg"}, {"t.svg"});
  ExpectWrittenThrough(
      {"tree", "batch", "iris.pmml", "-o", ".", "--name", "b", "--type", "svg", "--depth", "1"},
      {"b-overview.svg", "b-branch-1.svg", "b-branch-2.svg"});
  ExpectWrittenThrough({"document", "build", "report.xml", "-o", "r.tdoc"}, {"r.tdoc"});
  ExpectWrittenThrough({"document", "export", "report.xml", "-o", "r.txt"}, {"r.txt"});
}

/// The page that shows a picture lies beside the link, as it would beside the picture.
TEST_F(LinkedOutputTest, AMapLiesBesideTheLink) {
  ASSERT_EQ(symlink("far/picture", folder.File("n.png").c_str()), 0);
  RunSettings settings;
  settings.folder = folder.Path();
  const RunResult result =
      RunCommand({"render", "sales.gpl", "-d", "sales.csv", "-o", "n.png", "--map"}, settings);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_NE(folder.Read("far/picture"), "");
  EXPECT_NE(folder.Read("n.html"), "");
  EXPECT_NE(folder.Read("n.json"), "");
}

TEST_F(LinkedOutputTest, AChartAndItsDataAreTwoFiles) {
  ASSERT_EQ(symlink("one.json", folder.File("two.json").c_str()), 0);
  RunSettings settings;
  settings.folder = folder.Path();
  const RunResult result = RunCommand({"json", "sales.gpl", "-d", "sales.csv", "-o", "one.json",
                                       "--interactive", "--data-file", "two.json"},
                                      settings);
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.errors,
            "chartbridge: --data-file and -o name the same file (see chartbridge json --help)\n");
}

}  // namespace
}  // namespace chartbridge
