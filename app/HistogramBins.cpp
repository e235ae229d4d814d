// SPDX-License-Identifier: Apache-2.0
#include "app/HistogramBins.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace chartbridge {

namespace {

using Edges = std::vector<double>;

constexpr double kFewest = 5;
constexpr double kMost = 60;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// Up to here doubles hold every whole number.
constexpr double kMostMultiples = 9007199254740992.0;

/// A round number: `digits` times ten to the power of `exponent`.
struct RoundWidth {
  int digits;
  int exponent;

  double Value() const { return Multiple(1); }

  /// The double nearest to a multiple, read from its decimals, so that the third edge of width 0.1
  /// is 0.3 and not a hair beside it, and no power of ten is too large or too small on the way.
  /// Infinite beyond the largest double.
  double Multiple(std::int64_t times) const {
    const std::int64_t whole = times * digits;
    const std::string text = std::to_string(whole) + "e" + std::to_string(exponent);
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc()) return value;
    if (whole == 0 || exponent < 0) return 0;
    return whole < 0 ? -kInfinity : kInfinity;
  }

  /// The last multiple that is not above a value; none where multiples lie closer than doubles do.
  std::optional<std::int64_t> LastUpTo(double value) const {
    // Widths near the smallest double have lost most of their digits as doubles.
    constexpr int kScale = 300;
    const bool isTiny = exponent < -kScale + 50;
    const double scaled = isTiny ? value * std::pow(10.0, kScale) : value;
    const double guess =
        std::floor(scaled / (digits * std::pow(10.0, exponent + (isTiny ? kScale : 0))));
    if (!(std::abs(guess) < kMostMultiples)) return std::nullopt;
    auto multiple = static_cast<std::int64_t>(guess);
    while (Multiple(multiple) > value) --multiple;
    while (Multiple(multiple + 1) <= value) ++multiple;
    return multiple;
  }
};

using Widths = std::vector<RoundWidth>;

// Widths as people choose them, in tenths.
const std::vector<int> kPlainSteps = {10, 20, 50};
// More of them, so that a given number of bins leaves few empty ones at the end.
const std::vector<int> kFineSteps = {10, 12, 15, 20, 25, 30, 40, 50, 60, 80};

/// The round widths from `width` on, in ascending order, to several powers of ten above it:
/// rounding may ask for a few times the width.
Widths WidthsFrom(double width, const std::vector<int>& steps) {
  constexpr int kPowers = 5;
  const int exponent = static_cast<int>(std::floor(std::log10(width))) - 1;
  Widths widths;
  for (int power = exponent; power < exponent + kPowers; ++power) {
    for (const int digits : steps) {
      const RoundWidth candidate{digits, power};
      // The width itself may have been rounded up.
      if (candidate.Value() >= width * (1 - 1e-9)) widths.push_back(candidate);
    }
  }
  return widths;
}

/// A part of the range between two values, which itself may be too large for a double.
double Share(double lowest, double highest, double parts) {
  const double range = highest - lowest;
  return std::isfinite(range) ? range / parts : highest / parts - lowest / parts;
}

/// The least width whose multiples are different doubles between two values.
double Resolution(double lowest, double highest) {
  const double largest = std::max(std::abs(lowest), std::abs(highest));
  return largest - std::nextafter(largest, 0.0);
}

/// `count` bins of that width around the values; empty when they do not fit, or doubles are too far
/// apart, or come to an end.
Edges EdgesOf(const RoundWidth& width, std::int64_t first, std::int64_t count, double highest) {
  Edges edges;
  for (std::int64_t i = 0; i <= count; ++i) {
    edges.push_back(width.Multiple(first + i));
    if (!std::isfinite(edges.back())) return {};
    if (i > 0 && edges[edges.size() - 2] >= edges.back()) return {};
  }
  return edges.back() >= highest ? edges : Edges();
}

Edges EdgesOfCount(double lowest, double highest, int count) {
  const double width = std::max(Share(lowest, highest, count), Resolution(lowest, highest));
  for (const RoundWidth& candidate : WidthsFrom(width, kFineSteps)) {
    const auto first = candidate.LastUpTo(lowest);
    // Cheaper than all edges.
    if (!first || candidate.Multiple(*first + count) < highest) continue;
    const Edges edges = EdgesOf(candidate, *first, count, highest);
    if (!edges.empty()) return edges;
  }
  return {};
}

/// One bin whose start is a multiple of a tenth of its width: a multiple of its width could not lie
/// below zero with the end above.
Edges OneBin(double lowest, double highest) {
  constexpr int kTenths = 10;
  const Edges tenths = EdgesOfCount(lowest, highest, kTenths);
  return tenths.empty() ? Edges() : Edges{tenths.front(), tenths.back()};
}

Edges EdgesAround(double lowest, double highest, int count) {
  return count == 1 ? OneBin(lowest, highest) : EdgesOfCount(lowest, highest, count);
}

/// Edges around values that are all the same.
Edges EdgesAround(double value, int count) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  const double half = value == 0 ? 0.5 : std::abs(value) * 0.05;
  const double lowest = std::max(value - half, -kLargest);
  const double highest = std::min(value + half, kLargest);
  const Edges edges = EdgesAround(lowest, highest, count);
  return edges.empty() ? EdgesAround(value, value, count) : edges;
}

double Quantile(const std::vector<double>& sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  if (sorted[below] == sorted[above]) return sorted[below];
  // A difference of the two could be too large for a double.
  const double part = place - static_cast<double>(below);
  return sorted[below] * (1 - part) + sorted[above] * part;
}

/// The width that suits the values, not yet rounded.
double FittingWidth(const std::vector<double>& sorted) {
  const double lowest = sorted.front();
  const double highest = sorted.back();
  const auto count = static_cast<double>(sorted.size());
  const double spread = Quantile(sorted, 0.75) - Quantile(sorted, 0.25);
  double width = 2 * spread / std::cbrt(count);
  // Where most values are the same, the quartiles say nothing; Sturges only needs their number.
  if (!(width > 0)) width = Share(lowest, highest, std::ceil(std::log2(count)) + 1);
  width = std::min(width, Share(lowest, highest, kFewest));
  width = std::max(width, Share(lowest, highest, kMost));
  return std::max(width, Resolution(lowest, highest));
}

/// The plain round widths from the one nearest to `width` on, which is not the one below where too
/// many bins would be so narrow.
Widths PlainWidths(double width, double narrowest) {
  Widths widths = WidthsFrom(width, kPlainSteps);
  if (widths.empty()) return widths;
  const double above = widths.front().Value();
  // Neighbours are at most a factor of 2.5 apart.
  const double least = std::max(above / 2.6, std::numeric_limits<double>::denorm_min());
  const RoundWidth below = WidthsFrom(least, kPlainSteps).front();
  const bool isNearer = width - below.Value() < above - width;
  if (isNearer && below.Value() >= narrowest) widths.insert(widths.begin(), below);
  return widths;
}

Edges SuitableEdges(const std::vector<double>& sorted) {
  const double lowest = sorted.front();
  const double highest = sorted.back();
  const double narrowest = std::max(Share(lowest, highest, kMost), Resolution(lowest, highest));
  for (const RoundWidth& width : PlainWidths(FittingWidth(sorted), narrowest)) {
    const auto first = width.LastUpTo(lowest);
    const auto last = width.LastUpTo(highest);
    if (!first || !last) continue;
    const bool isOnEdge = width.Multiple(*last) == highest && *last > *first;
    const Edges edges = EdgesOf(width, *first, *last - *first + (isOnEdge ? 0 : 1), highest);
    if (!edges.empty()) return edges;
  }
  return {};
}

Edges EdgesFor(const std::vector<double>& sorted, std::optional<int> count) {
  const double lowest = sorted.front();
  const double highest = sorted.back();
  if (lowest == highest) return EdgesAround(lowest, count.value_or(1));
  return count ? EdgesAround(lowest, highest, *count) : SuitableEdges(sorted);
}

}  // namespace

std::optional<HistogramBins> CountIntoBins(const std::vector<double>& values,
                                           std::optional<int> count) {
  std::vector<double> sorted = values;
  std::sort(sorted.begin(), sorted.end());
  HistogramBins bins{EdgesFor(sorted, count), {}};
  if (bins.edges.empty()) return std::nullopt;
  bins.heights.assign(bins.edges.size() - 1, 0);
  for (const double value : sorted) {
    const auto above = std::upper_bound(bins.edges.begin(), bins.edges.end(), value);
    const auto bin = static_cast<std::size_t>(above - bins.edges.begin()) - 1;
    bins.heights[std::min(bin, bins.heights.size() - 1)] += 1;
  }
  return bins;
}

}  // namespace chartbridge
