// SPDX-License-Identifier: Apache-2.0
// Charts drawn with a template: one that the command line names, and one that the chart names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Template(const std::string& parts) {
  return "<?xml version=\"1.0\"?>\n<template xmlns=\"urn:chartbridge:template:1\">\n" + parts +
         "\n</template>\n";
}

class RenderTemplateTest : public testing::Test {
 protected:
  RenderTemplateTest() {
    folder.Write("house.xml", Template("<size width=\"500\" height=\"300\"/>"
                                       "<titles title=\"House\" caption=\"By the house\"/>"));
  }

  std::string Svg(const std::vector<std::string>& arguments, const RunSettings& settings = {}) {
    std::vector<std::string> all = {"render"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    all.insert(all.end(), {"-o", "-", "-t", "svg"});
    const RunResult result = folder.Run(all, settings);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& reason,
                     int exitCode = 1) {
    folder.Write("out.png", "old");
    std::vector<std::string> all = {"render"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    all.insert(all.end(), {"-o", "out.png"});
    const RunResult result = folder.Run(all);
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.output, "");
    const std::string hint = exitCode == 2 ? " (see chartbridge render --help)" : "";
    EXPECT_THAT(result.errors, HasSubstr("chartbridge: " + reason + hint + "\n"));
    EXPECT_EQ(folder.Read("out.png"), "old");
  }

  void ExpectTemplateFailure(const std::string& content, const std::string& reason) {
    folder.Write("bad.xml", content);
    ExpectFailure({"sales.gpl", "-d", "sales.csv", "--template", "bad.xml"}, reason);
  }

  /// The sample with data of its own, which names a template.
  void WriteNamingChart(const std::string& name) {
    std::string chart = kChartXml;
    chart.insert(chart.find(" xmlns"), " template=\"" + name + "\"");
    chart.insert(chart.find("</chart>"), "<data>" + kData + "</data>");
    folder.Write("named.xml", chart);
  }

  const SampleFolder folder;
};

TEST_F(RenderTemplateTest, FileGoesWithEveryNotation) {
  folder.Write("old.xml", kOldChartXml);
  for (const char* chart : {"sales.gpl", "sales.xml"}) {
    const std::string svg = Svg({chart, "-d", "sales.csv", "--template", "house.xml"});
    EXPECT_THAT(svg, HasSubstr("width=\"500\"")) << chart;
    EXPECT_THAT(svg, HasSubstr(">Sales<")) << chart;
    EXPECT_THAT(svg, Not(HasSubstr(">House<"))) << chart;
    EXPECT_THAT(svg, HasSubstr(">By the house<")) << chart;
  }
  // This one says its size.
  const std::string svg = Svg({"old.xml", "-d", "sales.csv", "--template", "house.xml"});
  EXPECT_THAT(svg, HasSubstr("width=\"800\""));
  EXPECT_THAT(svg, HasSubstr(">By the house<"));
}

TEST_F(RenderTemplateTest, WhatTheGraphLanguageSaysCounts) {
  folder.Write("house.xml", Template("<size width=\"500\"/><axes><y scale=\"log\"/></axes>"
                                     "<elements><bar opacity=\"0.5\"/></elements>"));
  folder.Write("said.gpl",
               "size 800 by 600\ndraw bar: x region, y sum of revenue, opacity 1\n"
               "axis y: auto\n");
  const std::string said = Svg({"said.gpl", "-d", "sales.csv", "--template", "house.xml"});
  EXPECT_EQ(said, Svg({"said.gpl", "-d", "sales.csv"}));
  folder.Write("open.gpl", "draw bar: x region, y sum of revenue\n");
  const std::string open = Svg({"open.gpl", "-d", "sales.csv", "--template", "house.xml"});
  EXPECT_THAT(open, HasSubstr("width=\"500\""));
}

TEST_F(RenderTemplateTest, FileTakesTheWholePictureFile) {
  const RunResult result =
      folder.Render({"-o", "a.png", "--map", "--template", "house.xml", "--size", "200"});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(folder.Read("a.png").substr(16, 8), std::string("\0\0\x03\xE8\0\0\x02\x58", 8));
}

TEST_F(RenderTemplateTest, TemplateComesFromStandardInput) {
  RunSettings settings;
  settings.input = folder.Read("house.xml");
  EXPECT_THAT(Svg({"sales.gpl", "-d", "sales.csv", "--template", "-"}, settings),
              HasSubstr(">By the house<"));
}

TEST_F(RenderTemplateTest, BothDocumentsMayHaveAnyEncoding) {
  std::string chart = kChartXml;
  chart.replace(chart.find("UTF-8"), 5, "ISO-8859-1");
  chart.replace(chart.find("\"Sales\""), 7, "\"Ums\xE4tze\"");
  folder.Write("latin.xml", chart);
  std::string wide = "\xFF\xFE";
  for (const char c : Template("<titles caption=\"wide\"/>")) wide += std::string{c, '\0'};
  folder.Write("wide.xml", wide);
  const std::string svg = Svg({"latin.xml", "-d", "sales.csv", "--template", "wide.xml"});
  EXPECT_THAT(svg, HasSubstr(">Umsätze<"));
  EXPECT_THAT(svg, HasSubstr(">wide<"));
}

TEST_F(RenderTemplateTest, NamedTemplateIsFoundInTheFolder) {
  ASSERT_EQ(mkdir(folder.File("my templates").c_str(), 0700), 0);
  folder.Write("my templates/house-1.xml", Template("<titles caption=\"Named\"/>"));
  WriteNamingChart("house-1");
  EXPECT_THAT(Svg({"named.xml", "--templates", "my templates"}), HasSubstr(">Named<"));
}

TEST_F(RenderTemplateTest, NamedTemplateGoesIntoChartJsonToo) {
  WriteNamingChart("house");
  const RunResult result = folder.Run({"json", "named.xml", "--templates", ".", "-o", "-"});
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, HasSubstr("By the house"));
}

TEST_F(RenderTemplateTest, FileStandsInPlaceOfTheNamedTemplate) {
  WriteNamingChart("no-such-template");
  EXPECT_THAT(Svg({"named.xml", "--template", "house.xml"}), HasSubstr(">By the house<"));
}

TEST_F(RenderTemplateTest, WorksWithoutTheGuard) {
  WriteNamingChart("house");
  EXPECT_THAT(Svg({"named.xml", "--templates", ".", "--no-guard"}), HasSubstr(">By the house<"));
}

TEST_F(RenderTemplateTest, BrokenFilesAreNamedWithTheLine) {
  ExpectTemplateFailure(Template("<legnd/>"),
                        "bad.xml: line 3, column 1: found <legnd> inside <template>; expected one "
                        "of size, style, titles, axes, elements, legend, facet, palette");
  ExpectTemplateFailure(Template("<legend\n  position='middle'/>"),
                        "bad.xml: line 4, column 3: position of <legend> is \"middle\"; expected "
                        "one of right, bottom, top, left, none");
  ExpectTemplateFailure("<template>\n</templat>",
                        "bad.xml: line 2, column 3: the template is not well-formed XML: Start-end "
                        "tags mismatch");
  ExpectTemplateFailure("", "bad.xml: the template is empty");
  ExpectTemplateFailure(kChart,
                        "bad.xml: line 1, column 1: the template is not XML; expected \"<\"");
  ExpectTemplateFailure(kChartXml,
                        "bad.xml: line 2, column 1: found <chart>, which is not a chart template; "
                        "expected <template xmlns=\"urn:chartbridge:template:1\">");
  ExpectTemplateFailure(Template("<titles title='\xFF'/>"), "bad.xml: is not valid UTF-8");
  ExpectTemplateFailure("<?xml version='1.0' encoding='klingon'?>" + Template(""),
                        "bad.xml: the encoding klingon is not known");
  ExpectFailure({"sales.gpl", "-d", "sales.csv", "--template", "none.xml"},
                "none.xml: No such file or directory");
}

TEST_F(RenderTemplateTest, BrokenChartsAreNamedAsEver) {
  folder.Write("bad.gpl", "draw bars: x region\n");
  ExpectFailure(
      {"bad.gpl", "-d", "sales.csv", "--template", "house.xml"},
      "bad.gpl: line 1, column 6: found \"bars\", expected one of bar, line, area, point, "
      "histogram, box, pie, heatmap, grouped, stacked, filled, overlaid; did you mean "
      "\"bar\"?");
  folder.Write("bad.csv", "region,product\nNorth,Tea\n");
  ExpectFailure({"sales.gpl", "-d", "bad.csv", "--template", "house.xml"},
                "sales.gpl: line 5, column 5: The data has no column \"revenue\"; its columns are "
                "region, product.");
}

TEST_F(RenderTemplateTest, ContradictionNamesBoth) {
  folder.Write("house.xml", Template("<axes><y min=\"10\"/></axes>"));
  folder.Write("max.gpl", kChart + "axis y: to 5\n");
  ExpectFailure({"max.gpl", "-d", "sales.csv", "--template", "house.xml"},
                "max.gpl does not go together with house.xml: the axis ends at 5, which is not "
                "above its start 10");
}

TEST_F(RenderTemplateTest, FolderMustBeThere) {
  WriteNamingChart("house");
  ExpectFailure({"named.xml", "--templates", "none"}, "--templates: none is not a folder");
  ExpectFailure({"named.xml", "--templates", "sales.csv"},
                "--templates: sales.csv is not a folder");
  ASSERT_EQ(mkdir(folder.File("a:b").c_str(), 0700), 0);
  ExpectFailure({"named.xml", "--templates", "a:b"},
                "--templates: a folder with a colon in its name cannot be used", 2);
  ASSERT_EQ(mkdir(folder.File("empty").c_str(), 0700), 0);
  ExpectFailure({"named.xml", "--templates", "empty"},
                "named.xml: line 2, column 8: The template \"house\" is not there; searched in "
                "empty.");
  ExpectFailure({"named.xml"},
                "named.xml: line 2, column 8: The template \"house\" is not there; no folder of "
                "templates is set "
                "(system property chartbridge.templates).");
}

TEST_F(RenderTemplateTest, ChartWithDataOfItsOwnNeedsNone) {
  WriteNamingChart("house");
  std::string chart = folder.Read("named.xml");
  chart.erase(chart.find(" template=\"house\""), 17);
  folder.Write("own.xml", chart);
  const std::string own = Svg({"own.xml"});
  EXPECT_EQ(own, Svg({"sales.gpl", "-d", "sales.csv"}));
  // Data on the command line count more.
  folder.Write("other.csv", "region,product,revenue\nWest,Milk,1\n");
  EXPECT_THAT(Svg({"own.xml", "-d", "other.csv"}), HasSubstr(">West<"));
}

}  // namespace
}  // namespace chartbridge
