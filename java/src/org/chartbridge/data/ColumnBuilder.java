// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import org.chartbridge.chart.ColumnKind;

/** Collects the fields of one column. */
abstract class ColumnBuilder {
  static final int INITIAL_CAPACITY = 1024;

  abstract ColumnKind kind();

  /**
   * Adds the field that stands in {@code bytes}, which belongs to the caller.
   *
   * @return false when the field is no value of this kind; nothing is added then
   */
  abstract boolean add(byte[] bytes, int from, int to, boolean quoted);

  /** What a field of this column should look like, for messages. */
  abstract String expectation();

  abstract Column build();

  static boolean isNotAvailable(byte[] bytes, int from, int to) {
    return to - from == 2 && bytes[from] == 'N' && bytes[from + 1] == 'A';
  }

  static int grownCapacity(int capacity) {
    return capacity > Integer.MAX_VALUE / 2 ? Integer.MAX_VALUE - 8 : capacity * 2;
  }
}
