// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.Problem;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;
import org.chartbridge.chart.Words;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/** Reads chart XML of any known version. */
public final class ChartReader {
  /** The namespace of chart XML of the current version. */
  public static final String NAMESPACE = ChartVersion.CURRENT.namespace;

  private static final List<String> PARTS =
      List.of("titles", "columns", "axes", "elements", "legend", "facet", "palette", "data");
  private static final String BIN = "bin";

  private final ChartPlaces places = new ChartPlaces();
  private final Map<String, XmlElement> parts = new HashMap<>();

  private ChartReader() {}

  /**
   * Reads a chart.
   *
   * @param xml the document in the encoding of its byte order mark or XML declaration, else in
   *     UTF-8
   * @throws ChartException when the document is not well-formed, not a chart, or a chart that makes
   *     no sense; the message starts with line and column
   */
  public static Chart read(byte[] xml) {
    return read(SafeXml.parse(xml));
  }

  /**
   * Reads a chart from the tree of a document, which may stand in another notation.
   *
   * @throws ChartException as {@link #read(byte[])}; the position is that which the elements know
   */
  public static Chart read(XmlElement root) {
    ChartVersion version = ChartVersion.of(root);
    ChartException schemaError = version.schema.firstError(root);
    // The reader's own messages are for people; the schema's words are the last resort.
    Chart chart = readCurrent(version == ChartVersion.V1 ? VersionOne.upgrade(root) : root);
    if (schemaError != null) {
      throw schemaError;
    }
    return chart;
  }

  private static Chart readCurrent(XmlElement root) {
    ChartReader reader = new ChartReader();
    Chart chart = reader.chart(root);
    for (Problem problem : ChartRules.check(chart)) {
      throw chart.error(problem.path(), problem.message());
    }
    return chart;
  }

  private Chart chart(XmlElement root) {
    place("", root);
    for (XmlElement part : new AttributeReader(root).children(PARTS, false)) {
      parts.put(part.name(), part);
    }
    AttributeReader in = new AttributeReader(root);
    int width = in.whole("width", ChartSize.DEFAULT.width());
    int height = in.whole("height", ChartSize.DEFAULT.height());
    place("size.width", root, "width");
    place("size.height", root, "height");
    String style = in.text("style");
    place("style", root, "style");
    String template = in.text("template");
    place("template", root, "template");
    in.finish();
    if (!parts.containsKey("elements")) {
      throw root.error("<chart> needs <elements>");
    }
    return new Chart(new ChartSize(width, height), titles(), columns(), axis("x"), axis("y"),
        elements(), legend(), facet(), style, palette(), data(), template, places);
  }

  private String data() {
    XmlElement element = parts.get("data");
    if (element == null) {
      return null;
    }
    AttributeReader in = new AttributeReader(element);
    in.finish();
    place("data", element);
    return in.textContent();
  }

  private Titles titles() {
    XmlElement element = parts.get("titles");
    if (element == null) {
      return Titles.NONE;
    }
    AttributeReader in = empty(element);
    Titles titles = new Titles(in.text("title"), in.text("subtitle"), in.text("caption"));
    in.finish();
    place("titles", element);
    for (String name : List.of("title", "subtitle", "caption")) {
      place("titles." + name, element, name);
    }
    return titles;
  }

  private List<ColumnDeclaration> columns() {
    List<ColumnDeclaration> columns = new ArrayList<>();
    XmlElement element = parts.get("columns");
    if (element == null) {
      return columns;
    }
    AttributeReader in = new AttributeReader(element);
    in.finish();
    for (XmlElement child : in.children(List.of("column"), true)) {
      columns.add(column("columns[" + columns.size() + "]", child));
    }
    return columns;
  }

  private ColumnDeclaration column(String path, XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    String name = in.name("name");
    ColumnKind kind = in.choice("kind", ColumnKind.class, null);
    if (kind == null) {
      throw in.missing("kind");
    }
    String label = in.text("label");
    String pattern = in.text("pattern");
    in.finish();
    place(path, element);
    for (String attribute : List.of("name", "label", "pattern")) {
      place(path + "." + attribute, element, attribute);
    }
    return new ColumnDeclaration(name, kind, label, pattern, order(path, in));
  }

  private List<String> order(String path, AttributeReader column) {
    List<String> order = new ArrayList<>();
    for (XmlElement child : column.children(List.of("category"), true)) {
      place(path + ".order[" + order.size() + "]", child);
      place(path + ".order", child);
      order.add(value(child));
    }
    return order;
  }

  /** The one attribute of {@code <category>} and {@code <color>}, which may be empty. */
  private static String value(XmlElement element) {
    AttributeReader in = empty(element);
    String value = in.text("value");
    if (value == null) {
      throw in.missing("value");
    }
    in.finish();
    return value;
  }

  private Axis axis(String name) {
    XmlElement axes = parts.get("axes");
    if (axes == null) {
      return Axis.DEFAULT;
    }
    AttributeReader in = new AttributeReader(axes);
    in.finish();
    for (XmlElement child : in.children(List.of("x", "y"), false)) {
      if (child.name().equals(name)) {
        return axis(name, child);
      }
    }
    return Axis.DEFAULT;
  }

  private Axis axis(String path, XmlElement element) {
    AttributeReader in = empty(element);
    place(path, element);
    for (String attribute : List.of("title", "min", "max", "format")) {
      place(path + "." + attribute, element, attribute);
    }
    Axis axis =
        new Axis(
            in.choice("scale", ScaleKind.class, ScaleKind.AUTO),
            in.text("title"),
            in.limit("min"),
            in.limit("max"),
            in.flag("reversed", false),
            in.flag("grid", true),
            in.text("format"));
    in.finish();
    return axis;
  }

  private List<Element> elements() {
    XmlElement part = parts.get("elements");
    place("elements", part);
    AttributeReader in = new AttributeReader(part);
    in.finish();
    List<Element> elements = new ArrayList<>();
    for (XmlElement child : in.children(Words.all(ElementKind.class), true)) {
      elements.add(element("elements[" + elements.size() + "]", child));
    }
    return elements;
  }

  private Element element(String path, XmlElement element) {
    ElementKind kind = Words.find(ElementKind.class, element.name());
    if (kind == ElementKind.HISTOGRAM && element.child(BIN) != null) {
      return histogramOfBins(path, element);
    }
    AttributeReader in = new AttributeReader(element);
    placeLook(path, element);
    Arrangement arrangement = null;
    if (!Arrangement.of(kind).isEmpty()) {
      arrangement = in.choice("arrangement", Arrangement.class, Arrangement.of(kind), null);
    }
    Integer bins = kind == ElementKind.HISTOGRAM ? in.whole("bins") : null;
    String fill = kind == ElementKind.PIE || kind == ElementKind.HEATMAP ? null : in.text("fill");
    double opacity = in.number("opacity", 1);
    in.finish();
    Map<String, Channel> channels = new HashMap<>();
    for (XmlElement child : in.children(inside(kind), false)) {
      channels.put(child.name(), channel(path + "." + child.name(), child, summing(kind, child)));
    }
    return new Element(
        kind, channels.get("x"), channels.get("y"), channels.get("color"), channels.get("size"),
        channels.get("label"), arrangement, bins, fill, opacity);
  }

  private void placeLook(String path, XmlElement element) {
    place(path, element);
    for (String attribute : List.of("fill", "opacity", "bins", "arrangement")) {
      place(path + "." + attribute, element, attribute);
    }
  }

  /** What a message about a wrong element inside marks has to suggest. */
  private static List<String> inside(ElementKind kind) {
    List<String> names = new ArrayList<>(ChannelRules.allowed(kind));
    if (kind == ElementKind.HISTOGRAM) {
      names.add(BIN);
    }
    return names;
  }

  private Element histogramOfBins(String path, XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    placeLook(path, element);
    for (String attribute : List.of("bins", "arrangement")) {
      if (in.text(attribute) != null) {
        throw element.error(attribute, "a <histogram> that brings its bins has no " + attribute);
      }
    }
    String fill = in.text("fill");
    double opacity = in.number("opacity", 1);
    in.finish();
    List<Bin> bins = new ArrayList<>();
    for (XmlElement child : in.children(inside(ElementKind.HISTOGRAM), true)) {
      if (!child.name().equals(BIN)) {
        throw child.error(
            "a <histogram> that brings its bins has no channels, but found <" + child.name() + ">");
      }
      bins.add(bin(path + ".ownBins[" + bins.size() + "]", child));
    }
    return Element.histogram(bins, fill, opacity);
  }

  private Bin bin(String path, XmlElement element) {
    AttributeReader in = empty(element);
    place(path, element);
    Bin bin = new Bin(in.number("from"), in.number("to"), in.number("value"));
    in.finish();
    return bin;
  }

  private static boolean summing(ElementKind kind, XmlElement channel) {
    return ChannelRules.summing(kind).contains(channel.name());
  }

  private Channel channel(String path, XmlElement element, boolean summing) {
    AttributeReader in = empty(element);
    place(path, element);
    Aggregate aggregate = Aggregate.NONE;
    if (summing) {
      aggregate = in.choice("aggregate", Aggregate.class, Aggregate.NONE);
    }
    boolean needsColumn = aggregate != Aggregate.COUNT || in.text("column") != null;
    String column = needsColumn ? in.name("column") : null;
    in.finish();
    return new Channel(column, aggregate);
  }

  private Legend legend() {
    XmlElement element = parts.get("legend");
    if (element == null) {
      return Legend.DEFAULT;
    }
    AttributeReader in = empty(element);
    Legend legend = new Legend(in.choice("position", LegendPosition.class, null), in.text("title"));
    in.finish();
    place("legend", element);
    place("legend.title", element, "title");
    return legend;
  }

  private Facet facet() {
    XmlElement element = parts.get("facet");
    if (element == null) {
      return null;
    }
    AttributeReader in = empty(element);
    Facet facet = new Facet(in.name("column"), in.whole("columns"), in.flag("shared-x", true),
        in.flag("shared-y", true));
    in.finish();
    place("facet", element);
    place("facet.column", element, "column");
    place("facet.columns", element, "columns");
    return facet;
  }

  private List<String> palette() {
    List<String> palette = new ArrayList<>();
    XmlElement element = parts.get("palette");
    if (element == null) {
      return palette;
    }
    AttributeReader in = new AttributeReader(element);
    in.finish();
    for (XmlElement child : in.children(List.of("color"), true)) {
      place("palette[" + palette.size() + "]", child, "value");
      palette.add(value(child));
    }
    return palette;
  }

  /** A reader of an element that has attributes only. */
  private static AttributeReader empty(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    in.children(List.of(), false);
    return in;
  }

  private void place(String path, XmlElement element) {
    places.put(path, element::position);
  }

  private void place(String path, XmlElement element, String attribute) {
    places.put(path, () -> element.position(attribute));
  }
}
