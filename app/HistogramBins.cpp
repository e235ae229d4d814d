// SPDX-License-Identifier: Apache-2.0
#include "app/HistogramBins.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace chartbridge {

namespace {

constexpr double kFewest = 5;
constexpr double kMost = 60;

/// How far a value may miss an edge by the rounding of its own decimals.
constexpr double kSlack = 1e-9;

/// A round number: `digits` times ten to the power of `exponent`. Multiples of it are worked out in
/// whole numbers, so that the third edge of width 0.1 is 0.3 and not a hair beside it.
struct RoundWidth {
  int digits;
  int exponent;

  double Value() const { return Multiple(1); }

  double Multiple(double times) const {
    const double whole = times * digits;
    return exponent >= 0 ? whole * std::pow(10.0, exponent) : whole / std::pow(10.0, -exponent);
  }
};

// Widths as people choose them, in tenths.
const std::vector<int> kPlainSteps = {10, 20, 50};
// More of them, so that a given number of bins leaves few empty ones at the end.
const std::vector<int> kFineSteps = {10, 12, 15, 20, 25, 30, 40, 50, 60, 80};

/// The round widths from `width` on, in ascending order.
std::vector<RoundWidth> WidthsFrom(double width, const std::vector<int>& steps) {
  const int exponent = static_cast<int>(std::floor(std::log10(width))) - 1;
  std::vector<RoundWidth> widths;
  for (int power = exponent; power <= exponent + 2; ++power) {
    for (const int digits : steps) {
      const RoundWidth candidate{digits, power};
      if (candidate.Value() >= width * (1 - kSlack)) widths.push_back(candidate);
    }
  }
  return widths;
}

/// The plain round width nearest to one, unless too many of the narrower one would fit the range.
RoundWidth NearestRound(double width, double range) {
  const RoundWidth above = WidthsFrom(width, kPlainSteps).front();
  // Neighbours are at most a factor of 2.5 apart.
  const RoundWidth below = WidthsFrom(above.Value() / 2.6, kPlainSteps).front();
  const bool isNearer = width - below.Value() < above.Value() - width;
  return isNearer && range / below.Value() <= kMost ? below : above;
}

double Quantile(const std::vector<double>& sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

/// The width that suits the values, not yet rounded.
double FittingWidth(const std::vector<double>& sorted, double range) {
  const auto count = static_cast<double>(sorted.size());
  const double spread = Quantile(sorted, 0.75) - Quantile(sorted, 0.25);
  double width = 2 * spread / std::cbrt(count);
  // Where most values are the same, the quartiles say nothing; Sturges only needs their number.
  if (!(width > 0)) width = range / (std::ceil(std::log2(count)) + 1);
  return std::clamp(width, range / kMost, range / kFewest);
}

/// The number of widths up to a value, from below.
double FloorOf(double value, const RoundWidth& width) {
  return std::floor(value / width.Value() + kSlack);
}

double CountFrom(double first, double highest, const RoundWidth& width) {
  const double last = std::ceil(highest / width.Value() - kSlack);
  return std::max(1.0, last - first);
}

HistogramBins EmptyBins(double first, double count, const RoundWidth& width) {
  HistogramBins bins;
  const auto steps = static_cast<std::size_t>(count);
  for (std::size_t i = 0; i <= steps; ++i) {
    bins.edges.push_back(width.Multiple(first + static_cast<double>(i)));
  }
  bins.heights.assign(bins.edges.size() - 1, 0);
  return bins;
}

/// One bin whose start is a multiple of a tenth of its width: a multiple of its width could not lie
/// below zero with the end above.
HistogramBins OneBin(double lowest, double highest) {
  constexpr double kTenths = 10;
  HistogramBins bins{{lowest, highest}, {0}};
  for (const RoundWidth& width : WidthsFrom(highest - lowest, kFineSteps)) {
    const RoundWidth tenth{width.digits, width.exponent - 1};
    const double first = FloorOf(lowest, tenth);
    if (CountFrom(first, highest, tenth) > kTenths) continue;
    bins.edges = {tenth.Multiple(first), tenth.Multiple(first + kTenths)};
    break;
  }
  return bins;
}

HistogramBins BinsOfCount(double lowest, double highest, int count) {
  if (count == 1) return OneBin(lowest, highest);
  const std::vector<RoundWidth> widths = WidthsFrom((highest - lowest) / count, kFineSteps);
  const auto fits = [&](const RoundWidth& width) {
    return CountFrom(FloorOf(lowest, width), highest, width) <= count;
  };
  // Twice the narrowest width always fits, and the widths go far beyond that.
  const RoundWidth width = *std::find_if(widths.begin(), widths.end() - 1, fits);
  return EmptyBins(FloorOf(lowest, width), count, width);
}

HistogramBins EmptyBins(const std::vector<double>& sorted, std::optional<int> count) {
  double lowest = sorted.front();
  double highest = sorted.back();
  if (lowest == highest) {
    const double half = lowest == 0 ? 0.5 : std::abs(lowest) * 0.05;
    lowest -= half;
    highest += half;
    if (!count) count = 1;
  }
  if (count) return BinsOfCount(lowest, highest, *count);
  const RoundWidth width = NearestRound(FittingWidth(sorted, highest - lowest), highest - lowest);
  const double first = FloorOf(lowest, width);
  return EmptyBins(first, CountFrom(first, highest, width), width);
}

}  // namespace

HistogramBins CountIntoBins(const std::vector<double>& values, std::optional<int> count) {
  std::vector<double> sorted = values;
  std::sort(sorted.begin(), sorted.end());
  HistogramBins bins = EmptyBins(sorted, count);
  for (const double value : sorted) {
    const auto above = std::upper_bound(bins.edges.begin(), bins.edges.end(), value);
    const auto bin = above - bins.edges.begin() - 1;
    const auto last = static_cast<std::ptrdiff_t>(bins.heights.size()) - 1;
    const std::ptrdiff_t kept = std::clamp<std::ptrdiff_t>(bin, 0, last);
    bins.heights[static_cast<std::size_t>(kept)] += 1;
  }
  return bins;
}

}  // namespace chartbridge
