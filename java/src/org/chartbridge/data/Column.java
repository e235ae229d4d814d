// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.List;
import org.chartbridge.chart.ColumnKind;

/**
 * One column of a table, stored compactly: numbers and times as doubles, categories as indices
 * into their distinct texts.
 */
public interface Column {
  String name();

  ColumnKind kind();

  int size();

  boolean isMissing(int row);

  /**
   * The number, or the time in milliseconds since 1970-01-01T00:00Z; NaN when missing. Only for
   * NUMBER and TIME.
   */
  double number(int row);

  /** The index into {@link #categories()}, or -1 when missing. Only for CATEGORY. */
  int category(int row);

  /** The distinct texts in the order to show them. Only for CATEGORY. */
  List<String> categories();

  /** The value as a text for labels and tooltips; empty when missing. */
  String text(int row);
}
