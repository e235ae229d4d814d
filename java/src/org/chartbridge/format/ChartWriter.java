// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.List;
import java.util.function.Predicate;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.Problem;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;
import org.chartbridge.chart.Words;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlText;
import org.chartbridge.xml.XmlWriter;

/**
 * Writes charts as chart XML of the current version, in a canonical form: equal charts give equal
 * bytes.
 */
public final class ChartWriter {
  private static final String NAMESPACE = ChartVersion.CURRENT.namespace;

  /** Whether what stands at a path of the chart is written even when it is the default. */
  private final Predicate<String> said;

  ChartWriter(Predicate<String> said) {
    this.said = said;
  }

  /**
   * The document of a chart, in UTF-8. {@link ChartReader} reads it back as an equal chart. What
   * has its default value is left out, but for the size.
   *
   * @throws ChartException when the chart makes no sense, so that no reader would take the document
   */
  public static byte[] write(Chart chart) {
    return new ChartWriter(path -> path.startsWith("size.")).document(chart);
  }

  /** The document of a chart, with defaults where something is said about them. */
  byte[] document(Chart chart) {
    for (Problem problem : ChartRules.check(chart)) {
      throw new ChartException(problem.path() + ": " + problem.message());
    }
    XmlElement root = element("chart");
    root.with("width", size("size.width", chart.size().width(), ChartSize.DEFAULT.width()));
    root.with("height", size("size.height", chart.size().height(), ChartSize.DEFAULT.height()));
    root.with("style", chart.style()).with("template", chart.template());
    root.with(titles(chart.titles())).with(columns(chart.columns())).with(axes(chart));
    XmlElement elements = element("elements");
    for (int i = 0; i < chart.elements().size(); i++) {
      elements.with(element("elements[" + i + "]", chart.elements().get(i)));
    }
    root.with(elements).with(legend(chart.legend())).with(facet(chart.facet()));
    root.with(values("palette", "color", chart.palette()));
    return XmlWriter.write(root.with(data(chart.data())));
  }

  private String size(String path, int pixels, int otherwise) {
    return pixels != otherwise || said.test(path) ? Integer.toString(pixels) : null;
  }

  private static XmlElement element(String name) {
    return new XmlElement(NAMESPACE, name);
  }

  /** The first record begins in a line of its own, where a reader of the document looks for it. */
  private static XmlElement data(String csv) {
    return csv == null ? null : element("data").with(new XmlText("\n" + csv));
  }

  private static XmlElement titles(Titles titles) {
    if (titles.equals(Titles.NONE)) {
      return null;
    }
    XmlElement element = element("titles").with("title", titles.title());
    return element.with("subtitle", titles.subtitle()).with("caption", titles.caption());
  }

  private static XmlElement columns(List<ColumnDeclaration> columns) {
    if (columns.isEmpty()) {
      return null;
    }
    XmlElement element = element("columns");
    for (ColumnDeclaration column : columns) {
      XmlElement child =
          element("column").with("name", column.name()).with("kind", Words.of(column.kind()));
      child.with("label", column.label()).with("pattern", column.pattern());
      addValues(child, "category", column.order());
      element.with(child);
    }
    return element;
  }

  private XmlElement axes(Chart chart) {
    XmlElement x = axis("x", chart.x());
    XmlElement y = axis("y", chart.y());
    return x == null && y == null ? null : element("axes").with(x).with(y);
  }

  private XmlElement axis(String name, Axis axis) {
    boolean saysScale = axis.scale() != ScaleKind.AUTO || said.test(name + ".scale");
    if (axis.equals(Axis.DEFAULT) && !saysScale) {
      return null;
    }
    XmlElement element = element(name);
    element.with("scale", saysScale ? Words.of(axis.scale()) : null);
    element.with("title", axis.title());
    element.with("min", axis.min() == null ? null : AxisLimit.text(axis.min(), axis.scale()));
    element.with("max", axis.max() == null ? null : AxisLimit.text(axis.max(), axis.scale()));
    element.with("reversed", axis.reversed() ? "true" : null);
    element.with("grid", axis.grid() ? null : "false");
    return element.with("format", axis.format());
  }

  private XmlElement element(String path, Element element) {
    XmlElement xml = element(Words.of(element.kind()));
    Arrangement arrangement = element.arrangement();
    boolean isDefault = arrangement == Arrangement.defaultOf(element.kind());
    if (arrangement != null && (!isDefault || said.test(path + ".arrangement"))) {
      xml.with("arrangement", Words.of(arrangement));
    }
    xml.with("bins", element.bins() == null ? null : element.bins().toString());
    xml.with("fill", element.fill());
    boolean saysOpacity = element.opacity() != 1 || said.test(path + ".opacity");
    xml.with("opacity", saysOpacity ? AxisLimit.numberText(element.opacity()) : null);
    for (String name : ChannelRules.NAMES) {
      xml.with(channel(name, ChannelRules.channel(element, name)));
    }
    element.ownBins().forEach(bin -> xml.with(bin(bin)));
    return xml;
  }

  private static XmlElement bin(Bin bin) {
    XmlElement element = element("bin").with("from", AxisLimit.numberText(bin.from()));
    element.with("to", AxisLimit.numberText(bin.to()));
    return element.with("value", AxisLimit.numberText(bin.value()));
  }

  private static XmlElement channel(String name, Channel channel) {
    if (channel == null) {
      return null;
    }
    boolean sums = channel.aggregate() != Aggregate.NONE;
    XmlElement element = element(name).with("column", channel.column());
    return element.with("aggregate", sums ? Words.of(channel.aggregate()) : null);
  }

  private static XmlElement legend(Legend legend) {
    if (legend.equals(Legend.DEFAULT)) {
      return null;
    }
    XmlElement element = element("legend");
    element.with("position", legend.position() == null ? null : Words.of(legend.position()));
    return element.with("title", legend.title());
  }

  private static XmlElement facet(Facet facet) {
    if (facet == null) {
      return null;
    }
    XmlElement element = element("facet").with("column", facet.column());
    element.with("columns", facet.columns() == null ? null : facet.columns().toString());
    element.with("shared-x", facet.sharedX() ? null : "false");
    return element.with("shared-y", facet.sharedY() ? null : "false");
  }

  private static XmlElement values(String name, String childName, List<String> values) {
    return values.isEmpty() ? null : addValues(element(name), childName, values);
  }

  private static XmlElement addValues(XmlElement element, String childName, List<String> values) {
    values.forEach(value -> element.with(element(childName).with("value", value)));
    return element;
  }
}
