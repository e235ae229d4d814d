// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/** Reads style documents (docs/chart-style.xsd). */
final class StyleReader {
  static final String NAMESPACE = "urn:chartbridge:style:1";
  private static final int MAX_BYTES = 1 << 20;
  private static final int MAX_COLORS = 100;

  private Style.Builder style;

  private StyleReader(Style base) {
    style = new Style.Builder(base);
  }

  static Style read(byte[] xml, Style base) {
    if (xml.length > MAX_BYTES) {
      throw new ChartException("Style document: it is larger than " + MAX_BYTES + " bytes.");
    }
    try {
      return new StyleReader(base).document(SafeXml.parse(xml));
    } catch (ChartException e) {
      String text = e.getMessage();
      throw new ChartException("Style document: " + text + (text.endsWith(".") ? "" : "."), e);
    }
  }

  private Style document(XmlElement root) {
    if (!root.name().equals("style") || !root.namespace().equals(NAMESPACE)) {
      throw root.error(
          "found <" + root.name() + ">, expected <style xmlns=\"" + NAMESPACE + "\">");
    }
    allow(root, "base", "name");
    String base = root.attribute("base");
    if (base != null) {
      style = new Style.Builder(named(root, base));
    }
    String name = root.attribute("name");
    if (name != null) {
      style.name = name;
    }
    checkText(root);
    root.children().forEach(this::setting);
    return style.build();
  }

  private static void checkText(XmlElement element) {
    if (!element.text().isBlank()) {
      throw element.error("found text in <" + element.name() + ">, expected elements only");
    }
  }

  private static Style named(XmlElement root, String base) {
    try {
      return Style.named(base);
    } catch (ChartException e) {
      throw root.error("base", e.getMessage());
    }
  }

  private void setting(XmlElement element) {
    switch (element.name()) {
      case "font" -> font(element);
      case "sizes" -> sizes(element);
      case "colors" -> colors(element);
      case "grid" -> grid(element);
      case "axes" -> axes(element);
      case "marks" -> marks(element);
      case "palette" -> style.palette = colorList(element, 1);
      case "sequential" -> style.sequential = colorList(element, 2);
      default -> throw element.error("found <" + element.name()
          + ">, expected one of font, sizes, colors, grid, axes, marks, palette, sequential");
    }
  }

  private void font(XmlElement element) {
    allow(element, "family");
    String family = element.attribute("family");
    if (family == null || family.isBlank()) {
      throw element.error("<font> needs the attribute family, the name of a font family");
    }
    style.fontFamily = family.trim();
    end(element);
  }

  private void sizes(XmlElement element) {
    allow(element, "title", "subtitle", "heading", "axis-title", "ticks", "legend", "labels",
        "caption");
    style.titleSize = size(element, "title", style.titleSize);
    style.subtitleSize = size(element, "subtitle", style.subtitleSize);
    style.headingSize = size(element, "heading", style.headingSize);
    style.axisTitleSize = size(element, "axis-title", style.axisTitleSize);
    style.tickSize = size(element, "ticks", style.tickSize);
    style.legendSize = size(element, "legend", style.legendSize);
    style.labelSize = size(element, "labels", style.labelSize);
    style.captionSize = size(element, "caption", style.captionSize);
    end(element);
  }

  private static double size(XmlElement element, String attribute, double otherwise) {
    return number(element, attribute, otherwise, 4, 200);
  }

  private void colors(XmlElement element) {
    allow(element, "background", "plot", "text", "muted");
    style.background = color(element, "background", style.background);
    style.plotBackground = color(element, "plot", style.plotBackground);
    style.text = color(element, "text", style.text);
    style.mutedText = color(element, "muted", style.mutedText);
    end(element);
  }

  private void grid(XmlElement element) {
    allow(element, "color", "width");
    style.gridColor = color(element, "color", style.gridColor);
    style.gridWidth = number(element, "width", style.gridWidth, 0, 20);
    end(element);
  }

  private void axes(XmlElement element) {
    allow(element, "color", "width");
    style.axisColor = color(element, "color", style.axisColor);
    style.axisWidth = number(element, "width", style.axisWidth, 0, 20);
    end(element);
  }

  private void marks(XmlElement element) {
    allow(element, "line-width", "marker-size", "patterns", "shapes");
    style.lineWidth = number(element, "line-width", style.lineWidth, 0.1, 50);
    style.markerSize = number(element, "marker-size", style.markerSize, 1, 100);
    style.patterns = flag(element, "patterns", style.patterns);
    style.shapes = flag(element, "shapes", style.shapes);
    end(element);
  }

  private static List<Color> colorList(XmlElement element, int least) {
    allow(element);
    checkText(element);
    List<Color> colors = new ArrayList<>();
    for (XmlElement child : element.children()) {
      if (!child.name().equals("color")) {
        throw child.error(
            "found <" + child.name() + "> in <" + element.name() + ">, expected <color>");
      }
      allow(child, "value");
      if (child.attribute("value") == null) {
        throw child.error("<color> needs the attribute value, a colour as #rrggbb");
      }
      colors.add(color(child, "value", null));
      end(child);
    }
    if (colors.size() < least || colors.size() > MAX_COLORS) {
      throw element.error("<" + element.name() + "> has " + colors.size() + " colours, expected "
          + least + " to " + MAX_COLORS);
    }
    return colors;
  }

  private static void end(XmlElement element) {
    checkText(element);
    if (!element.children().isEmpty()) {
      XmlElement child = element.children().get(0);
      throw child.error("found <" + child.name() + "> in <" + element.name()
          + ">, where no element is allowed");
    }
  }

  private static void allow(XmlElement element, String... names) {
    if (!element.namespace().equals(NAMESPACE)) {
      throw element.error("<" + element.name() + "> is not in the namespace " + NAMESPACE);
    }
    for (String name : element.attributes().keySet()) {
      boolean foreign = name.startsWith("{");
      if (!foreign && !List.of(names).contains(name)) {
        throw element.error(name,
            "<" + element.name() + "> has the attribute " + name + ", expected "
                + (names.length == 0 ? "none" : "one of " + String.join(", ", names)));
      }
    }
  }

  private static double number(
      XmlElement element, String attribute, double otherwise, double least, double most) {
    String text = element.attribute(attribute);
    if (text == null) {
      return otherwise;
    }
    boolean decimal = text.trim().matches("[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)");
    double value = decimal ? Double.parseDouble(text.trim()) : Double.NaN;
    if (!(value >= least && value <= most)) {
      throw wrong(element, attribute, text,
          "a number from " + Formats.plain(least) + " to " + Formats.plain(most));
    }
    return value;
  }

  private static boolean flag(XmlElement element, String attribute, boolean otherwise) {
    String text = element.attribute(attribute);
    if (text == null) {
      return otherwise;
    }
    return switch (text.trim()) {
      case "true", "1" -> true;
      case "false", "0" -> false;
      default -> throw wrong(element, attribute, text, "true or false");
    };
  }

  private static Color color(XmlElement element, String attribute, Color otherwise) {
    String text = element.attribute(attribute);
    if (text == null) {
      return otherwise;
    }
    if (!text.trim().matches("#[0-9a-fA-F]{6}")) {
      throw wrong(element, attribute, text, "a colour as #rrggbb");
    }
    return Style.color(text.trim());
  }

  private static ChartException wrong(
      XmlElement element, String attribute, String found, String expected) {
    return element.error(attribute, "attribute " + attribute + " of <" + element.name()
        + ">: found \"" + found + "\", expected " + expected);
  }
}
