// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.List;
import java.util.Objects;

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
 * @param places where its parts stand in the text that it was read from; {@link ChartPlaces#NONE}
 *     for a chart that was read from none
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
    String template,
    ChartPlaces places) {
  public Chart {
    Objects.requireNonNull(places);
    columns = List.copyOf(columns);
    elements = List.copyOf(elements);
    palette = List.copyOf(palette);
    data = OwnData.normalized(data);
  }

  /** A chart that was read from no text. */
  public Chart(ChartSize size, Titles titles, List<ColumnDeclaration> columns, Axis x, Axis y,
      List<Element> elements, Legend legend, Facet facet, String style, List<String> palette,
      String data, String template) {
    this(size, titles, columns, x, y, elements, legend, facet, style, palette, data, template,
        ChartPlaces.NONE);
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
        size, titles, columns, x, y, other, legend, facet, style, palette, data, template, places);
  }

  /** The same chart with other data of its own; null for none. */
  public Chart withData(String csv) {
    return new Chart(
        size, titles, columns, x, y, elements, legend, facet, style, palette, csv, template,
        places);
  }

  /** The same chart with another template; null for none. */
  public Chart withTemplate(String name) {
    return new Chart(
        size, titles, columns, x, y, elements, legend, facet, style, palette, data, name, places);
  }

  /** The same chart with parts that stand elsewhere. */
  public Chart withPlaces(ChartPlaces other) {
    return new Chart(
        size, titles, columns, x, y, elements, legend, facet, style, palette, data, template,
        other);
  }

  /**
   * A mistake in a part of this chart, with the part's place in front when it is known.
   *
   * @param path the part, as in {@link Problem#path}
   */
  public ChartException error(String path, String message) {
    return error(path, message, null);
  }

  /** The same with a cause, or null. */
  public ChartException error(String path, String message, Throwable cause) {
    TextPosition place = places.of(path);
    return new ChartException((place == null ? "" : place + ": ") + message, cause);
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
