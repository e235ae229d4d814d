// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <random>
#include <sstream>
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

HistogramBins Counted(const std::vector<double>& values, std::optional<int> count) {
  const auto bins = CountIntoBins(values, count);
  EXPECT_TRUE(bins);
  return bins.value_or(HistogramBins());
}

TEST(HistogramBinsTest, GivenCountGivesExactlySoManyEqualBinsWithRoundEdges) {
  const HistogramBins bins = Counted({0.1, 0.3, 0.7, 0.95}, 5);
  EXPECT_THAT(bins.edges, ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1.0));
  EXPECT_THAT(bins.heights, ElementsAre(1, 1, 0, 1, 1));
}

TEST(HistogramBinsTest, EdgesAreTheDecimalsThatTheyLookLike) {
  const HistogramBins bins = Counted({0.05, 0.65}, 7);
  EXPECT_THAT(bins.edges, ElementsAre(0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7));
}

TEST(HistogramBinsTest, ValueOnAnEdgeBelongsToTheBinThatBeginsThereAndTheLastEdgeToTheLastBin) {
  const HistogramBins bins = Counted({0, 1, 1, 2, 3, 4}, 4);
  EXPECT_THAT(bins.edges, ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(bins.heights, ElementsAre(1, 2, 1, 2));
}

TEST(HistogramBinsTest, OneBinMayReachAcrossZero) {
  const HistogramBins bins = Counted({-177.75, 662.2}, 1);
  EXPECT_THAT(bins.edges, ElementsAre(-200, 800));
  EXPECT_THAT(bins.heights, ElementsAre(2));
}

TEST(HistogramBinsTest, NumberOfBinsSuitsTheValues) {
  std::vector<double> values;
  for (int i = 0; i < 1000; ++i) values.push_back(i);
  // Twice the distance of the quartiles is 999, divided by ten: 99.9.
  const HistogramBins bins = Counted(values, std::nullopt);
  EXPECT_THAT(bins.edges, ElementsAre(0, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000));
  EXPECT_THAT(bins.heights, Each(100));
}

TEST(HistogramBinsTest, OneValueHasOneBinAroundIt) {
  for (const double value : {0.0, 3.0, -0.002, 1e9}) {
    const HistogramBins bins = Counted({value, value}, std::nullopt);
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
    const HistogramBins bins = Counted(values, count);
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

TEST(HistogramBinsTest, ReachFromTheSmallestDoublesToTheLargest) {
  const double next = std::nextafter(1.0, 2.0);
  EXPECT_THAT(Counted({1e-320, 2e-320}, std::nullopt).edges,
              ElementsAre(1e-320, 1.2e-320, 1.4e-320, 1.6e-320, 1.8e-320, 2e-320));
  EXPECT_THAT(Counted({1e308, -1e308}, std::nullopt).edges,
              ElementsAre(-1e308, -5e307, 0, 5e307, 1e308));
  EXPECT_THAT(Counted({1e308, -1e308}, 1).edges, ElementsAre(-1e308, 1e308));
  EXPECT_THAT(Counted({4.9e-324, 0}, std::nullopt).edges, ElementsAre(0, 4.9e-324));
  EXPECT_EQ(Counted({1, next}, std::nullopt).edges.front(), 1);
  EXPECT_GE(Counted({1, next}, std::nullopt).edges.back(), next);
  EXPECT_EQ(Counted({1, next}, 10000).heights.size(), 10000U);
}

TEST(HistogramBinsTest, AValueAHairAboveAnEdgeIsInsideTheBins) {
  EXPECT_THAT(Counted({0, 0.1, 0.1 + 0.2}, 3).edges, ElementsAre(0, 0.12, 0.24, 0.36));
}

TEST(HistogramBinsTest, NoRoundEdgesLieBeyondTheLargestDouble) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  EXPECT_FALSE(CountIntoBins({kLargest}, std::nullopt));
  EXPECT_FALSE(CountIntoBins({kLargest, -kLargest}, std::nullopt));
  EXPECT_FALSE(CountIntoBins({0, kLargest}, 7));
}

/// Finite doubles of any size: bit patterns that nobody chose.
class AnyDoubles {
 public:
  /// One to eight: from everywhere, neighbours, among the smallest, or of one size.
  std::vector<double> Values() {
    const double base = Any();
    std::vector<double> values(1 + _random() % 8);
    const auto kind = _random() % 4;
    for (double& value : values) value = Value(kind, base);
    return values;
  }

  std::optional<int> Count() {
    if (_random() % 2 == 0) return std::nullopt;
    return static_cast<int>(1 + _random() % (_random() % 50 == 0 ? kMostBins : 100));
  }

 private:
  static double OfBits(std::uint64_t bits) {
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  double Any() {
    for (;;) {
      const double value = OfBits(_random());
      if (std::isfinite(value)) return value;
    }
  }

  double Value(std::uint64_t kind, double base) {
    constexpr std::uint64_t kSignAndFraction = 0x800fffffffffffffULL;
    if (kind == 0) return Any();
    double value = base * (1 + static_cast<double>(_random() % 1000) / 1000);
    if (kind == 1) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &base, sizeof bits);
      value = OfBits(bits + _random() % 5);
    } else if (kind == 2) {
      value = OfBits(_random() & kSignAndFraction >> _random() % 50);
    }
    return std::isfinite(value) ? value : base;
  }

  std::mt19937_64 _random{20240131};
};

std::string Shown(const std::vector<double>& values, std::optional<int> count) {
  std::ostringstream text;
  text.precision(17);
  for (const double value : values) text << value << " ";
  text << "in " << count.value_or(0) << " bins";
  return text.str();
}

TEST(HistogramBinsTest, EdgesAscendAndCoverEveryDouble) {
  constexpr int kRounds = 100'000;
  AnyDoubles doubles;
  for (int round = 0; round < kRounds; ++round) {
    const std::vector<double> values = doubles.Values();
    const std::optional<int> count = doubles.Count();
    const auto bins = CountIntoBins(values, count);
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    if (!bins) {
      ASSERT_GT(std::max(std::abs(*lowest), std::abs(*highest)), 8e307) << Shown(values, count);
      continue;
    }
    const std::vector<double>& edges = bins->edges;
    ASSERT_EQ(edges.size(), bins->heights.size() + 1);
    ASSERT_LE(edges.front(), *lowest) << Shown(values, count);
    ASSERT_GE(edges.back(), *highest) << Shown(values, count);
    ASSERT_TRUE(std::isfinite(edges.front()) && std::isfinite(edges.back()));
    ASSERT_EQ(std::adjacent_find(edges.begin(), edges.end(), std::greater_equal<>()), edges.end())
        << Shown(values, count);
    ASSERT_EQ(Total(*bins), static_cast<double>(values.size())) << Shown(values, count);
    ASSERT_LE(bins->heights.size(), static_cast<std::size_t>(count.value_or(62)));
    if (count) {
      ASSERT_EQ(bins->heights.size(), static_cast<std::size_t>(*count));
    }
  }
}

TEST(HistogramTest, AnyValuesGiveAChartThatIsDrawn) {
  const SampleFolder folder;
  folder.Write("line.gpl", "draw line: x year, y sales\n");
  folder.Write("data.csv", "year,sales\n1,2\n5,3\n");
  for (const char* values : {"1e-320\n2e-320\n", "1\n1.0000000000000002\n", "4.9e-324\n0\n",
                             "1e-400\n1\n", "1e22\n10000000000000002097152\n"}) {
    folder.Write("values.txt", values);
    const RunResult result =
        folder.Run({"histogram", "line.gpl", "--values", "values.txt", "-o", "chart.xml"});
    EXPECT_EQ(result.exitCode, 0) << values << result.errors;
    EXPECT_EQ(folder.Run({"render", "chart.xml", "-d", "data.csv", "-o", "a.png"}).errors, "");
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
  ExpectFailure("--values", "1\n-1e309\n", "line 2: -1e309 is beyond the largest number, 1.8e308");
  ExpectFailure("--values", "0\n1.7976931348623157e308\n-1.7976931348623157e308\n",
                "the numbers lie too close to the largest that there is, 1.8e308, for round edges "
                "of bins");
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
  EXPECT_EQ(result.errors, "chartbridge: " + reason + " (see chartbridge histogram --help)\n");
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
