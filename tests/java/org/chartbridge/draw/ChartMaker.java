// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;

/** Builds charts for tests in a few words. */
final class ChartMaker {
  private ChartSize size = ChartSize.DEFAULT;
  private Titles titles = Titles.NONE;
  private Axis x = Axis.DEFAULT;
  private Axis y = Axis.DEFAULT;
  private Legend legend = Legend.DEFAULT;
  private Facet facet;
  private String style;
  private List<String> palette = List.of();
  private final List<Element> elements = new ArrayList<>();

  /** A channel from "column", "mean(column)" or "count"; null for none. */
  static Channel channel(String text) {
    if (text == null) {
      return null;
    }
    if (text.equals("count")) {
      return Channel.count();
    }
    int open = text.indexOf('(');
    if (open < 0) {
      return Channel.of(text);
    }
    return new Channel(text.substring(open + 1, text.length() - 1),
        Aggregate.valueOf(text.substring(0, open).toUpperCase(java.util.Locale.ROOT)));
  }

  ChartMaker add(ElementKind kind, String xText, String yText, String color) {
    return add(kind, xText, yText, color, null, null, null);
  }

  ChartMaker add(
      ElementKind kind, String xText, String yText, String color, Arrangement arrangement) {
    return add(kind, xText, yText, color, null, null, arrangement);
  }

  ChartMaker add(ElementKind kind, String xText, String yText, String color, String sizeText,
      String label, Arrangement arrangement) {
    elements.add(new Element(kind, channel(xText), channel(yText), channel(color),
        channel(sizeText), channel(label), arrangement, null, null, 1));
    return this;
  }

  ChartMaker bins(int bins) {
    Element e = elements.remove(elements.size() - 1);
    elements.add(new Element(e.kind(), e.x(), e.y(), e.color(), e.size(), e.label(),
        e.arrangement(), bins, e.fill(), e.opacity()));
    return this;
  }

  ChartMaker fill(String fill, double opacity) {
    Element e = elements.remove(elements.size() - 1);
    elements.add(new Element(e.kind(), e.x(), e.y(), e.color(), e.size(), e.label(),
        e.arrangement(), e.bins(), fill, opacity));
    return this;
  }

  ChartMaker size(int width, int height) {
    size = new ChartSize(width, height);
    return this;
  }

  ChartMaker titles(String title, String subtitle, String caption) {
    titles = new Titles(title, subtitle, caption);
    return this;
  }

  ChartMaker x(Axis axis) {
    x = axis;
    return this;
  }

  ChartMaker y(Axis axis) {
    y = axis;
    return this;
  }

  static Axis scale(ScaleKind kind) {
    return new Axis(kind, null, null, null, false, true, null);
  }

  static Axis limits(Double min, Double max) {
    return new Axis(ScaleKind.AUTO, null, min, max, false, true, null);
  }

  static Axis format(String format) {
    return new Axis(ScaleKind.AUTO, null, null, null, false, true, format);
  }

  static Axis reversed() {
    return new Axis(ScaleKind.AUTO, null, null, null, true, true, null);
  }

  ChartMaker legend(LegendPosition position, String title) {
    legend = new Legend(position, title);
    return this;
  }

  ChartMaker facet(String column, Integer columns, boolean sharedX, boolean sharedY) {
    facet = new Facet(column, columns, sharedX, sharedY);
    return this;
  }

  ChartMaker style(String name) {
    style = name;
    return this;
  }

  ChartMaker palette(String... colors) {
    palette = List.of(colors);
    return this;
  }

  Chart chart() {
    return new Chart(size, titles, List.of(), x, y, elements, legend, facet, style, palette);
  }
}
