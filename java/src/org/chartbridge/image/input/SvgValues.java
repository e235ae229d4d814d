// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.List;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlElement;

/**
 * Looks at values on which the SVG library gives up with a word that helps nobody, or which make it
 * work without end.
 */
final class SvgValues {
  private static final double LARGEST_RADIUS = 1000;
  private static final double LARGEST_ORDER = 50;
  private static final Pattern NUMBER =
      Pattern.compile("[+-]?([0-9]++(\\.[0-9]*+)?|\\.[0-9]++)([eE][+-]?[0-9]++)?");
  private static final Pattern RATIO =
      Pattern.compile("\\s*(defer\\s+)?(none|x(Min|Mid|Max)Y(Min|Mid|Max))(\\s+(meet|slice))?\\s*");
  private static final Pattern DECLARATION = Pattern.compile("(?<![a-z-])([a-z-]++)\\s*+:\\s*+([^;]*+)");
  private static final List<String> NOT_NEGATIVE =
      List.of("stroke-width", "stroke-dasharray", "font-size");
  private static final Set<String> LIT = Set.of("feDiffuseLighting", "feSpecularLighting");
  private static final Set<String> LIGHTS =
      Set.of("feDistantLight", "fePointLight", "feSpotLight");

  private SvgValues() {}

  /**
   * @throws ChartException at the first value that cannot be drawn
   */
  static void check(XmlElement element) {
    for (String name : NOT_NEGATIVE) {
      checkNotNegative(element, name, name, element.attribute(name));
    }
    String style = element.attribute("style");
    Matcher declaration = DECLARATION.matcher(style == null ? "" : style);
    while (declaration.find()) {
      if (NOT_NEGATIVE.contains(declaration.group(1))) {
        checkNotNegative(element, "style", declaration.group(1), declaration.group(2));
      }
    }
    String box = element.attribute("viewBox");
    checkForm(element, "viewBox", box == null || ViewBox.parse(box) != null, "four numbers");
    String ratio = element.attribute("preserveAspectRatio");
    checkForm(element, "preserveAspectRatio", ratio == null || RATIO.matcher(ratio).matches(),
        "none, or one such as xMidYMid meet");
    switch (element.name()) {
      case "feMorphology" -> checkNumbers(element, "radius", LARGEST_RADIUS);
      case "feConvolveMatrix" -> checkNumbers(element, "order", LARGEST_ORDER);
      default -> checkLight(element);
    }
    element.children().forEach(SvgValues::check);
  }

  private static void checkLight(XmlElement element) {
    if (LIT.contains(element.name())
        && element.children().stream().noneMatch(child -> LIGHTS.contains(child.name()))) {
      throw element.error("<" + element.name() + "> has no light in it, such as <feDistantLight>");
    }
  }

  private static void checkNotNegative(
      XmlElement element, String attribute, String property, String value) {
    if (value == null) {
      return;
    }
    Matcher number = NUMBER.matcher(value);
    while (number.find()) {
      if (Double.parseDouble(number.group()) < 0) {
        throw element.error(attribute,
            "found " + property + " \"" + shortened(value) + "\"; it cannot be negative");
      }
    }
  }

  private static void checkForm(
      XmlElement element, String attribute, boolean isRight, String expected) {
    if (!isRight) {
      throw element.error(attribute, "found " + attribute + " \""
          + shortened(element.attribute(attribute)) + "\", expected " + expected);
    }
  }

  private static void checkNumbers(XmlElement element, String attribute, double largest) {
    String value = element.attribute(attribute);
    if (value == null) {
      return;
    }
    Matcher number = NUMBER.matcher(value);
    while (number.find()) {
      if (Double.parseDouble(number.group()) > largest) {
        throw element.error(attribute, "found " + attribute + " \"" + shortened(value)
            + "\"; at most " + (int) largest + " is drawn");
      }
    }
  }

  private static String shortened(String value) {
    return value.length() <= 40 ? value : value.substring(0, value.offsetByCodePoints(0, 30)) + "...";
  }
}
