// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.Arrays;
import org.chartbridge.chart.ColumnKind;

/** Collects a column of times, in ISO 8601 or in a pattern of the column's own. */
final class TimeBuilder extends ColumnBuilder {
  private final String name;
  private final PatternTimeParser pattern;
  private final IsoTimeParser iso = new IsoTimeParser();
  private double[] millis = new double[INITIAL_CAPACITY];
  private int size;

  /**
   * @param pattern a date pattern, or null for ISO 8601
   */
  TimeBuilder(String name, String pattern) {
    this.name = name;
    this.pattern = pattern == null ? null : new PatternTimeParser(name, pattern);
  }

  @Override
  ColumnKind kind() {
    return ColumnKind.TIME;
  }

  @Override
  boolean add(byte[] bytes, int from, int to, boolean quoted) {
    double value = Double.NaN;
    if (from != to && !isNotAvailable(bytes, from, to)) {
      long parsed = pattern == null ? iso.parse(bytes, from, to) : pattern.parse(bytes, from, to);
      if (parsed == IsoTimeParser.NONE) {
        return false;
      }
      value = parsed;
    }
    if (size == millis.length) {
      millis = Arrays.copyOf(millis, grownCapacity(size));
    }
    millis[size++] = value;
    return true;
  }

  @Override
  String expectation() {
    String form = pattern == null ? "an ISO 8601 time such as 2024-03-31 or 2024-03-31T14:05:00Z"
                                  : "a time of the pattern " + pattern.text();
    return form + " is expected, or nothing or NA where it is missing";
  }

  @Override
  Column build() {
    return new TimeColumn(name, Arrays.copyOf(millis, size));
  }
}
