// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

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
 *     that have no arrangement
 * @param bins for a histogram, the number of bins, or null for a number that fits the data
 * @param fill a fixed colour as {@code #rrggbb}, or null for the palette's
 * @param opacity from 0 (invisible) to 1
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
    double opacity) {
  public Element {
    if (arrangement == null) {
      arrangement = Arrangement.defaultOf(kind);
    }
  }
}
