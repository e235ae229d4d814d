// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Arrays;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;

/** How the cells of a heat map divide an axis: by category, by distinct value, or into bins. */
final class CellAxis {
  private static final int MOST_CELLS = 60;
  /** Just short of a half, so that an edge belongs to its own category and not to the next. */
  private static final double HALF = 0.5 - 1e-9;

  private final double[] places;
  private final double[] edges;
  private final Bins bins;

  private CellAxis(double[] places, double[] edges, Bins bins) {
    this.places = places;
    this.edges = edges;
    this.bins = bins;
  }

  /** @param mayBin whether several values may share a cell, because their colours are summed up */
  static CellAxis of(AxisData axis, double[] values, boolean mayBin, Integer binCount) {
    if (axis.kind == ScaleKind.CATEGORY || values.length == 0) {
      return new CellAxis(null, null, null);
    }
    double[] distinct = Arrays.stream(values).sorted().distinct().toArray();
    double gap = smallestGap(distinct);
    boolean regular = regular(distinct, gap);
    double cells = (distinct[distinct.length - 1] - distinct[0]) / gap + 1;
    boolean few = binCount == null && (regular ? cells : distinct.length) <= MOST_CELLS
        && (regular || axis.kind != ScaleKind.LINEAR);
    if (mayBin && !few) {
      return new CellAxis(
          null, null, binCount == null ? Bins.fitting(values) : Bins.given(values, binCount));
    }
    return new CellAxis(distinct, regular ? even(distinct, gap) : between(distinct, gap), null);
  }

  private static double smallestGap(double[] distinct) {
    double gap = Double.POSITIVE_INFINITY;
    for (int i = 1; i < distinct.length; i++) {
      gap = Math.min(gap, distinct[i] - distinct[i - 1]);
    }
    return gap == Double.POSITIVE_INFINITY ? 1 : gap;
  }

  private static boolean regular(double[] distinct, double gap) {
    for (int i = 1; i < distinct.length; i++) {
      double steps = (distinct[i] - distinct[i - 1]) / gap;
      if (Math.abs(steps - Math.rint(steps)) > 1e-3) {
        return false;
      }
    }
    return true;
  }

  private static double[] even(double[] distinct, double gap) {
    double[] edges = new double[2 * distinct.length];
    for (int i = 0; i < distinct.length; i++) {
      edges[2 * i] = distinct[i] - gap / 2;
      edges[2 * i + 1] = distinct[i] + gap / 2;
    }
    return edges;
  }

  private static double[] between(double[] distinct, double gap) {
    double[] edges = new double[2 * distinct.length];
    int last = distinct.length - 1;
    for (int i = 0; i <= last; i++) {
      edges[2 * i] =
          i == 0 ? distinct[0] - half(distinct, 0, 1, gap) : (distinct[i - 1] + distinct[i]) / 2;
      edges[2 * i + 1] = i == last ? distinct[last] + half(distinct, last - 1, last, gap)
                                   : (distinct[i] + distinct[i + 1]) / 2;
    }
    return edges;
  }

  private static double half(double[] distinct, int a, int b, double gap) {
    return a < 0 || b >= distinct.length ? gap / 2 : (distinct[b] - distinct[a]) / 2;
  }

  boolean binned() {
    return bins != null;
  }

  /** The bins, or null when each value has a cell of its own. */
  Bins bins() {
    return bins;
  }

  /** The values that have a cell each, in order; null for bins and categories. */
  double[] places() {
    return places == null ? null : places.clone();
  }

  /** The value that stands for all values of a cell. */
  double key(double value) {
    if (bins == null || Double.isNaN(value)) {
      return value;
    }
    int bin = bins.of(value);
    return bin < 0 ? Double.NaN : (bins.lower(bin) + bins.upper(bin)) / 2;
  }

  double lower(double key) {
    if (bins != null) {
      return bins.lower(bins.of(key));
    }
    return places == null ? key - HALF : edges[2 * Arrays.binarySearch(places, key)];
  }

  double upper(double key) {
    if (bins != null) {
      return bins.upper(bins.of(key));
    }
    return places == null ? key + HALF : edges[2 * Arrays.binarySearch(places, key) + 1];
  }

  String text(Plan plan, Channel channel, Column column, double key) {
    return plan.format(channel, column, lower(key)) + " \u2013 "
        + plan.format(channel, column, upper(key));
  }
}
