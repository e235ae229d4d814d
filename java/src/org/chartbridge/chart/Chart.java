// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.List;

/**
 * A chart: what it shows of its data, and how.
 *
 * @param size its own size
 * @param titles the texts around the plot
 * @param columns what is said about data columns
 * @param x the horizontal axis
 * @param y the vertical axis
 * @param elements the layers, the first at the bottom; at least one
 * @param legend the legend
 * @param facet small multiples, or null for one plot
 * @param style the name of a built-in style, or null for the default
 * @param palette colours as {@code #rrggbb} that replace those of the style; empty for the style's
 *     own
 */
public record Chart(
    ChartSize size,
    Titles titles,
    List<ColumnDeclaration> columns,
    Axis x,
    Axis y,
    List<Element> elements,
    Legend legend,
    Facet facet,
    String style,
    List<String> palette) {
  public Chart {
    columns = List.copyOf(columns);
    elements = List.copyOf(elements);
    palette = List.copyOf(palette);
  }

  /** The declaration of a column, or null when the chart says nothing about it. */
  public ColumnDeclaration column(String name) {
    for (ColumnDeclaration column : columns) {
      if (column.name().equals(name)) {
        return column;
      }
    }
    return null;
  }

  /** The label shown for a column: the declared one, else its name. */
  public String label(String name) {
    ColumnDeclaration column = column(name);
    return column == null || column.label() == null ? name : column.label();
  }
}
