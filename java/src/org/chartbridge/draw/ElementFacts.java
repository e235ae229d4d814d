// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Element;
import org.chartbridge.data.Column;

/**
 * An element with everything that its drawing has decided.
 *
 * @param name how messages call it, for example {@code Element 1 (bar)}
 * @param path where the chart has it, in the words of {@link org.chartbridge.chart.Problem#path}
 * @param element the element as the chart has it
 * @param horizontal whether its positions run along the y axis and its measures along the x axis
 * @param x the channel of the x axis, filled in where the chart leaves it open; null for none
 * @param y the channel of the y axis, likewise
 * @param xColumn the column of {@code x}; null for none
 * @param yColumn the column of {@code y}; null for none
 * @param colorColumn the column of its colours; null for none
 * @param sizeColumn the column of its sizes; null for none
 * @param labelColumn the column of its labels; null for none
 * @param continuousColor whether its colours are a scale of numbers
 * @param repeatsAxis whether its colours say again what an axis says, so that a legend is needless
 * @param colorTitle the title of the colours' legend; null without a colour channel
 * @param series its name in the legend when it has no colour channel
 * @param seriesIndex the index of its colour, dash and shape when it has no colour channel; -1 when
 *     its fill decides
 * @param color its colour when it has no colour channel, {@code #rrggbb}
 * @param dodges whether several colours stand side by side at one position
 * @param shares whether several of its rows share a position and a colour
 * @param bins the bins of a histogram; null for none
 * @param xCells how a heat map divides the x axis; null for none
 * @param yCells how a heat map divides the y axis; null for none
 * @param sizes the scale of the size channel; null for none
 * @param crowded whether there are so many points that markers are smaller and without edge
 */
public record ElementFacts(
    String name, String path, Element element, boolean horizontal, Channel x, Channel y,
    Column xColumn, Column yColumn, Column colorColumn, Column sizeColumn, Column labelColumn,
    boolean continuousColor, boolean repeatsAxis, String colorTitle, String series,
    int seriesIndex, String color, boolean dodges, boolean shares, Intervals bins, Cells xCells,
    Cells yCells, Sizes sizes, boolean crowded) {

  /** Equal bins; the last one holds its upper end too. */
  public record Intervals(double start, double width, int count) {
    static Intervals of(Bins bins) {
      return bins == null ? null : new Intervals(bins.start(), bins.width(), bins.count());
    }
  }

  /**
   * How a heat map divides an axis of numbers or times. Both are null on an axis of categories.
   *
   * @param bins the bins, when several values share a cell
   * @param edges for each value that has a cell of its own, in order: value, lower and upper end
   */
  public record Cells(Intervals bins, double[][] edges) {
    static Cells of(CellAxis axis) {
      double[] places = axis.places();
      double[][] edges = places == null ? null : new double[places.length][];
      for (int i = 0; edges != null && i < edges.length; i++) {
        edges[i] = new double[] {places[i], axis.lower(places[i]), axis.upper(places[i])};
      }
      return new Cells(Intervals.of(axis.bins()), edges);
    }
  }

  /** Diameters of the smallest and the largest marker, in pixels. */
  public record Sizes(double smallest, double largest) {}

  /** What stands along the axis that its marks grow from. */
  public Channel position() {
    return horizontal ? y : x;
  }

  /** What its marks measure. */
  public Channel measure() {
    return horizontal ? x : y;
  }

  public Column positionColumn() {
    return horizontal ? yColumn : xColumn;
  }

  public Column measureColumn() {
    return horizontal ? xColumn : yColumn;
  }
}
