// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;

/** Data as named columns of the same length. */
public final class Table {
  /** A message that lists more names than this is read by nobody. */
  private static final int MAX_NAMES = 30;

  private final List<Column> columns;
  private final int rowCount;

  public Table(List<Column> columns, int rowCount) {
    this.columns = List.copyOf(columns);
    this.rowCount = rowCount;
  }

  public int rowCount() {
    return rowCount;
  }

  public List<Column> columns() {
    return columns;
  }

  /**
   * @throws ChartException when there is no such column; the message lists the columns that there
   *     are
   */
  public Column column(String name) {
    for (Column column : columns) {
      if (column.name().equals(name)) {
        return column;
      }
    }
    throw missingColumn(name, columns.stream().map(Column::name).toList());
  }

  static MissingColumnException missingColumn(String name, List<String> names) {
    int shown = Math.min(names.size(), MAX_NAMES);
    String more = shown == names.size() ? "" : " and " + (names.size() - shown) + " more";
    String closest = Suggestions.closest(name, names);
    return new MissingColumnException(name, "The data has no column \"" + name
        + "\"; its columns are " + String.join(", ", names.subList(0, shown)) + more + "."
        + (closest == null ? "" : " Did you mean \"" + closest + "\"?"));
  }
}
