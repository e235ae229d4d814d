// SPDX-License-Identifier: Apache-2.0
#ifndef APP_HISTOGRAMBINS_H_
#define APP_HISTOGRAMBINS_H_

#include <optional>
#include <vector>

namespace chartbridge {

/// A counted histogram.
struct HistogramBins {
  /// Ascending, one more than there are bins.
  std::vector<double> edges;
  /// The height of each bin.
  std::vector<double> heights;
};

/// The most bins that a chart takes.
constexpr int kMostBins = 10000;

/// Counts values into bins of equal width whose edges are round numbers. A value on an edge belongs
/// to the bin that begins there; the end of the last bin belongs to it.
///
/// Without a count, bins are as wide as the rule of Freedman and Diaconis asks (twice the distance
/// of the quartiles, divided by the cube root of the number of values), but 5 at least and 60 at
/// most fit the range; the width is the nearest one that is 1, 2 or 5 times a power of ten. With a
/// count there are exactly so many bins, as narrow as round edges allow. Where the values lie so
/// close together that there are no doubles between such edges, bins are as narrow as doubles
/// allow.
///
/// @param values at least one, all finite
/// @param count 1 to `kMostBins`
/// @return bins with ascending edges that cover all values; none where the values lie so close to
///     the largest double, 1.8e308, that no round edges lie around them
std::optional<HistogramBins> CountIntoBins(const std::vector<double>& values,
                                           std::optional<int> count);

}  // namespace chartbridge

#endif  // APP_HISTOGRAMBINS_H_
