// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/HistogramBins.h"
#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

double Total(const HistogramBins& bins) {
  double total = 0;
  for (const double height : bins.heights) total += height;
  return total;
}

TEST(HistogramBinsTest, GivenCountGivesExactlySoManyEqualBinsWithRoundEdges) {
  const HistogramBins bins = CountIntoBins({0.1, 0.3, 0.7, 0.95}, 5);
  EXPECT_THAT(bins.edges, ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1.0));
  EXPECT_THAT(bins.heights, ElementsAre(1, 1, 0, 1, 1));
}

TEST(HistogramBinsTest, EdgesAreTheDecimalsThatTheyLookLike) {
  const HistogramBins bins = CountIntoBins({0.05, 0.65}, 7);
  EXPECT_THAT(bins.edges, ElementsAre(0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7));
}

TEST(HistogramBinsTest, ValueOnAnEdgeBelongsToTheBinThatBeginsThereAndTheLastEdgeToTheLastBin) {
  const HistogramBins bins = CountIntoBins({0, 1, 1, 2, 3, 4}, 4);
  EXPECT_THAT(bins.edges, ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(bins.heights, ElementsAre(1, 2, 1, 2));
}

TEST(HistogramBinsTest, OneBinMayReachAcrossZero) {
  const HistogramBins bins = CountIntoBins({-177.75, 662.2}, 1);
  EXPECT_THAT(bins.edges, ElementsAre(-200, 800));
  EXPECT_THAT(bins.heights, ElementsAre(2));
}

TEST(HistogramBinsTest, NumberOfBinsSuitsTheValues) {
  std::vector<double> values;
  for (int i = 0; i < 1000; ++i) values.push_back(i);
  // Twice the distance of the quartiles is 999, divided by ten: 99.9.
  const HistogramBins bins = CountIntoBins(values, std::nullopt);
  EXPECT_THAT(bins.edges, ElementsAre(0, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000));
  EXPECT_THAT(bins.heights, Each(100));
}

TEST(HistogramBinsTest, OneValueHasOneBinAroundIt) {
  for (const double value : {0.0, 3.0, -0.002, 1e9}) {
    const HistogramBins bins = CountIntoBins({value, value}, std::nullopt);
    EXPECT_EQ(Total(bins), 2);
    EXPECT_LE(bins.edges.front(), value);
    EXPECT_GE(bins.edges.back(), value);
    EXPECT_LE(bins.heights.size(), 2U);
  }
}

TEST(HistogramBinsTest, EveryValueIsCountedOnceWhateverTheRange) {
  unsigned state = 7;
  const auto next = [&state] {
    state = state * 1664525U + 1013904223U;
    return static_cast<double>(state >> 8U) / (1U << 24U);
  };
  for (int round = 0; round < 400; ++round) {
    const double scale = std::pow(10.0, std::floor(next() * 24) - 12);
    const double start = (next() - 0.5) * scale * (round % 3 == 0 ? 1000 : 1);
    std::vector<double> values(1 + static_cast<std::size_t>(next() * 300));
    for (double& value : values) value = start + next() * next() * scale;
    const std::optional<int> count =
        round % 2 == 0 ? std::optional<int>() : 1 + static_cast<int>(next() * 100);
    const HistogramBins bins = CountIntoBins(values, count);
    ASSERT_EQ(bins.edges.size(), bins.heights.size() + 1);
    if (count) {
      ASSERT_EQ(bins.heights.size(), static_cast<std::size_t>(*count));
    } else {
      ASSERT_LE(bins.heights.size(), 62U);
    }
    ASSERT_EQ(Total(bins), static_cast<double>(values.size()));
    const double width = bins.edges[1] - bins.edges[0];
    for (std::size_t i = 0; i < bins.heights.size(); ++i) {
      ASSERT_NEAR(bins.edges[i + 1] - bins.edges[i], width, width * 1e-6);
      const auto inside = std::count_if(values.begin(), values.end(), [&](double value) {
        const bool last = i + 1 == bins.heights.size();
        return value >= bins.edges[i] &&
               (value < bins.edges[i + 1] || (last && value <= bins.edges[i + 1]));
      });
      ASSERT_EQ(static_cast<double>(inside), bins.heights[i]);
    }
  }
}

TEST(HistogramTest, ValuesAreCountedAndPutBehindTheChart) {
  const SampleFolder folder;
  folder.Write("line.gpl", "draw line: x year, y sales\n");
  folder.Write("values.txt", "1\n2.5\n\n +3 \r\n1e1\n");
  const RunResult result = folder.Run(
      {"histogram", "line.gpl", "--values", "values.txt", "--count", "2", "-o", "chart.xml"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  const std::string chart = folder.Read("chart.xml");
  EXPECT_THAT(chart, HasSubstr("<histogram fill=\"#999999\" opacity=\"0.5\">\n"
                               "      <bin from=\"0\" to=\"5\" value=\"3\"/>\n"
                               "      <bin from=\"5\" to=\"10\" value=\"1\"/>\n"));
  folder.Write("data.csv", "year,sales\n1,2\n5,3\n");
  EXPECT_EQ(folder.Run({"render", "chart.xml", "-d", "data.csv", "-o", "chart.png"}).exitCode, 0);
}

TEST(HistogramTest, CountedBinsComeAsJson) {
  const SampleFolder folder;
  folder.Write("line.gpl", "draw line: x year, y sales\n");
  RunSettings settings;
  settings.input = "{\"edges\": [0, 0.5, 10], \"heights\": [0.25, 0.75]}";
  const RunResult result = folder.Run(
      {"histogram", "line.gpl", "--bins", "-", "--fill", "#0072b2", "--opacity", "0.25"}, settings);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("<histogram fill=\"#0072b2\" opacity=\"0.25\">\n"
                                       "      <bin from=\"0\" to=\"0.5\" value=\"0.25\"/>\n"));
}

void ExpectFailure(const std::string& option, const std::string& content,
                   const std::string& reason) {
  const SampleFolder folder;
  folder.Write("line.gpl", "draw line: x year, y sales\n");
  folder.Write("in", content);
  folder.Write("out.xml", "old");
  const RunResult result = folder.Run({"histogram", "line.gpl", option, "in", "-o", "out.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "chartbridge: in: " + reason + "\n");
  EXPECT_EQ(folder.Read("out.xml"), "old");
}

TEST(HistogramTest, WrongNumbersAreToldByFileAndLine) {
  ExpectFailure("--values", "", "holds no numbers");
  ExpectFailure("--values", "1\n2\nx\n",
                "line 3: found \"x\" where a number is expected, one a line");
  ExpectFailure("--values", "1,5\n",
                "line 1: found \"1,5\" where a number is expected, one a line");
  ExpectFailure("--values", "nan\n",
                "line 1: found \"nan\" where a number is expected, one a line");
  ExpectFailure("--values", "+\n", "line 1: found \"+\" where a number is expected, one a line");
  ExpectFailure("--bins", "[]", "expected an object with \"edges\" and \"heights\"");
  ExpectFailure("--bins", "{\"edges\": [1]}", "needs \"heights\", an array of numbers");
  ExpectFailure("--bins", "{\"edges\": [1, \"a\"], \"heights\": [1]}",
                "\"edges\" holds \"a\" where a number is expected");
  ExpectFailure("--bins", "{\"edges\": [1, 2], \"heights\": [1, 2]}",
                "has 2 edges and 2 heights; there must be one edge more than heights, and at least "
                "one height");
  ExpectFailure("--bins", "{\"edges\": [2, 1], \"heights\": [1]}",
                "Edge 2 of the histogram is 1.0, which is not above edge 1, 2.0; edges ascend.");
  ExpectFailure("--bins", "{\"edges\": [1, 2], \"heights\": [-1]}",
                "The height of bin 1 of 1 is -1.0; heights are 0 or more.");
}

TEST(HistogramTest, ChartWithoutAPlaceForItIsTold) {
  const SampleFolder folder;
  folder.Write("pie.gpl", "draw pie: x region\n");
  folder.Write("values.txt", "1\n2\n");
  const RunResult result = folder.Run({"histogram", "pie.gpl", "--values", "values.txt"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: pie.gpl: The chart has no place for a histogram: "));
}

void ExpectUsage(std::vector<std::string> arguments, const std::string& reason) {
  const SampleFolder folder;
  folder.Write("in", "1\n2\n");
  arguments.insert(arguments.begin(), {"histogram", "sales.gpl"});
  const RunResult result = folder.Run(arguments);
  EXPECT_EQ(result.exitCode, 2) << result.errors;
  EXPECT_EQ(result.errors, "chartbridge: " + reason + "\nTry: chartbridge histogram --help\n");
  EXPECT_THAT(folder.NewNames(), ElementsAre("in"));
}

TEST(HistogramTest, WrongUsageIsTold) {
  ExpectUsage({}, "either --values or --bins is required");
  ExpectUsage({"--values", "in", "--bins", "in"}, "either --values or --bins is required");
  ExpectUsage({"--bins", "in", "--count", "3"}, "--count goes with --values");
  ExpectUsage({"--values", "in", "--count", "0"}, "--count: must be from 1 to 10000");
  ExpectUsage({"--values", "in", "--count", "10001"}, "--count: must be from 1 to 10000");
  ExpectUsage({"--values", "in", "--fill", "red"},
              "--fill: \"red\" is not a colour such as #0072b2");
  ExpectUsage({"--values", "in", "--opacity", "1.5"}, "--opacity: must be from 0 to 1");
}

}  // namespace
}  // namespace chartbridge
