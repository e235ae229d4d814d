// SPDX-License-Identifier: Apache-2.0
//
// `chartbridge view` as a person uses it. A browser opens its pages in tests/vega.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ViewTest : public testing::Test {
 protected:
  /// Runs `chartbridge view sales.gpl -d sales.csv OPTIONS`.
  RunResult Run(const std::vector<std::string>& options) const {
    std::vector<std::string> arguments = {"view", "sales.gpl", "-d", "sales.csv"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return folder.Run(arguments);
  }

  std::string Page(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"-o", "-"};
    all.insert(all.end(), options.begin(), options.end());
    const RunResult result = Run(all);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  const SampleFolder folder;
};

/// The chart of a page, as its script reads it.
std::string ChartOf(const std::string& page) {
  const std::string start = "<script id=\"chart-json\" type=\"application/json\">";
  const std::size_t from = page.find(start) + start.size();
  return page.substr(from, page.find("</script>", from) - from);
}

/// The page without what its scripts hold.
std::string Markup(const std::string& page) {
  std::string markup;
  std::size_t copied = 0;
  for (std::size_t at = page.find("<script"); at != std::string::npos;
       at = page.find("<script", copied)) {
    const std::size_t end = page.find('>', at) + 1;
    markup.append(page, copied, end - copied);
    copied = page.find("</script>", end);
  }
  return markup.append(page, copied, std::string::npos);
}

TEST_F(ViewTest, WritesOnePageAndNothingElse) {
  const RunResult result = Run({"-o", "sales.html"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(folder.NewNames(), ElementsAre("sales.html"));
  EXPECT_THAT(folder.Read("sales.html"), StartsWith("<!DOCTYPE html>"));
  EXPECT_EQ(folder.Read("sales.html"), Page());
}

TEST_F(ViewTest, ChartIsTheInteractiveOne) {
  const json chart = json::parse(ChartOf(Page()), nullptr, false);
  ASSERT_TRUE(chart.is_object());
  ASSERT_EQ(folder.Run({"json", "sales.gpl", "-d", "sales.csv", "-i", "-o", "a.json"}).exitCode, 0);
  EXPECT_EQ(chart, json::parse(folder.Read("a.json")));
}

TEST_F(ViewTest, TitleIsThatOfTheChartUnlessGiven) {
  EXPECT_THAT(Page(), HasSubstr("<title>Sales</title>"));
  EXPECT_THAT(Page({"--title", "A & <b> \"c\""}),
              HasSubstr("<title>A &amp; &lt;b&gt; &quot;c&quot;</title>"));
  folder.Write("sales.gpl", "draw bar: x region, y revenue");
  EXPECT_THAT(Page(), HasSubstr("<title>"));
}

TEST_F(ViewTest, PageIsDescribed) {
  folder.Write("sales.gpl",
               "title \"Sales & <more> @TITLE@ @CHART@\"\n" + kChart.substr(kChart.find("draw")));
  EXPECT_THAT(Page(),
              HasSubstr("role=\"figure\" aria-label=\"Sales &amp; &lt;more&gt; @TITLE@ @CHART@"));
}

TEST_F(ViewTest, NoTextEndsTheScript) {
  const std::string evil = "</script><!--<script>alert(1)";
  folder.Write("sales.csv", "region,product,revenue\n" + evil + ",Tea,1\n");
  const std::string page = Page();
  EXPECT_THAT(page, Not(HasSubstr(evil)));
  const json chart = json::parse(ChartOf(page), nullptr, false);
  ASSERT_TRUE(chart.is_object());
  EXPECT_EQ(chart.at("data").at("values").at(0).at("region"), evil);
}

TEST_F(ViewTest, NothingIsLoadedFromElsewhere) {
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  const std::string markup = Markup(page);
  EXPECT_THAT(markup, HasSubstr("<body>"));
  // Only attributes and style sheets can name what a page loads before its scripts run.
  for (const char* loading : {" src=", " href=", "url(", "@import", "http:", "https:"}) {
    EXPECT_THAT(markup, Not(HasSubstr(loading)));
  }
}

TEST_F(ViewTest, LicencesOfTheScriptsAreInThePage) {
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("id=\"licences\""));
  for (const char* text : {"vega 6.", "vega-lite 6.", "vega-embed 7.", "d3-scale 4.",
                           "THIS SOFTWARE IS PROVIDED BY THE COPYRIGHT HOLDERS"}) {
    EXPECT_THAT(page, HasSubstr(text));
  }
}

TEST_F(ViewTest, GroundIsThatOfTheChart) {
  EXPECT_THAT(Page(), HasSubstr("background: #ffffff; color: #333333;"));
  folder.Write("sales.gpl", "style dark\n" + kChart);
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("color: #eeeeee;"));
  EXPECT_THAT(page, Not(HasSubstr("background: #ffffff; color")));
}

TEST_F(ViewTest, HelpHasEveryOption) {
  const RunResult result = folder.Run({"view", "--help"});
  EXPECT_EQ(result.exitCode, 0);
  for (const char* option : {"CHART", "--data", "--output", "--title", "--geo", "--projection",
                             "--options", "--renderer", "--verbose"}) {
    EXPECT_THAT(result.output, HasSubstr(option));
  }
}

TEST_F(ViewTest, FailuresAreThoseOfTheChart) {
  folder.Write("page.html", "old");
  folder.Write("sales.csv", "region,product\nNorth,Tea\n");
  const RunResult result = Run({"-o", "page.html"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(
      result.errors,
      StartsWith("chartbridge: sales.gpl: line 5, column 5: The data has no column \"revenue\""));
  EXPECT_EQ(folder.Read("page.html"), "old");
  EXPECT_THAT(folder.NewNames(), ElementsAre("page.html"));

  const RunResult nowhere = Run({"-o", "none/page.html"});
  EXPECT_EQ(nowhere.exitCode, 1);
  EXPECT_EQ(nowhere.errors,
            "chartbridge: none/page.html: cannot write there: the folder none does not exist\n");
  EXPECT_EQ(folder.Run({"view", "sales.gpl"}).exitCode, 2);
}

TEST_F(ViewTest, SaysSoWhereTheScriptsAreMissing) {
  // The command looks for them from where it lies.
  std::filesystem::create_directories(folder.File("somewhere/bin"));
  std::filesystem::copy_file(CHARTBRIDGE_COMMAND, folder.File("somewhere/bin/chartbridge"));
  RunSettings settings;
  settings.folder = folder.Path();
  const RunResult result = RunProgram({folder.File("somewhere/bin/chartbridge"), "view",
                                       "sales.gpl", "-d", "sales.csv", "-o", "page.html"},
                                      settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: view: the scripts of interactive pages are not installed"));
  EXPECT_THAT(folder.NewNames(), ElementsAre("somewhere"));
}

TEST_F(ViewTest, DataCannotBeElsewhere) {
  folder.Write("options.json", "{\"data\": \"separate\"}");
  const RunResult result = Run({"-o", "page.html", "--options", "options.json"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "chartbridge: options.json: \"data\" is \"separate\", and no data file is named\n");
}

}  // namespace
}  // namespace chartbridge
