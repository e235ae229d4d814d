// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.data.Column;

/**
 * The small multiples of a chart: which there are, and which rows each shows. Without a facet
 * there is one.
 */
final class Panels {
  private static final int MOST = 100;

  private final List<String> names;
  private final int[] rows;
  private final String label;

  private static final String PATH = "facet.column";

  private Panels(List<String> names, int[] rows, String label) {
    this.names = List.copyOf(names);
    this.rows = rows;
    this.label = label;
  }

  static Panels of(Plan plan) {
    Facet facet = plan.chart.facet();
    if (facet == null) {
      return new Panels(List.of(""), null, null);
    }
    Column column;
    try {
      column = plan.table.column(facet.column());
    } catch (ChartException e) {
      throw plan.chart.error(PATH, "Facet: " + e.getMessage(), e);
    }
    java.util.TreeMap<Double, String> found = new java.util.TreeMap<>();
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        double key = key(column, row);
        if (!found.containsKey(key)) {
          found.put(key, text(plan, column, row));
        }
      }
    }
    if (found.isEmpty()) {
      throw plan.chart.error(PATH, "Facet: column \"" + column.name()
          + "\" has no values; choose another column, or drop the facet.");
    }
    if (found.size() > MOST) {
      throw plan.chart.error(PATH, "Facet: column \"" + column.name() + "\" has " + found.size()
          + " different values, more than the " + MOST
          + " panels that fit a picture; choose a column "
          + "with fewer.");
    }
    List<Double> keys = List.copyOf(found.keySet());
    int[] rows = new int[column.size()];
    for (int row = 0; row < rows.length; row++) {
      rows[row] = column.isMissing(row)
          ? -1 : java.util.Collections.binarySearch(keys, key(column, row));
    }
    return new Panels(List.copyOf(found.values()), rows, plan.label(column));
  }

  private static double key(Column column, int row) {
    return column.kind() == ColumnKind.CATEGORY ? column.category(row) : column.number(row);
  }

  private static String text(Plan plan, Column column, int row) {
    if (column.kind() == ColumnKind.CATEGORY) {
      return plan.text(column.text(row));
    }
    return plan.format(
        org.chartbridge.chart.Channel.of(column.name()), column, column.number(row));
  }

  int count() {
    return names.size();
  }

  /** The panel's heading; empty without a facet. */
  String name(int panel) {
    return names.get(panel);
  }

  /** What the headings are values of; null without a facet. */
  String label() {
    return label;
  }

  /** The panel that shows a row, or -1 when the row belongs to none. */
  int of(int row) {
    return rows == null ? 0 : rows[row];
  }
}
