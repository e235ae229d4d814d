// SPDX-License-Identifier: Apache-2.0
//
// `chartbridge json` as a person uses it. What the charts look like is tested in tests/vega.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kOwnData =
    "<chart xmlns=\"urn:chartbridge:chart:2\">\n"
    "  <elements><bar><x column=\"region\"/><y column=\"sales\"/></bar></elements>\n"
    "  <data>\nregion,sales\nEast,12\n</data>\n"
    "</chart>\n";

const std::string kPoints = "draw point: x longitude, y latitude\n";
const std::string kPlaces = "longitude,latitude\n7.6,47.5\n8.5,47.4\n";
const std::string kLand =
    "{\"type\":\"Polygon\",\"coordinates\":[[[6,45.8],[10.4,45.8],[10.4,47.8],[6,47.8],[6,45.8]]]}";

class JsonTest : public testing::Test {
 protected:
  JsonTest() {
    folder.Write("own.xml", kOwnData);
    folder.Write("points.gpl", kPoints);
    folder.Write("places.csv", kPlaces);
    folder.Write("land.geojson", kLand);
  }

  /// Runs `chartbridge json ARGUMENTS`.
  RunResult Run(std::vector<std::string> arguments, const RunSettings& settings = {}) const {
    arguments.insert(arguments.begin(), "json");
    return folder.Run(arguments, settings);
  }

  RunResult RunSales(std::vector<std::string> options) const {
    options.insert(options.begin(), {"sales.gpl", "-d", "sales.csv"});
    return Run(options);
  }

  RunResult RunMap(std::vector<std::string> options) const {
    options.insert(options.begin(),
                   {"points.gpl", "-d", "places.csv", "-o", "out.json", "--interactive"});
    return Run(options);
  }

  json Read(const std::string& name) const {
    return json::parse(folder.Read(name), nullptr, false);
  }

  /// One line says why, and nothing is left behind.
  void ExpectFailure(const RunResult& result, const std::string& reason) const {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
    EXPECT_THAT(folder.Names(), Not(testing::Contains(testing::StartsWith("out"))));
  }

  void ExpectUsageError(const RunResult& result, const std::string& reason) const {
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + " (see chartbridge json --help)\n");
  }

  const SampleFolder folder;
};

void ExpectDone(const RunResult& result) {
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

TEST_F(JsonTest, WritesTheChartWithItsData) {
  const RunResult result = RunSales({"-o", "out.json"});
  ExpectDone(result);
  EXPECT_EQ(result.output, "");
  const json chart = Read("out.json");
  EXPECT_THAT(chart.value("$schema", ""), HasSubstr("/vega-lite/v6.json"));
  ASSERT_EQ(chart.at("data").at("values").size(), 4U);
  EXPECT_EQ(chart.at("data").at("values").at(0),
            json({{"region", "North"}, {"product", "Tea"}, {"revenue", 1200.5}}));
  EXPECT_THAT(chart.dump(), Not(HasSubstr("tooltip")));
}

TEST_F(JsonTest, EveryFormOfTheChartGivesTheSame) {
  folder.Write("old.xml", kOldChartXml);
  ExpectDone(RunSales({"-o", "a.json"}));
  ExpectDone(Run({"sales.xml", "--data", "sales.csv", "--output", "b.json"}));
  ExpectDone(Run({"old.xml", "--data", "sales.csv", "--output", "c.json"}));
  EXPECT_THAT(folder.Read("a.json"), Not(IsEmpty()));
  EXPECT_EQ(folder.Read("a.json"), folder.Read("b.json"));
  EXPECT_EQ(folder.Read("a.json"), folder.Read("c.json"));
}

TEST_F(JsonTest, FieldsArriveAsTheyAre) {
  folder.Write("odd.csv",
               "\xEF\xBB\xBFregion,product,revenue\r\n\"<&>\r\n]]>\",\"a \"\"b\"\"\",1\r\n");
  ExpectDone(Run({"sales.gpl", "-d", "odd.csv", "-o", "out.json"}));
  EXPECT_EQ(Read("out.json").at("data").at("values").at(0),
            json({{"region", "<&>\r\n]]>"}, {"product", "a \"b\""}, {"revenue", 1}}));
}

TEST_F(JsonTest, ChartMayHaveItsOwnData) {
  ExpectDone(Run({"own.xml", "-o", "out.json"}));
  EXPECT_EQ(Read("out.json").at("data").at("values"), json({{{"region", "East"}, {"sales", 12}}}));
}

TEST_F(JsonTest, DataOfTheCommandWin) {
  folder.Write("other.csv", "region,sales\nWest,7\n");
  ExpectDone(Run({"own.xml", "-d", "other.csv", "-o", "out.json"}));
  EXPECT_EQ(Read("out.json").at("data").at("values"), json({{{"region", "West"}, {"sales", 7}}}));
}

TEST_F(JsonTest, StandardInputAndOutput) {
  ExpectDone(RunSales({"-o", "out.json"}));
  RunSettings chart;
  chart.input = kChart;
  const RunResult result = Run({"-", "-d", "sales.csv", "-o", "-"}, chart);
  ExpectDone(result);
  EXPECT_EQ(result.output, folder.Read("out.json"));
  RunSettings data;
  data.input = kData;
  EXPECT_EQ(Run({"sales.gpl", "-d", "-", "-o", "-"}, data).output, folder.Read("out.json"));
}

TEST_F(JsonTest, ReplacesAnOldFile) {
  folder.Write("out.json", "old");
  ExpectDone(RunSales({"-o", "out.json"}));
  EXPECT_TRUE(Read("out.json").is_object());
  EXPECT_THAT(folder.NewNames(),
              ElementsAre("land.geojson", "out.json", "own.xml", "places.csv", "points.gpl"));
}

TEST_F(JsonTest, TemplateNeedsNoData) {
  ExpectDone(Run({"sales.gpl", "--template", "-o", "out.json"}));
  const json data = Read("out.json").at("data");
  EXPECT_EQ(data.at("name"), "data");
  EXPECT_FALSE(data.contains("values"));
}

TEST_F(JsonTest, InteractiveChartsHaveTheirDataInside) {
  ExpectDone(RunSales({"-i", "-o", "out.json"}));
  const json chart = Read("out.json");
  EXPECT_EQ(chart.at("data").at("values").size(), 4U);
  EXPECT_THAT(chart.dump(), HasSubstr("tooltip"));
  EXPECT_THAT(folder.NewNames(),
              ElementsAre("land.geojson", "out.json", "own.xml", "places.csv", "points.gpl"));
}

TEST_F(JsonTest, DataFileHoldsTheRows) {
  ExpectDone(RunSales({"-i", "-o", "out.json", "--data-file", "out-rows.json"}));
  EXPECT_EQ(Read("out-rows.json").size(), 4U);
  EXPECT_EQ(Read("out.json").at("data").at("url"), "out-rows.json");
}

TEST_F(JsonTest, OptionsSayWhichInteraction) {
  folder.Write("options.json", "{\"tooltips\": false, \"zoom\": false, \"selection\": \"none\"}");
  ExpectDone(RunSales({"-i", "-o", "out.json", "--options", "options.json"}));
  EXPECT_THAT(folder.Read("out.json"), Not(HasSubstr("tooltip")));
  EXPECT_THAT(folder.Read("out.json"), Not(HasSubstr("\"params\"")));
}

TEST_F(JsonTest, MapLayersAndProjection) {
  folder.Write("options.json", "{\"map\": {\"fill\": \"#abcdef\"}}");
  ExpectDone(RunMap({"--geo", "land.geojson", "land.geojson", "--projection", "orthographic",
                     "--options", "options.json"}));
  const std::string chart = folder.Read("out.json");
  EXPECT_THAT(chart, HasSubstr("\"orthographic\""));
  EXPECT_THAT(chart, HasSubstr("#abcdef"));
  EXPECT_THAT(chart, HasSubstr("geoshape"));
}

TEST_F(JsonTest, RendererAndCharset) {
  folder.Write("sales.gpl", "title \"Größe\"\n" + kChart.substr(kChart.find("draw")));
  ExpectDone(RunSales({"-o", "out.json", "--renderer", "svg", "--charset", "ISO-8859-1"}));
  EXPECT_THAT(folder.Read("out.json"), HasSubstr("Gr\xF6\xDF"
                                                 "e"));
  EXPECT_THAT(folder.Read("out.json"), HasSubstr("\"svg\""));
}

TEST_F(JsonTest, HelpHasEveryOption) {
  const RunResult result = Run({"--help"});
  EXPECT_EQ(result.exitCode, 0);
  for (const char* option :
       {"CHART", "--data ", "--output", "--template", "--interactive", "--geo", "--projection",
        "--options", "--renderer", "--data-file", "--charset", "--classpath", "--no-guard",
        "--verbose", "Examples:\n  chartbridge json "}) {
    EXPECT_THAT(result.output, HasSubstr(option));
  }
}

TEST_F(JsonTest, WrongUsage) {
  ExpectUsageError(Run({}), "chart is required");
  ExpectUsageError(Run({"sales.gpl"}), "--output is required");
  ExpectUsageError(RunSales({"-o", "out.json", "--geo", "land.geojson"}),
                   "--geo goes with --interactive");
  ExpectUsageError(RunSales({"-o", "out.json", "--options", "o.json"}),
                   "--options goes with --interactive");
  ExpectUsageError(RunSales({"-o", "out.json", "--projection", "mercator"}),
                   "--projection goes with --interactive");
  ExpectUsageError(RunSales({"-o", "out.json", "--data-file", "rows.json"}),
                   "--data-file goes with --interactive");
  ExpectUsageError(RunSales({"-o", "out.json", "-i", "--template"}),
                   "--template and --interactive exclude each other");
  ExpectUsageError(RunSales({"-o", "out.json", "--renderer", "webgl"}),
                   "--renderer: \"webgl\" is neither canvas nor svg");
  ExpectUsageError(RunSales({"-o", "-", "-i", "--data-file", "rows.json"}),
                   "--data-file goes with a chart in a file; -o must name one");
  ExpectUsageError(RunSales({"-o", "out.json", "-i", "--data-file", "-"}),
                   "--data-file must name a file");
  ExpectUsageError(RunSales({"-o", "out.json", "-i", "--data-file", "./out.json"}),
                   "--data-file and -o name the same file");
  ExpectUsageError(Run({"-", "-d", "-", "-o", "out.json"}),
                   "only one of the inputs can be standard input");
}

TEST_F(JsonTest, InputsThatCannotBeRead) {
  ExpectFailure(Run({"none.gpl", "-o", "out.json"}), "none.gpl: No such file or directory");
  ExpectFailure(Run({"sales.gpl", "-d", "none.csv", "-o", "out.json"}),
                "none.csv: No such file or directory");
  ExpectFailure(RunMap({"--geo", "none.geojson"}), "none.geojson: No such file or directory");
  ExpectFailure(RunMap({"--options", "none.json"}), "none.json: No such file or directory");
  ExpectFailure(RunSales({"-o", "none/out.json"}),
                "none/out.json: cannot write there: the folder none does not exist");
  ExpectFailure(RunSales({"-i", "-o", "out.json", "--data-file", "none/rows.json"}),
                "none/rows.json: cannot write there: the folder none does not exist");
}

TEST_F(JsonTest, WrongCharts) {
  folder.Write("wrong.gpl", "draw pillar: x region\n");
  const RunResult wrong = Run({"wrong.gpl", "-d", "sales.csv", "-o", "out.json"});
  EXPECT_THAT(wrong.errors, HasSubstr("wrong.gpl: line 1, column 6: found \"pillar\""));
  EXPECT_EQ(wrong.exitCode, 1);
  // Without data the chart goes to the exporter as it is, with the same result.
  EXPECT_EQ(Run({"wrong.gpl", "-o", "out.json"}).errors, wrong.errors);

  folder.Write("broken.xml", "<chart><elements></chart>");
  const RunResult broken = Run({"broken.xml", "-d", "sales.csv", "-o", "out.json"});
  EXPECT_THAT(broken.errors, HasSubstr("broken.xml: line 1, column "));
  EXPECT_EQ(Run({"broken.xml", "-o", "out.json"}).errors, broken.errors);

  ExpectFailure(Run({"sales.gpl", "-o", "out.json"}),
                "sales.gpl: the chart has no data of its own; name its data with --data");
}

TEST_F(JsonTest, WrongData) {
  folder.Write("bad.csv", "region,product,revenue\nNorth,Tea,1\nNorth,Tea\n");
  const RunResult short_row = Run({"sales.gpl", "-d", "bad.csv", "-o", "out.json"});
  EXPECT_EQ(short_row.exitCode, 1);
  EXPECT_THAT(short_row.errors, HasSubstr("bad.csv: CSV line 3 has 2 fields"));
  folder.Write("bad.csv", "region,revenue\nNorth,1\n");
  EXPECT_THAT(Run({"sales.gpl", "-d", "bad.csv", "-o", "out.json"}).errors,
              HasSubstr("sales.gpl: line 6, column 9: The data has no column \"product\""));
  folder.Write("bad.csv", "region,product,revenue\nN\xF6,Tea,1\n");
  ExpectFailure(Run({"sales.gpl", "-d", "bad.csv", "-o", "out.json"}),
                "bad.csv: line 2: the byte 0xF6 is not UTF-8; the data must be saved as UTF-8");
}

TEST_F(JsonTest, WrongMaps) {
  folder.Write("bad.geojson", "{\"type\":\"Square\"}");
  const RunResult bad = RunMap({"--geo", "land.geojson", "bad.geojson"});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_THAT(bad.errors, HasSubstr("chartbridge: bad.geojson: /type: found \"Square\""));
  const RunResult bars = RunSales({"-i", "-o", "out.json", "--geo", "land.geojson"});
  EXPECT_EQ(bars.exitCode, 1);
  EXPECT_THAT(bars.errors, HasSubstr("sales.gpl: Element 1 (bar) has no place on a map"));
  EXPECT_THAT(
      RunMap({"--geo", "land.geojson", "--projection", "flat"}).errors,
      HasSubstr("--projection: \"map.projection\" is \"flat\"; expected one of mercator, "));
}

TEST_F(JsonTest, WrongOptions) {
  const std::vector<std::string> arguments = {"--options", "options.json"};
  folder.Write("options.json", "{\"zoom\": 3}");
  ExpectFailure(RunMap(arguments), "options.json: \"zoom\" is 3; expected true or false.");
  folder.Write("options.json", "{\"zoom\":\n tru}");
  EXPECT_THAT(RunMap(arguments).errors,
              HasSubstr("options.json: not well-formed JSON: parse error at line 2, column "));
  folder.Write("options.json", "[1]");
  EXPECT_THAT(RunMap(arguments).errors,
              HasSubstr("options.json: found a list, expected a JSON object"));
  folder.Write("options.json", "{\"data\": \"separate\"}");
  ExpectFailure(RunMap(arguments),
                "options.json: \"data\" is \"separate\", and no data file is named");
  folder.Write("options.json", "{\"data\": 7}");
  EXPECT_THAT(RunMap(arguments).errors, HasSubstr("options.json: \"data\" is 7; expected one of"));
}

TEST_F(JsonTest, UnknownCharset) {
  const RunResult result = RunSales({"-o", "out.json", "--charset", "klingon"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("chartbridge: --charset: There is no codepage \"klingon\""));
}

TEST_F(JsonTest, VerboseShowsTheStack) {
  const RunResult result = RunSales({"-o", "out.json", "--charset", "klingon", "--verbose"});
  EXPECT_THAT(result.errors, HasSubstr("\n\tat org.chartbridge.vega."));
}

}  // namespace
}  // namespace chartbridge
