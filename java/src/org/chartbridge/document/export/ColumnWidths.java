// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.List;
import java.util.function.Function;
import java.util.function.ToDoubleFunction;
import org.chartbridge.document.model.Table;

/**
 * Shares the width of a table among its columns by what their texts need: none gets less than its
 * longest word where that is possible, and none more than its longest line.
 */
public final class ColumnWidths {
  private final Table table;
  private final Function<Table.Cell, List<String>> lines;
  private final ToDoubleFunction<String> measure;
  private final double gap;
  private final double[] least;
  private final double[] most;

  private ColumnWidths(Table table, Function<Table.Cell, List<String>> lines,
      ToDoubleFunction<String> measure, double gap) {
    this.table = table;
    this.lines = lines;
    this.measure = measure;
    this.gap = gap;
    least = new double[table.columns().size()];
    most = new double[table.columns().size()];
  }

  /**
   * @param lines the texts of a cell, each on a line of its own
   * @param measure the width of a text on one line
   * @param gap what a cell over several columns gains for each border that it crosses
   * @param available for all columns together
   */
  public static double[] of(Table table, Function<Table.Cell, List<String>> lines,
      ToDoubleFunction<String> measure, double gap, double available) {
    ColumnWidths widths = new ColumnWidths(table, lines, measure, gap);
    widths.needs(true);
    widths.needs(false);
    return widths.shared(available);
  }

  /** First what cells of one column need, then what those over several need beyond that. */
  private void needs(boolean single) {
    for (List<Table.Cell> row : table.rows()) {
      for (Table.Cell cell : row) {
        if (single == (cell.columnSpan() == 1)) {
          double room = gap * (cell.columnSpan() - 1);
          raise(least, cell, leastWidth(cell) - room);
          raise(most, cell, mostWidth(cell) - room);
        }
      }
    }
    for (int i = 0; i < most.length; i++) {
      most[i] = Math.max(most[i], least[i]);
    }
  }

  private double mostWidth(Table.Cell cell) {
    double width = 0;
    for (String line : lines.apply(cell)) {
      width = Math.max(width, measure.applyAsDouble(line));
    }
    return width;
  }

  private double leastWidth(Table.Cell cell) {
    double width = 0;
    for (String line : lines.apply(cell)) {
      for (String word : line.split(" ")) {
        width = Math.max(width, measure.applyAsDouble(word));
      }
    }
    return width;
  }

  private static void raise(double[] widths, Table.Cell cell, double needed) {
    double sum = 0;
    int end = cell.column() + cell.columnSpan();
    for (int i = cell.column(); i < end; i++) {
      sum += widths[i];
    }
    double missing = (needed - sum) / cell.columnSpan();
    for (int i = cell.column(); i < end && missing > 0; i++) {
      widths[i] += missing;
    }
  }

  private double[] shared(double available) {
    double[] widths = new double[most.length];
    double left = available;
    double leastLeft = 0;
    double mostLeft = 0;
    for (int i = 0; i < widths.length; i++) {
      double share = table.columns().get(i).width();
      if (share > 0) {
        widths[i] = available * share / 100;
        left -= widths[i];
      } else {
        leastLeft += least[i];
        mostLeft += most[i];
      }
    }
    boolean full = left < available;
    left = Math.max(left, available / 20);
    for (int i = 0; i < widths.length; i++) {
      if (table.columns().get(i).width() == 0) {
        double width = share(i, left, leastLeft, mostLeft);
        // With shares given, the table is as wide as it can be.
        widths[i] = full && mostLeft > 0 && mostLeft < left ? width * left / mostLeft : width;
      }
    }
    return fitted(widths, available, full);
  }

  private double share(int column, double left, double leastLeft, double mostLeft) {
    if (mostLeft <= left) {
      return most[column];
    }
    if (leastLeft >= left) {
      return least[column] * left / leastLeft;
    }
    double part = (left - leastLeft) / (mostLeft - leastLeft);
    return least[column] + part * (most[column] - least[column]);
  }

  /** Shares that do not add up to the whole are scaled. */
  private static double[] fitted(double[] widths, double available, boolean full) {
    double sum = 0;
    for (double width : widths) {
      sum += width;
    }
    double scale = sum > 0 && (full || sum > available) ? available / sum : 1;
    for (int i = 0; i < widths.length; i++) {
      widths[i] *= scale;
    }
    return widths;
  }
}
