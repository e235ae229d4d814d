// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.List;
import org.chartbridge.chart.ChartException;

/** Data as named columns of the same length. */
public final class Table {
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
   * @throws ChartException when there is no such column; the message lists the columns that there are
   */
  public Column column(String name) {
    for (Column column : columns) {
      if (column.name().equals(name)) {
        return column;
      }
    }
    List<String> names = columns.stream().map(Column::name).toList();
    throw new ChartException(
        "The data has no column \"" + name + "\"; its columns are " + String.join(", ", names) + ".");
  }
}
