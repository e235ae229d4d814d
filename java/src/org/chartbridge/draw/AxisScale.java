// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import org.chartbridge.chart.ScaleKind;

/**
 * Maps values to positions along an axis, from 0 at its start to 1 at its end. Categories are the
 * whole numbers of their indices; a panel may show a part of them.
 */
final class AxisScale {
  private final ScaleKind kind;
  private final double lower;
  private final double upper;
  private final boolean reversed;
  private final int[] slots;
  private final double from;
  private final double span;

  private AxisScale(ScaleKind kind, double lower, double upper, boolean reversed, int[] slots) {
    this.kind = kind;
    this.lower = lower;
    this.upper = upper;
    this.reversed = reversed;
    this.slots = slots;
    from = kind == ScaleKind.LOG ? Math.log10(lower) : lower;
    span = (kind == ScaleKind.LOG ? Math.log10(upper) : upper) - from;
  }

  static AxisScale continuous(ScaleKind kind, double lower, double upper, boolean reversed) {
    return new AxisScale(kind, lower, upper, reversed, null);
  }

  /**
   * @param slots for every category its place on the axis, or -1 when it is not shown
   * @param shown how many are shown
   */
  static AxisScale category(int[] slots, int shown, boolean reversed) {
    return new AxisScale(ScaleKind.CATEGORY, -0.5, shown - 0.5, reversed, slots.clone());
  }

  ScaleKind kind() {
    return kind;
  }

  double lower() {
    return lower;
  }

  double upper() {
    return upper;
  }

  boolean isCategory() {
    return kind == ScaleKind.CATEGORY;
  }

  boolean shows(int category) {
    return category >= 0 && category < slots.length && slots[category] >= 0;
  }

  double unit(double value) {
    double unit = switch (kind) {
      case LOG -> value <= 0 ? Double.NEGATIVE_INFINITY : (Math.log10(value) - from) / span;
      case CATEGORY -> (place(value) - from) / span;
      default -> (value - from) / span;
    };
    return reversed ? 1 - unit : unit;
  }

  private double place(double value) {
    int category = (int) Math.max(0, Math.min(slots.length - 1, Math.round(value)));
    return slots[category] + value - category;
  }

  double value(double unit) {
    double part = reversed ? 1 - unit : unit;
    double value = from + part * span;
    return kind == ScaleKind.LOG ? Math.pow(10, value) : value;
  }
}
