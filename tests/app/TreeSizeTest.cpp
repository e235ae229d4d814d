// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;

TEST(TreeSizeTest, IsThatOfThePicture) {
  const TreeFolder folder;
  const std::vector<std::vector<std::string>> requests = {{"iris.pmml"},
                                                          {"airquality.pmml", "--depth", "2"},
                                                          {"airquality.pmml", "--left-to-right"},
                                                          {"titanic-forest.pmml"}};
  std::vector<std::string> sizes;
  for (std::vector<std::string> request : requests) {
    sizes.push_back(folder.SizeOf(request));
    request.insert(request.begin(), "render");
    request.insert(request.end(), {"-o", "out.png"});
    EXPECT_EQ(folder.Tree(request).exitCode, 0);
    EXPECT_EQ(sizes.back(), SizeOfPng(folder.Read("out.png")));
  }
  EXPECT_NE(sizes[1], sizes[2]);
}

TEST(TreeSizeTest, FollowsTheDisplayData) {
  const TreeFolder folder;
  folder.Write("display.xml", DisplayData("", "<collapsed path=\"1\"/>"));
  const std::string collapsed = folder.SizeOf({"iris.pmml", "--display", "display.xml"});
  EXPECT_NE(collapsed, folder.SizeOf({"iris.pmml"}));
  EXPECT_THAT(folder.NewNames(), ElementsAre("display.xml"));
}

TEST(TreeSizeTest, ReadsStandardInput) {
  const TreeFolder folder;
  RunSettings settings;
  settings.input = folder.Read("iris.pmml");
  EXPECT_EQ(folder.Tree({"size", "-"}, settings).output, folder.SizeOf({"iris.pmml"}));
}

TEST(TreeSizeTest, SaysWhatIsWrong) {
  const TreeFolder folder;
  const RunResult missing = folder.Tree({"size", "none.pmml"});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_EQ(missing.errors, "chartbridge: none.pmml: No such file or directory\n");
  RunSettings settings;
  settings.input = "<chart/>";
  const RunResult other = folder.Tree({"size", "-"}, settings);
  EXPECT_EQ(other.exitCode, 1);
  EXPECT_EQ(other.output, "");
  EXPECT_EQ(other.errors,
            "chartbridge: standard input: PMML document, line 1, column 1: found <chart>, expected "
            "<PMML>; this is no PMML document.\n");
  const RunResult usage = folder.Tree({"size", "iris.pmml", "--depth", "many"});
  EXPECT_EQ(usage.exitCode, 2);
}

}  // namespace
}  // namespace chartbridge
