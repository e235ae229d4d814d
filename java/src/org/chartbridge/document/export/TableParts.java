// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.function.Function;
import java.util.function.ToDoubleFunction;
import org.chartbridge.document.model.Table;

/**
 * Tables that are too wide, in parts below each other. Each part begins with the columns that name
 * the rows.
 */
public final class TableParts {
  private final Table table;
  private final double[] widths;
  private final ToDoubleFunction<Table> width;
  private final double available;
  private final int keys;

  private TableParts(
      Table table, double[] widths, ToDoubleFunction<Table> width, double available) {
    this.table = table;
    this.widths = widths;
    this.width = width;
    this.available = available;
    keys = keys(table);
  }

  /**
   * The parts from left to right; null when there is no way to make all of them narrow enough.
   *
   * @param columns the widths of the columns at least, with their borders
   */
  public static List<Table> of(
      Table table, Function<Table, double[]> columns, double available) {
    ToDoubleFunction<Table> width = part -> Arrays.stream(columns.apply(part)).sum();
    return new TableParts(table, columns.apply(table), width, available).split();
  }

  /** The columns in front that hold only names of rows, at least the first one. */
  private static int keys(Table table) {
    int keys = 1;
    while (keys < table.columns().size() - 1 && isKey(table, keys)) {
      keys++;
    }
    return keys;
  }

  private static boolean isKey(Table table, int column) {
    for (int row = table.headerRows(); row < table.rows().size(); row++) {
      for (Table.Cell cell : table.rows().get(row)) {
        boolean covers =
            cell.column() <= column && column < cell.column() + cell.columnSpan();
        if (covers && !cell.header()) {
          return false;
        }
      }
    }
    return true;
  }

  private List<Table> split() {
    double left = available;
    for (int i = 0; i < keys; i++) {
      left -= widths[i];
    }
    List<Table> parts = new ArrayList<>();
    int from = keys;
    while (from < widths.length) {
      int end = from;
      double used = 0;
      while (end < widths.length && used + widths[end] <= left) {
        used += widths[end++];
      }
      Table part = end == from ? null : fitting(from, betweenGroups(from, end));
      if (part == null) {
        return null;
      }
      parts.add(part);
      from += part.columns().size() - keys;
    }
    return parts.size() < 2 ? null : parts;
  }

  /** The part with all columns up to an end, or as many as fit; null when not even one does. */
  private Table fitting(int from, int end) {
    // A cell that loses some of its columns needs more of those that it has left.
    for (int last = end; last > from; last--) {
      Table part = part(from, last);
      if (width.applyAsDouble(part) <= available) {
        return part;
      }
    }
    return null;
  }

  /** The last end up to that one which no cell over several columns crosses; else that one. */
  private int betweenGroups(int from, int end) {
    if (end == widths.length) {
      return end;
    }
    for (int candidate = end; candidate > from; candidate--) {
      if (!isCrossed(candidate)) {
        return candidate;
      }
    }
    return end;
  }

  private boolean isCrossed(int column) {
    for (List<Table.Cell> row : table.rows()) {
      for (Table.Cell cell : row) {
        if (cell.column() < column && column < cell.column() + cell.columnSpan()) {
          return true;
        }
      }
    }
    return false;
  }

  /** The key columns and those of a range. A cell that reaches into it is in it with that reach. */
  private Table part(int from, int end) {
    List<Table.Column> columns = new ArrayList<>();
    for (int i = 0; i < end; i++) {
      if (i < keys || i >= from) {
        // Shares of the whole table say nothing about its parts.
        columns.add(new Table.Column(table.columns().get(i).alignment(), 0));
      }
    }
    List<List<Table.Cell>> rows = new ArrayList<>();
    for (List<Table.Cell> row : table.rows()) {
      List<Table.Cell> cells = new ArrayList<>();
      for (Table.Cell cell : row) {
        int last = cell.column() + cell.columnSpan();
        int inKeys = Math.max(0, Math.min(last, keys) - cell.column());
        int inRange = Math.max(0, Math.min(last, end) - Math.max(cell.column(), from));
        if (inKeys + inRange > 0) {
          int column = inKeys > 0 ? cell.column() : keys + Math.max(cell.column(), from) - from;
          cells.add(new Table.Cell(cell.row(), column, cell.rowSpan(), inKeys + inRange,
              cell.alignment(), cell.header(), cell.text()));
        }
      }
      rows.add(cells);
    }
    return new Table(table.caption(), columns, table.headerRows(), rows);
  }

  /** What stands above a part: the caption with the number of the part and of all parts. */
  public static String caption(Table table, int part, int parts) {
    String number = "(" + (part + 1) + "/" + parts + ")";
    if (parts == 1) {
      return table.caption();
    }
    return table.caption() == null ? number : table.caption() + " " + number;
  }
}
