// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

/** The range of values that the marks of an axis take, and what they ask of its ends. */
final class Extent {
  private double min = Double.POSITIVE_INFINITY;
  private double max = Double.NEGATIVE_INFINITY;
  private boolean baseline;
  private boolean margin;
  private boolean edges;

  void add(double value) {
    if (Double.isFinite(value)) {
      min = Math.min(min, value);
      max = Math.max(max, value);
    }
  }

  void add(Extent other) {
    min = Math.min(min, other.min);
    max = Math.max(max, other.max);
    baseline |= other.baseline;
    margin |= other.margin;
    edges |= other.edges;
  }

  /** Marks grow from zero, which therefore must be in sight. */
  void needBaseline() {
    baseline = true;
  }

  /** Marks have a size of their own and must not touch the ends. */
  void needMargin() {
    margin = true;
  }

  /** Marks fill the range from end to end; space beyond them would look like missing data. */
  void fillEdges() {
    edges = true;
  }

  boolean isEmpty() {
    return min > max;
  }

  double min() {
    return min;
  }

  double max() {
    return max;
  }

  boolean baseline() {
    return baseline;
  }

  boolean margin() {
    return margin;
  }

  boolean edges() {
    return edges;
  }
}
