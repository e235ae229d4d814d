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
 * @param data the chart's own data as CSV, which are shown where nobody hands over other data; null
 *     for none. They begin with the first line that is not blank and end with a line end
 * @param template the name of the chart template to apply, or null
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
    List<String> palette,
    String data,
    String template) {
  public Chart {
    columns = List.copyOf(columns);
    elements = List.copyOf(elements);
    palette = List.copyOf(palette);
    data = OwnData.normalized(data);
  }

  /** A chart without data of its own and without a template. */
  public Chart(ChartSize size, Titles titles, List<ColumnDeclaration> columns, Axis x, Axis y,
      List<Element> elements, Legend legend, Facet facet, String style, List<String> palette) {
    this(size, titles, columns, x, y, elements, legend, facet, style, palette, null, null);
  }

  /** A chart of one element that says nothing more. */
  public static Chart of(Element element) {
    return new Chart(ChartSize.DEFAULT, Titles.NONE, List.of(), Axis.DEFAULT, Axis.DEFAULT,
        List.of(element), Legend.DEFAULT, null, null, List.of());
  }

  /** The same chart with other elements. */
  public Chart withElements(List<Element> other) {
    return new Chart(
        size, titles, columns, x, y, other, legend, facet, style, palette, data, template);
  }

  /** The same chart with other data of its own; null for none. */
  public Chart withData(String csv) {
    return new Chart(
        size, titles, columns, x, y, elements, legend, facet, style, palette, csv, template);
  }

  /** The same chart with another template; null for none. */
  public Chart withTemplate(String name) {
    return new Chart(
        size, titles, columns, x, y, elements, legend, facet, style, palette, data, name);
  }

  /** Whether some part of the chart shows data. */
  public boolean showsData() {
    return facet != null || elements.stream().anyMatch(element -> !element.hasOwnBins());
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
