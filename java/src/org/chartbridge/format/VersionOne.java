// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Words;
import org.chartbridge.xml.XmlComment;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;

/**
 * Turns a tree of version 1 into one of version 2. Every new element stands at the place of the old
 * one, so that later messages point into the document that the person has. One use, one thread.
 */
final class VersionOne {
  /** The parts of a version 1 chart, in the order that it demands. */
  private static final List<String> PARTS =
      List.of("title", "subtitle", "footnote", "field", "layer", "panels", "style");

  private static final List<String> REPEATED = List.of("field", "layer");
  private static final List<String> CHANNELS = List.of("x", "y", "color", "size", "label");
  private static final List<String> SUMMARIES =
      List.of("field", "count", "sum", "mean", "median", "min", "max");
  private static final Pattern SIZE = Pattern.compile("([0-9]{1,9})x([0-9]{1,9})");
  private static final double OPACITY_STEPS = 1e12;

  private static final Map<String, String> KINDS =
      words("numeric", "number", "nominal", "category", "date", "time");
  private static final Map<String, String> LAYERS =
      words("bar", "bar", "line", "line", "area", "area", "point", "point", "histogram",
          "histogram", "boxplot", "box", "pie", "pie", "heatmap", "heatmap");
  private static final Map<String, String> MODES = words(
      "clustered", "grouped", "stacked", "stacked", "percent", "filled", "overlay", "overlaid");
  private static final Map<String, String> DIRECTIONS =
      words("forward", "false", "backward", "true");
  private static final Map<String, String> YES_NO = words("yes", "true", "no", "false");
  private static final Map<String, String> FREE =
      words("none", "", "x", "x", "y", "y", "both", "xy");

  private final XmlElement old;
  private final Map<String, XmlElement> parts = new HashMap<>();
  private final Map<String, List<XmlComment>> commentsBefore = new HashMap<>();
  private final List<XmlComment> comments = new ArrayList<>();

  private VersionOne(XmlElement old) {
    this.old = old;
  }

  /**
   * @throws org.chartbridge.chart.ChartException when it is not as version 1 wants it
   */
  static XmlElement upgrade(XmlElement root) {
    return new VersionOne(root).chart();
  }

  private static Map<String, String> words(String... pairs) {
    Map<String, String> words = new LinkedHashMap<>();
    for (int i = 0; i < pairs.length; i += 2) {
      words.put(pairs[i], pairs[i + 1]);
    }
    return words;
  }

  private static XmlElement renamed(XmlElement element, String name) {
    return element.renamed(ChartVersion.V2.namespace, name);
  }

  private XmlElement chart() {
    XmlElement chart = renamed(old, "chart");
    AttributeReader in = new AttributeReader(old);
    size(in, chart);
    XmlElement axes = renamed(old, "axes");
    axis(in, axes, "x");
    axis(in, axes, "y");
    in.finish();
    checkOrder(in);
    readParts();
    chart.with("style",
        parts.containsKey("style-name") ? parts.get("style-name").attribute("value") : null);
    if (!axes.content().isEmpty()) {
      parts.put("axes", axes);
    }
    for (String name :
        List.of("titles", "columns", "axes", "elements", "legend", "facet", "palette")) {
      commentsBefore.getOrDefault(name, List.of()).forEach(chart::with);
      chart.with(parts.get(name));
    }
    comments.forEach(chart::with);
    return chart;
  }

  private void size(AttributeReader in, XmlElement chart) {
    String size = in.text("size");
    if (size == null) {
      return;
    }
    Matcher matcher = SIZE.matcher(size.strip());
    if (!matcher.matches()) {
      throw in.unexpected("size", size, "width and height such as 800x600");
    }
    chart.with("width", matcher.group(1)).with("height", matcher.group(2));
  }

  private void axis(AttributeReader in, XmlElement axes, String name) {
    XmlElement axis = renamed(old, name);
    ScaleKind scale = in.choice(name + "-scale", ScaleKind.class, null);
    axis.with("scale", scale == null ? null : Words.of(scale));
    axis.with("title", in.text(name + "-title"));
    Double from = in.limit(name + "-from");
    Double to = in.limit(name + "-to");
    axis.with("min", from == null ? null : in.text(name + "-from").strip());
    axis.with("max", to == null ? null : in.text(name + "-to").strip());
    axis.with("reversed", in.translated(name + "-direction", DIRECTIONS));
    axis.with("grid", in.translated(name + "-grid", YES_NO));
    axis.with("format", in.text(name + "-format"));
    axes.with(axis.attributes().isEmpty() ? null : axis);
  }

  private void checkOrder(AttributeReader in) {
    String before = PARTS.get(0);
    for (XmlElement child : in.children(PARTS, true)) {
      int step = PARTS.indexOf(child.name()) - PARTS.indexOf(before);
      if (step < 0) {
        throw child.error(
            "<" + child.name() + "> stands after <" + before + ">; expected before it");
      }
      before = child.name();
    }
  }

  private void readParts() {
    Map<String, XmlElement> seen = new HashMap<>();
    for (XmlNode node : old.content()) {
      if (node instanceof XmlComment comment) {
        comments.add(comment);
      } else if (node instanceof XmlElement child) {
        if (seen.put(child.name(), child) != null && !REPEATED.contains(child.name())) {
          throw child.error("<chart> has more than one <" + child.name() + ">");
        }
        readPart(child);
      }
    }
    if (!seen.containsKey("layer")) {
      throw old.error("<chart> needs a <layer>");
    }
  }

  private void readPart(XmlElement child) {
    switch (child.name()) {
      case "title", "subtitle" -> title(child, child.name());
      case "footnote" -> title(child, "caption");
      case "field" -> add("columns", child, field(child));
      case "layer" -> add("elements", child, layer(child));
      case "panels" -> put("facet", panels(child));
      default -> style(child);
    }
  }

  /** Adds an element to a group; comments in front of it come along. */
  private void add(String group, XmlElement place, XmlElement element) {
    XmlElement parent = group(group, place);
    moveComments(parent);
    parent.with(element);
  }

  /**
   * A group stands where its first element stood; comments in front of that stand in front of the
   * group.
   */
  private XmlElement group(String name, XmlElement place) {
    if (!parts.containsKey(name)) {
      put(name, renamed(place, name));
    }
    return parts.get(name);
  }

  private void put(String name, XmlElement element) {
    commentsBefore.put(name, List.copyOf(comments));
    comments.clear();
    parts.put(name, element);
  }

  private void moveComments(XmlElement target) {
    comments.forEach(target::with);
    comments.clear();
  }

  private static void copyComments(XmlElement from, XmlElement to) {
    for (XmlNode node : from.content()) {
      if (node instanceof XmlComment comment) {
        to.with(comment);
      }
    }
  }

  private static String collapsedText(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    in.finish();
    return in.textContent().strip().replaceAll("\\s+", " ");
  }

  private void title(XmlElement element, String attribute) {
    XmlElement titles = group("titles", element);
    moveComments(titles);
    copyComments(element, titles);
    titles.with(attribute, collapsedText(element));
  }

  private XmlElement field(XmlElement field) {
    XmlElement column = renamed(field, "column");
    AttributeReader in = new AttributeReader(field);
    column.with("name", in.name("name"));
    String kind = in.translated("type", KINDS);
    if (kind == null) {
      throw in.missing("type");
    }
    column.with("kind", kind)
        .with("label", in.text("caption"))
        .with("pattern", in.text("date-format"));
    in.finish();
    copyComments(field, column);
    for (XmlElement value : in.children(List.of("value"), true)) {
      column.with(renamed(value, "category").with("value", collapsedText(value)));
    }
    return column;
  }

  private XmlElement layer(XmlElement layer) {
    AttributeReader in = new AttributeReader(layer);
    String kind = in.translated("type", LAYERS);
    if (kind == null) {
      throw in.missing("type");
    }
    XmlElement element = renamed(layer, kind);
    element.with("arrangement", in.translated("mode", MODES));
    Integer bins = in.whole("bins");
    element.with("bins", bins == null ? null : bins.toString());
    element.with("fill", in.text("color"));
    opacity(in, element);
    in.finish();
    copyComments(layer, element);
    for (XmlElement channel : in.children(CHANNELS, false)) {
      element.with(channel(channel));
    }
    return element;
  }

  private static void opacity(AttributeReader in, XmlElement element) {
    double transparency = in.number("transparency", Double.NaN);
    if (Double.isNaN(transparency)) {
      return;
    }
    if (transparency < 0 || transparency > 1) {
      throw in.unexpected("transparency", in.text("transparency"), "0 to 1");
    }
    double opacity = Math.rint((1 - transparency) * OPACITY_STEPS) / OPACITY_STEPS;
    element.with("opacity", AxisLimit.numberText(opacity));
  }

  /**
   * What was an element of its own, say {@code <sum field="a"/>}, is the attribute {@code
   * aggregate} now.
   */
  private static XmlElement channel(XmlElement channel) {
    AttributeReader outer = new AttributeReader(channel);
    outer.finish();
    List<XmlElement> summaries = outer.children(SUMMARIES, true);
    if (summaries.size() != 1) {
      String found = "<" + channel.name() + "> holds " + summaries.size() + " elements";
      throw channel.error(found + "; expected one of " + String.join(", ", SUMMARIES));
    }
    XmlElement summary = summaries.get(0);
    XmlElement element = renamed(summary, channel.name());
    AttributeReader in = new AttributeReader(summary);
    in.children(List.of(), false);
    boolean plain = summary.name().equals("field");
    boolean bareCount = summary.name().equals("count") && summary.attribute("field") == null;
    String column = plain ? in.name("name") : bareCount ? null : in.name("field");
    in.text(plain ? "name" : "field");
    in.finish();
    copyComments(channel, element);
    copyComments(summary, element);
    return element.with("column", column).with("aggregate", plain ? null : summary.name());
  }

  private XmlElement panels(XmlElement panels) {
    AttributeReader in = new AttributeReader(panels);
    in.children(List.of(), false);
    XmlElement facet = renamed(panels, "facet").with("column", in.name("by"));
    Integer perRow = in.whole("per-row");
    facet.with("columns", perRow == null ? null : perRow.toString());
    String free = in.translated("free", FREE);
    facet.with("shared-x", free != null && free.contains("x") ? "false" : null);
    facet.with("shared-y", free != null && free.contains("y") ? "false" : null);
    in.finish();
    copyComments(panels, facet);
    return facet;
  }

  private void style(XmlElement style) {
    AttributeReader in = new AttributeReader(style);
    String name = in.text("name");
    in.finish();
    if (name != null) {
      parts.put("style-name", renamed(style, "style").with("value", name));
    }
    copyStyleComments(style);
    for (XmlElement child : in.children(List.of("colors", "legend"), false)) {
      if (child.name().equals("legend")) {
        legend(child);
      } else {
        colors(child);
      }
    }
  }

  private void copyStyleComments(XmlElement style) {
    for (XmlNode node : style.content()) {
      if (node instanceof XmlComment comment) {
        comments.add(comment);
      }
    }
  }

  private void legend(XmlElement legend) {
    AttributeReader in = new AttributeReader(legend);
    in.children(List.of(), false);
    LegendPosition position = in.choice("position", LegendPosition.class, null);
    XmlElement element = renamed(legend, "legend");
    element.with("position", position == null ? null : Words.of(position));
    element.with("title", in.text("title"));
    in.finish();
    copyComments(legend, element);
    parts.put("legend", element);
  }

  private void colors(XmlElement colors) {
    XmlElement palette = renamed(colors, "palette");
    copyComments(colors, palette);
    String text = collapsedText(colors);
    for (String color : text.isEmpty() ? new String[0] : text.split(" ")) {
      palette.with(renamed(colors, "color").with("value", color));
    }
    parts.put("palette", palette);
  }
}
