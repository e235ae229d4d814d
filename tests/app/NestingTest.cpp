// SPDX-License-Identifier: Apache-2.0
// Documents that nest without end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "app/Failure.h"
#include "app/JsonText.h"
#include "app/Nesting.h"
#include "platform/ChartTransformer.h"
#include "tests/app/Samples.h"
#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr int kEndless = 100'000;

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

std::string Arrays(int levels) { return Repeated("[", levels) + Repeated("]", levels); }

std::string Objects(int levels) {
  return Repeated("{\"a\": ", levels) + "1" + Repeated("}", levels);
}

std::string Elements(int levels, const std::string& space = "") {
  const std::string root = "<a" + (space.empty() ? "" : " xmlns=\"" + space + "\"") + ">";
  return root + Repeated("<a>", levels - 1) + Repeated("</a>", levels);
}

std::string ReasonOf(const std::string& json) {
  try {
    ParseJson(json, "doc");
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "none";
}

std::string ReasonOfXml(const std::string& xml) {
  pugi::xml_document document;
  EXPECT_TRUE(document.load_buffer(xml.data(), xml.size()));
  try {
    CheckNestingOfXml(document, xml, "doc");
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "none";
}

TEST(NestingTest, JsonMayBe512LevelsDeep) {
  EXPECT_EQ(ReasonOf(Arrays(512)), "none");
  EXPECT_EQ(ReasonOf(Objects(512)), "none");
  EXPECT_EQ(ReasonOf(Arrays(513)), "doc: line 1, column 513: nested more than 512 levels deep");
  EXPECT_EQ(ReasonOf(Objects(513)), "doc: line 1, column 3073: nested more than 512 levels deep");
  EXPECT_EQ(ReasonOf("{\"\xC3\xA4\": \"\\\"[\",\n \"\xC3\xA4\": " + Arrays(512) + "}"),
            "doc: line 2, column 518: nested more than 512 levels deep");
}

TEST(NestingTest, BracketsInStringsAndBesideEachOtherAreNoLevels) {
  EXPECT_EQ(ReasonOf("[\"" + Repeated("[", 1000) + "\\\"" + Repeated("{", 1000) + "\"]"), "none");
  EXPECT_EQ(ReasonOf("[" + Repeated("[],", 1000) + "{}]"), "none");
}

TEST(NestingTest, WhatIsNotWellFormedIsTold) {
  EXPECT_THAT(ReasonOf("[1,\n 2"), HasSubstr("doc: not well-formed JSON: parse error at line 2, "));
  EXPECT_THAT(ReasonOf("\"" + Repeated("[", 1000)), HasSubstr("not well-formed JSON"));
  EXPECT_THAT(ReasonOf(Repeated("[", kEndless)), HasSubstr("nested more than 512 levels deep"));
}

TEST(NestingTest, XmlMayBe512LevelsDeep) {
  EXPECT_EQ(ReasonOfXml(Elements(512)), "none");
  EXPECT_EQ(ReasonOfXml(Elements(513)),
            "doc: line 1, column 1537: <a> is nested more than 512 levels deep");
  EXPECT_EQ(ReasonOfXml("\xEF\xBB\xBF<!-- \xC3\xA4 -->\n" + Elements(513)),
            "doc: line 2, column 1537: <a> is nested more than 512 levels deep");
  EXPECT_THAT(ReasonOfXml(Elements(kEndless)), HasSubstr("nested more than 512 levels deep"));
}

TEST(NestingTest, AChartThatGetsATemplateMayBe512LevelsDeep) {
  const std::string space = "urn:chartbridge:chart:2";
  const auto chart = [&](int levels) {
    return "<chart xmlns=\"" + space + "\">\n" + Elements(levels - 1) + "</chart>";
  };
  EXPECT_NO_THROW(ChartTransformer(chart(512)));
  for (const int levels : {513, kEndless}) {
    try {
      ChartTransformer transformer(chart(levels));
      FAIL() << levels;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(),
                   "line 2, column 1534: the chart is nested more than 512 levels deep");
    }
  }
}

TEST(NestingTest, AByteOrderMarkMovesNoPlace) {
  try {
    ChartTransformer("\xEF\xBB\xBF<chart xmlns=\"urn:chartbridge:chart:2\">&nope;</chart>");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), StartsWith("line 1, column 40: "));
  }
}

TEST(NestingTest, SoMayATemplate) {
  ChartTransformer transformer(kChartXml);
  try {
    transformer.applyTemplate("<template xmlns=\"urn:chartbridge:template:1\">" +
                              Elements(kEndless) + "</template>");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("the template is nested more than 512 levels deep"));
  }
}

/// Every document that the command takes, far too deep.
class NestedInputTest : public testing::Test {
 protected:
  NestedInputTest() {
    folder.Write("sales.gpl", kChart);
    folder.Write("sales.csv", kData);
    folder.Write("sales.xml", kChartXml);
    folder.Write("line.gpl", "draw line: x year, y sales\n");
    folder.Write("arrays.json", Arrays(kEndless));
    folder.Write("objects.json", Objects(kEndless));
    folder.Write("chart.xml",
                 "<chart xmlns=\"urn:chartbridge:chart:2\">" + Elements(kEndless) + "</chart>");
    folder.Write("template.xml", "<template xmlns=\"urn:chartbridge:template:1\">" +
                                     Elements(kEndless) + "</template>");
    folder.Write("display.xml", "<tree-display xmlns=\"urn:chartbridge:tree-display:1\">" +
                                    Elements(kEndless) + "</tree-display>");
    folder.Write("style.xml", Elements(kEndless, "urn:chartbridge:style:1"));
    folder.Write("model.pmml", "<PMML xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\">" +
                                   Elements(kEndless) + "</PMML>");
    folder.Write("report.xml", "<document xmlns=\"urn:chartbridge:document:1\">" +
                                   Elements(kEndless) + "</document>");
    folder.Write("picture.svg", Elements(kEndless, "http://www.w3.org/2000/svg"));
    settings.folder = folder.Path();
  }

  /// Fails in order: with one line that does not come from a stack that has ended.
  void ExpectFailure(const std::vector<std::string>& arguments) const {
    const RunResult result = RunCommand(arguments, settings);
    const std::string command = testing::PrintToString(arguments);
    EXPECT_FALSE(result.endedBySignal) << command;
    EXPECT_EQ(result.exitCode, 1) << command;
    EXPECT_THAT(result.errors, MatchesRegex("chartbridge: [^\n]+\n")) << command;
    EXPECT_THAT(result.errors, testing::Not(HasSubstr("StackOverflow"))) << command;
    EXPECT_EQ(result.output, "") << command;
  }

  void ExpectTooDeep(const std::vector<std::string>& arguments, const std::string& place) const {
    const RunResult result = RunCommand(arguments, settings);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "chartbridge: " + place + "nested more than 512 levels deep\n");
  }

  const TreeFolder folder;
  RunSettings settings;
};

TEST_F(NestedInputTest, JsonThatTheCommandReads) {
  for (const char* file : {"arrays.json", "objects.json"}) {
    const std::string column = file[0] == 'a' ? "513" : "3073";
    const std::string place = std::string(file) + ": line 1, column " + column + ": ";
    ExpectTooDeep({"json", "sales.gpl", "-d", "sales.csv", "-o", "a.json", "--interactive",
                   "--options", file},
                  place);
    ExpectTooDeep({"histogram", "line.gpl", "--bins", file}, place);
  }
}

TEST_F(NestedInputTest, JsonThatJavaReads) {
  for (const char* file : {"arrays.json", "objects.json"}) {
    ExpectFailure({"convert", "template", file});
    ExpectFailure(
        {"json", "sales.gpl", "-d", "sales.csv", "-o", "a.json", "--interactive", "--geo", file});
  }
}

TEST_F(NestedInputTest, XmlThatTheCommandReads) {
  ExpectTooDeep({"tree", "size", "iris.pmml", "--display", "display.xml", "--depth", "2"},
                "display.xml: line 1, column 1587: <a> is ");
  ExpectTooDeep(
      {"render", "sales.gpl", "-d", "sales.csv", "-o", "a.png", "--template", "template.xml"},
      "template.xml: line 1, column 1579: the template is ");
}

TEST_F(NestedInputTest, XmlThatJavaReads) {
  ExpectFailure({"render", "chart.xml", "-d", "sales.csv", "-o", "a.png"});
  ExpectFailure(
      {"render", "chart.xml", "-d", "sales.csv", "-o", "a.png", "--template", "template.xml"});
  ExpectFailure({"json", "chart.xml", "-d", "sales.csv", "-o", "a.json"});
  ExpectFailure({"convert", "upgrade", "chart.xml"});
  ExpectFailure({"convert", "image", "picture.svg", "-o", "a.png"});
  ExpectFailure(
      {"render", "sales.gpl", "-d", "sales.csv", "-o", "a.png", "--style-file", "style.xml"});
  ExpectFailure({"histogram", "chart.xml", "--bins", "arrays.json"});
  ExpectFailure({"tree", "size", "model.pmml"});
  ExpectFailure({"tree", "size", "iris.pmml", "--display", "display.xml"});
  ExpectFailure({"document", "export", "report.xml", "-o", "a.pdf"});
}

}  // namespace
}  // namespace chartbridge
