// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class TreeRenderTest : public testing::Test {
 protected:
  /// The picture of `tree render ARGUMENTS -o out.svg`.
  std::string Svg(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", "out.svg"});
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "");
    return folder.Read("out.svg");
  }

  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& reason) {
    folder.Write("out.png", "old");
    const std::vector<std::string> names = folder.Names();
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
    EXPECT_EQ(folder.Read("out.png"), "old");
    EXPECT_EQ(folder.Names(), names);
  }

  /// With model.pmml of this content.
  void ExpectModelFailure(const std::string& model, const std::string& reason) {
    folder.Write("model.pmml", model);
    ExpectFailure({"render", "model.pmml", "-o", "out.png"}, reason);
  }

  void ExpectUsageError(const std::vector<std::string>& arguments, const std::string& reason) {
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + " (see chartbridge tree render --help)\n");
    EXPECT_THAT(folder.NewNames(), ElementsAre());
  }

  const TreeFolder folder;
};

TEST_F(TreeRenderTest, EveryFormat) {
  const std::vector<std::pair<std::string, std::string>> kinds = {
      {"png", "\x89PNG"}, {"jpg", "\xFF\xD8\xFF"}, {"bmp", "BM"},
      {"gif", "GIF8"},    {"svg", "<?xml"},        {"pdf", "%PDF-"}};
  for (const auto& [ending, start] : kinds) {
    const RunResult result = folder.Tree({"render", "iris.pmml", "-o", "iris." + ending});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_THAT(folder.Read("iris." + ending), StartsWith(start));
  }
  EXPECT_EQ(folder.NewNames().size(), kinds.size());
}

TEST_F(TreeRenderTest, TypeIsStrongerThanTheEnding) {
  EXPECT_EQ(folder.Tree({"render", "iris.pmml", "-o", "iris.png", "--type", "svg"}).exitCode, 0);
  EXPECT_THAT(folder.Read("iris.png"), StartsWith("<?xml"));
}

TEST_F(TreeRenderTest, StandardStreams) {
  RunSettings settings;
  settings.input = folder.Read("iris.pmml");
  const RunResult png = folder.Tree({"render", "-", "-o", "-"}, settings);
  EXPECT_EQ(png.exitCode, 0) << png.errors;
  EXPECT_EQ(SizeOfPng(png.output), folder.SizeOf({"iris.pmml"}));
  const RunResult svg = folder.Tree({"render", "-", "-o", "-", "-t", "svg"}, settings);
  EXPECT_EQ(svg.output, Svg({"iris.pmml"}));
}

TEST_F(TreeRenderTest, CompressedModel) {
  ASSERT_EQ(RunProgram({"gzip", "-k", folder.File("iris.pmml")}).exitCode, 0);
  EXPECT_EQ(Svg({"iris.pmml.gz"}), Svg({"iris.pmml"}));
}

TEST_F(TreeRenderTest, ForestIsAnOverview) {
  EXPECT_THAT(Svg({"titanic-forest.pmml"}), HasSubstr("Tree 9"));
}

TEST_F(TreeRenderTest, DisplayData) {
  folder.Write("display.xml", DisplayData("", "<title>Ein schöner Baum</title>"));
  EXPECT_THAT(Svg({"iris.pmml", "--display", "display.xml"}), HasSubstr("Ein schöner Baum"));
}

TEST_F(TreeRenderTest, DepthAndDirectionAreThoseOfDisplayData) {
  folder.Write("display.xml", DisplayData("depth=\"1\" orientation=\"left-to-right\""));
  const std::string wanted = Svg({"iris.pmml", "--display", "display.xml"});
  EXPECT_NE(wanted, Svg({"iris.pmml"}));
  EXPECT_EQ(wanted, Svg({"iris.pmml", "--depth", "1", "--left-to-right"}));
}

TEST_F(TreeRenderTest, DepthAndDirectionReplaceThoseOfDisplayData) {
  const std::string title = "<title>A &amp; B &lt; C</title>";
  folder.Write("display.xml", DisplayData("depth=\"9\" orientation=\"top-down\"", title));
  folder.Write("wanted.xml", DisplayData("depth=\"1\" orientation=\"left-to-right\"", title));
  EXPECT_EQ(Svg({"iris.pmml", "--display", "display.xml", "--depth", "1", "--left-to-right"}),
            Svg({"iris.pmml", "--display", "wanted.xml"}));
  // 0 takes the limit of the display data away.
  folder.Write("limited.xml", DisplayData("depth=\"1\"", title));
  EXPECT_EQ(Svg({"iris.pmml", "--display", "limited.xml", "--depth", "0"}),
            Svg({"iris.pmml", "--display", "display.xml"}));
}

TEST_F(TreeRenderTest, DisplayDataInUtf16) {
  const std::string utf8 =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + DisplayData("", "<title>Ein Baum</title>");
  std::string utf16 = "\xFF\xFE";
  for (const char c : utf8) utf16 += {c, '\0'};
  folder.Write("display.xml", utf16);
  EXPECT_THAT(Svg({"iris.pmml", "--display", "display.xml", "--depth", "1"}),
              HasSubstr("Ein Baum"));
}

TEST_F(TreeRenderTest, WithoutTheGuard) {
  EXPECT_EQ(Svg({"iris.pmml", "--no-guard"}), Svg({"iris.pmml"}));
}

TEST_F(TreeRenderTest, MissingFiles) {
  ExpectFailure({"render", "none.pmml", "-o", "out.png"}, "none.pmml: No such file or directory");
  ExpectFailure({"render", "iris.pmml", "-o", "out.png", "--display", "none.xml"},
                "none.xml: No such file or directory");
  ExpectFailure({"render", "iris.pmml", "-o", "none/out.png"},
                "none/out.png: cannot write there: the folder none does not exist");
}

TEST_F(TreeRenderTest, NotPmml) {
  ExpectModelFailure("", "model.pmml: The PMML document is empty.");
  ExpectModelFailure("hello",
                     "model.pmml: PMML document, line 1, column 1: not well-formed XML: Content is "
                     "not allowed in prolog.");
  ExpectModelFailure("<chart/>",
                     "model.pmml: PMML document, line 1, column 1: found <chart>, expected <PMML>; "
                     "this is no PMML document.");
}

TEST_F(TreeRenderTest, NoTreeInIt) {
  ExpectModelFailure(
      "<PMML version=\"4.4\" xmlns=\"http://www.dmg.org/PMML-4_4\"><Header/><DataDictionary/>"
      "</PMML>",
      "model.pmml: PMML document, line 1, column 1: the document has no model; a <TreeModel> or a "
      "<MiningModel> of trees is expected.");
}

TEST_F(TreeRenderTest, TruncatedModel) {
  const std::string iris = folder.Read("iris.pmml");
  ExpectModelFailure(iris.substr(0, iris.find("<Node ") + 6),
                     "model.pmml: PMML document, line 23, column 11: the document ends too early: "
                     "XML document structures must start and end within the same entity.");
}

TEST_F(TreeRenderTest, TruncatedCompressedModel) {
  ASSERT_EQ(RunProgram({"gzip", "-k", folder.File("iris.pmml")}).exitCode, 0);
  ExpectModelFailure(folder.Read("iris.pmml.gz").substr(0, 300),
                     "model.pmml: The compressed PMML document is cut off.");
}

TEST_F(TreeRenderTest, XmlBomb) {
  std::string bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE PMML [<!ENTITY a \"ha\">";
  for (char name = 'b'; name <= 'z'; ++name) {
    bomb += std::string("<!ENTITY ") + name + " \"";
    for (int i = 0; i < 10; ++i) bomb += std::string("&") + static_cast<char>(name - 1) + ";";
    bomb += "\">";
  }
  bomb += "]>\n<PMML version=\"4.4\">&z;</PMML>\n";
  folder.Write("display.xml", bomb);
  ExpectModelFailure(bomb,
                     "model.pmml: PMML document, line 2, column 1: a document type declaration "
                     "(<!DOCTYPE) is not allowed.");
  ExpectFailure(
      {"render", "iris.pmml", "-o", "out.png", "--display", "display.xml", "--depth", "1"},
      "display.xml: Display data, line 2, column 1: a document type declaration (<!DOCTYPE) is not "
      "allowed.");
}

TEST_F(TreeRenderTest, BrokenDisplayDataAreNamedWithTheirPlace) {
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{}, std::vector<std::string>{"--depth", "1"}}) {
    std::vector<std::string> arguments = {"render",  "iris.pmml", "-o",
                                          "out.png", "--display", "display.xml"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    folder.Write("display.xml", "<tree-display/>");
    ExpectFailure(arguments,
                  "display.xml: Display data, line 1, column 1: found <tree-display>, expected "
                  "<tree-display xmlns=\"urn:chartbridge:tree-display:1\">.");
    folder.Write("display.xml", DisplayData("depth=\"2\"", "\n  <colour/>\n"));
    ExpectFailure(arguments,
                  "display.xml: Display data, line 2, column 3: found <colour> in <tree-display>, "
                  "expected one of title, numbers, show, collapsed, open.");
  }
}

TEST_F(TreeRenderTest, ClassPathWithoutTheClasses) {
  ExpectFailure({"render", "iris.pmml", "-o", "out.png", "--classpath", folder.Path()},
                "the Java classes cannot be used: java.lang.NoClassDefFoundError: "
                "com/tesk/treemodeleditor/TreeImager");
}

TEST_F(TreeRenderTest, VerboseAddsTheStack) {
  folder.Write("model.pmml", "<chart/>");
  const RunResult result = folder.Tree({"render", "model.pmml", "-o", "out.png", "--verbose"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: model.pmml: PMML document, line 1"));
  EXPECT_THAT(result.errors, HasSubstr("\n\tat com.tesk.treemodeleditor.TreeImager."));
}

TEST_F(TreeRenderTest, Usage) {
  ExpectUsageError({"render"}, "model is required");
  ExpectUsageError({"render", "iris.pmml"}, "--output is required");
  ExpectUsageError({"render", "iris.pmml", "-o", "x.tiff"},
                   "x.tiff: the ending is none of png, jpeg, jpg, bmp, gif, svg, pdf; "
                   "name the format with --type");
  ExpectUsageError({"render", "iris.pmml", "-o", "x.png", "--depth", "-1"},
                   "--depth: must be from 0 to 1000 levels");
  ExpectUsageError({"render", "iris.pmml", "-o", "x.png", "--depth", "1001"},
                   "--depth: must be from 0 to 1000 levels");
  ExpectUsageError({"render", "-", "-o", "x.png", "--display", "-"},
                   "only one of the inputs can be standard input");
}

TEST_F(TreeRenderTest, HelpIsEverywhereAndHasExamples) {
  const std::vector<std::vector<std::string>> commands = {
      {}, {"render"}, {"size"}, {"batch"}, {"show"}};
  for (std::vector<std::string> arguments : commands) {
    arguments.push_back("--help");
    const RunResult result = folder.Tree(arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, HasSubstr("Examples:\n  chartbridge tree "));
  }
  const std::string render = folder.Tree({"render", "--help"}).output;
  for (const char* option : {"MODEL", "--output", "--type", "--display", "--depth",
                             "--left-to-right", "--classpath", "--no-guard", "--verbose"}) {
    EXPECT_THAT(render, HasSubstr(option));
  }
}

}  // namespace
}  // namespace chartbridge
