// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.List;

/**
 * One layer of marks. Channels that the element does not use are null.
 *
 * @param kind the marks
 * @param x horizontal position; for a pie, the slices
 * @param y vertical position; for a pie, the slices' sizes
 * @param color the column that decides the colour; for a heat map, the value that is shown
 * @param size for points, the column that decides the area
 * @param label a column whose text stands beside each mark
 * @param arrangement how bars, areas and histograms of several colours share a position; null
 *     stands for the marks' default ({@link Arrangement#defaultOf}), so it is null only for marks
 *     that have no arrangement and for a histogram that brings its bins
 * @param bins for a histogram, the number of bins, or null for a number that fits the data
 * @param fill a fixed colour as {@code #rrggbb}, or null for the palette's
 * @param opacity from 0 (invisible) to 1
 * @param ownBins for a histogram that was counted before, its bins from left to right; such a
 *     histogram shows nothing of the data and has no channels. Empty for all other elements
 */
public record Element(
    ElementKind kind,
    Channel x,
    Channel y,
    Channel color,
    Channel size,
    Channel label,
    Arrangement arrangement,
    Integer bins,
    String fill,
    double opacity,
    List<Bin> ownBins) {
  public Element {
    ownBins = List.copyOf(ownBins);
    if (arrangement == null && ownBins.isEmpty()) {
      arrangement = Arrangement.defaultOf(kind);
    }
  }

  /** An element that shows data. */
  public Element(ElementKind kind, Channel x, Channel y, Channel color, Channel size,
      Channel label, Arrangement arrangement, Integer bins, String fill, double opacity) {
    this(kind, x, y, color, size, label, arrangement, bins, fill, opacity, List.of());
  }

  /** A histogram that brings its bins. */
  public static Element histogram(List<Bin> ownBins, String fill, double opacity) {
    return new Element(ElementKind.HISTOGRAM, null, null, null, null, null, null, null, fill,
        opacity, ownBins);
  }

  /** Whether it is a histogram that brings its bins, and so shows nothing of the data. */
  public boolean hasOwnBins() {
    return !ownBins.isEmpty();
  }
}
