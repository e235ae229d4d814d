// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.List;
import java.util.function.ToDoubleFunction;
import org.chartbridge.document.model.Table;

/**
 * Shares the width of a table among its columns by what their texts need: none gets less than its
 * widest piece that stays whole, none less than its longest word where that is possible, and none
 * more than its longest line.
 */
public final class ColumnWidths {
  /** How wide the text of a cell is. */
  public interface Needs {
    /** Its widest piece that is not broken. */
    double piece(Table.Cell cell);

    /** Its longest word. */
    double word(Table.Cell cell);

    /** Its longest line. */
    double line(Table.Cell cell);
  }

  private final Table table;
  private final double[] least;
  private final double[] words;
  private final double[] most;

  private ColumnWidths(Table table, Needs needs, double gap) {
    this.table = table;
    least = columns(table, needs::piece, gap);
    words = columns(table, needs::word, gap);
    most = columns(table, needs::line, gap);
    for (int i = 0; i < most.length; i++) {
      words[i] = Math.max(words[i], least[i]);
      most[i] = Math.max(most[i], words[i]);
    }
  }

  /**
   * The widths, which add up to no more than what is available unless the widest pieces need more.
   *
   * @param gap what a cell over several columns gains for each border that it crosses
   * @param available for all columns together
   */
  public static double[] of(Table table, Needs needs, double gap, double available) {
    ColumnWidths widths = new ColumnWidths(table, needs, gap);
    return widths.lifted(widths.shared(available), available);
  }

  /** What each column needs for the widths of its cells. */
  public static double[] columns(Table table, ToDoubleFunction<Table.Cell> width, double gap) {
    double[] widths = new double[table.columns().size()];
    // First what cells of one column need, then what those over several need beyond that.
    for (boolean single : new boolean[] {true, false}) {
      for (List<Table.Cell> row : table.rows()) {
        for (Table.Cell cell : row) {
          if (single == (cell.columnSpan() == 1)) {
            raise(widths, cell, width.applyAsDouble(cell) - gap * (cell.columnSpan() - 1));
          }
        }
      }
    }
    return widths;
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
        leastLeft += words[i];
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
      return words[column] * left / leastLeft;
    }
    double part = (left - leastLeft) / (mostLeft - leastLeft);
    return words[column] + part * (most[column] - words[column]);
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

  /** Columns that are too narrow for their pieces take from those that have room to give. */
  private double[] lifted(double[] widths, double available) {
    double missing = 0;
    double spare = 0;
    double sum = 0;
    for (int i = 0; i < widths.length; i++) {
      missing += Math.max(0, least[i] - widths[i]);
      spare += Math.max(0, widths[i] - least[i]);
      sum += widths[i];
    }
    // What is still free is given away before anybody gives.
    double given = Math.max(0, missing - Math.max(0, available - sum));
    double part = spare > 0 ? Math.min(1, given / spare) : 0;
    for (int i = 0; i < widths.length; i++) {
      widths[i] = Math.max(least[i], widths[i] - part * Math.max(0, widths[i] - least[i]));
    }
    return widths;
  }
}
