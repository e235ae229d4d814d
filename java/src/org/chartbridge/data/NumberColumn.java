// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.List;
import org.chartbridge.chart.ColumnKind;

/** Numbers; NaN where one is missing. */
final class NumberColumn implements Column {
  /** Whole numbers up to here are shown without a point or an exponent. */
  private static final double MAX_WHOLE = 1e15;

  private final String name;
  private final double[] values;

  NumberColumn(String name, double[] values) {
    this.name = name;
    this.values = values;
  }

  @Override
  public String name() {
    return name;
  }

  @Override
  public ColumnKind kind() {
    return ColumnKind.NUMBER;
  }

  @Override
  public int size() {
    return values.length;
  }

  @Override
  public boolean isMissing(int row) {
    return Double.isNaN(values[row]);
  }

  @Override
  public double number(int row) {
    return values[row];
  }

  @Override
  public int category(int row) {
    throw new UnsupportedOperationException("column \"" + name + "\" holds numbers");
  }

  @Override
  public List<String> categories() {
    throw new UnsupportedOperationException("column \"" + name + "\" holds numbers");
  }

  @Override
  public String text(int row) {
    double value = values[row];
    if (Double.isNaN(value)) {
      return "";
    }
    if (value == Math.rint(value) && Math.abs(value) < MAX_WHOLE) {
      return Long.toString((long) value);
    }
    return Double.toString(value);
  }
}
