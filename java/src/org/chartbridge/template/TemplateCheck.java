// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import java.util.regex.Pattern;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Words;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.format.SchemaCheck;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/**
 * Checks chart templates before they go to native code, which answers a wrong one with an empty
 * text only.
 */
final class TemplateCheck {
  static final String NAMESPACE = "urn:chartbridge:template:1";

  private static final SchemaCheck SCHEMA = new SchemaCheck("chart-template.xsd");
  private static final Pattern OTHER_VERSION = Pattern.compile("urn:chartbridge:template:([0-9]+)");
  private static final Pattern COLOR = Pattern.compile("#[0-9a-fA-F]{6}");
  private static final Set<ElementKind> FILLED = EnumSet.complementOf(
      EnumSet.of(ElementKind.PIE, ElementKind.HEATMAP));

  private TemplateCheck() {}

  /**
   * Checks a template.
   *
   * @param xml the document in the encoding of its byte order mark or XML declaration, else in
   *     UTF-8
   * @throws ChartException when it is no valid template; the message starts with line and column
   */
  static void check(byte[] xml) {
    XmlElement root = SafeXml.parse(xml);
    checkRoot(root);
    // These messages are for people; the schema's words are the last resort.
    template(root);
    ChartException schemaError = SCHEMA.firstError(root);
    if (schemaError != null) {
      throw schemaError;
    }
  }

  private static void checkRoot(XmlElement root) {
    String expected = "expected <template xmlns=\"" + NAMESPACE + "\">";
    if (!root.name().equals("template")) {
      throw root.error(
          "found <" + root.name() + ">, which is not a chart template; " + expected);
    }
    if (root.namespace().equals(NAMESPACE)) {
      return;
    }
    var other = OTHER_VERSION.matcher(root.namespace());
    if (other.matches()) {
      throw root.error(
          "the template is of version " + other.group(1) + "; version 1 is known here");
    }
    throw root.error(root.namespace().isEmpty()
        ? "<template> has no namespace; " + expected
        : "<template> has the namespace \"" + root.namespace() + "\"; " + expected);
  }

  private static void template(XmlElement root) {
    AttributeReader in = new AttributeReader(root);
    in.finish();
    List<String> parts = List.of(
        "size", "style", "titles", "axes", "elements", "legend", "facet", "palette");
    for (XmlElement part : in.children(parts, false)) {
      switch (part.name()) {
        case "axes" -> group(part, List.of("x", "y"));
        case "elements" -> group(part, Words.all(ElementKind.class));
        case "palette" -> palette(part);
        default -> part(part);
      }
    }
  }

  private static void group(XmlElement group, List<String> names) {
    AttributeReader in = new AttributeReader(group);
    in.finish();
    in.children(names, false).forEach(TemplateCheck::part);
  }

  /** A part that has attributes only, one of which may say that it counts more than the chart. */
  private static void part(XmlElement part) {
    AttributeReader in = new AttributeReader(part);
    switch (part.name()) {
      case "size" -> {
        range(part, in, "width", ChartRules.MIN_SIZE, ChartRules.MAX_SIZE);
        range(part, in, "height", ChartRules.MIN_SIZE, ChartRules.MAX_SIZE);
      }
      case "style" -> in.name("name");
      case "titles" -> List.of("title", "subtitle", "caption").forEach(in::text);
      case "legend" -> {
        in.choice("position", LegendPosition.class, null);
        in.text("title");
      }
      case "facet" -> {
        range(part, in, "columns", 1, ChartRules.MAX_PANELS_IN_A_ROW);
        in.flag("shared-x", true);
        in.flag("shared-y", true);
      }
      case "x", "y" -> axis(in);
      default -> element(part, Words.find(ElementKind.class, part.name()), in);
    }
    finish(in);
    in.children(List.of(), false);
  }

  private static void axis(AttributeReader in) {
    in.choice("scale", ScaleKind.class, ScaleKind.AUTO);
    in.text("title");
    in.limit("min");
    in.limit("max");
    in.flag("reversed", false);
    in.flag("grid", true);
    in.text("format");
  }

  private static void element(XmlElement element, ElementKind kind, AttributeReader in) {
    if (!Arrangement.of(kind).isEmpty()) {
      in.choice("arrangement", Arrangement.class, Arrangement.of(kind), null);
    }
    if (kind == ElementKind.HISTOGRAM) {
      range(element, in, "bins", 1, ChartRules.MAX_BINS);
    }
    if (FILLED.contains(kind)) {
      color(element, in, "fill");
    }
    double opacity = in.number("opacity", 1);
    if (!(opacity >= 0 && opacity <= 1)) {
      throw in.unexpected("opacity", element.attribute("opacity"), "a number from 0 to 1");
    }
  }

  private static void palette(XmlElement palette) {
    AttributeReader in = new AttributeReader(palette);
    finish(in);
    for (XmlElement child : in.children(List.of("color"), true)) {
      AttributeReader color = new AttributeReader(child);
      if (child.attribute("value") == null) {
        throw color.missing("value");
      }
      color(child, color, "value");
      color.finish();
      color.children(List.of(), false);
    }
  }

  private static void finish(AttributeReader in) {
    in.flag("override", false);
    in.finish();
  }

  private static void color(XmlElement element, AttributeReader in, String name) {
    String value = in.text(name);
    if (value != null && !COLOR.matcher(value).matches()) {
      throw in.unexpected(name, value, "# and six hexadecimal digits, such as #0072b2");
    }
  }

  private static void range(
      XmlElement element, AttributeReader in, String name, int least, int most) {
    Integer value = in.whole(name);
    if (value != null && (value < least || value > most)) {
      throw in.unexpected(
          name, element.attribute(name), "a whole number from " + least + " to " + most);
    }
  }
}
