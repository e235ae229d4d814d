// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.Arrays;
import org.chartbridge.chart.ColumnKind;

/** Collects a column of numbers. */
final class NumberBuilder extends ColumnBuilder {
  private final String name;
  private double[] values = new double[INITIAL_CAPACITY];
  private int size;

  NumberBuilder(String name) {
    this.name = name;
  }

  @Override
  ColumnKind kind() {
    return ColumnKind.NUMBER;
  }

  @Override
  boolean add(byte[] bytes, int from, int to, boolean quoted) {
    double value = Double.NaN;
    if (from != to && !isNotAvailable(bytes, from, to)) {
      value = NumberParser.parse(bytes, from, to);
      if (Double.isNaN(value)) {
        return false;
      }
    }
    if (size == values.length) {
      values = Arrays.copyOf(values, grownCapacity(size));
    }
    values[size++] = value;
    return true;
  }

  @Override
  String expectation() {
    return "a number such as 12.5 or 1e-3 is expected, or nothing or NA where it is missing";
  }

  @Override
  Column build() {
    return new NumberColumn(name, Arrays.copyOf(values, size));
  }
}
