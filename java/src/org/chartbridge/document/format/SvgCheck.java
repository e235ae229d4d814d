// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlElement;

/**
 * Makes sure that an SVG is a picture and not a program. What it refers to is checked when it is
 * drawn.
 */
final class SvgCheck {
  static final String NAMESPACE = "http://www.w3.org/2000/svg";

  private static final List<String> ACTIVE = List.of("script", "handler", "foreignobject");

  private SvgCheck() {}

  static void check(XmlElement element) {
    if (ACTIVE.contains(element.name().toLowerCase(Locale.ROOT))) {
      throw refused(element, "<" + element.name() + ">");
    }
    for (String attribute : element.attributes().keySet()) {
      if (attribute.toLowerCase(Locale.ROOT).startsWith("on")) {
        throw refused(element, "the attribute " + attribute);
      }
    }
    element.children().forEach(SvgCheck::check);
  }

  private static ChartException refused(XmlElement element, String what) {
    return new ChartException(
        "SVG, " + element.position() + ": " + what + " is not allowed in a picture");
  }
}
