// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.Locale;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlElement;

/**
 * Makes sure that an SVG is a picture and nothing else: no programs in it, and no references that
 * would make a viewer or a renderer fetch something.
 */
final class SvgCheck {
  static final String NAMESPACE = "http://www.w3.org/2000/svg";

  private static final Pattern REFERENCE =
      Pattern.compile("url\\(\\s*[\"']?\\s*(.)", Pattern.CASE_INSENSITIVE);
  private static final Pattern HARMLESS = Pattern.compile(
      "#.*|data:image/(png|jpeg|gif)[;,].*", Pattern.CASE_INSENSITIVE | Pattern.DOTALL);

  private SvgCheck() {}

  static void check(XmlElement element) {
    String name = element.name().toLowerCase(Locale.ROOT);
    if (name.equals("script") || name.equals("foreignobject") || name.equals("handler")) {
      throw refused(element, "<" + element.name() + "> is not allowed");
    }
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      attribute(element, attribute.getKey(), attribute.getValue());
    }
    if (name.equals("style")) {
      text(element, element.text());
    }
    element.children().forEach(SvgCheck::check);
  }

  private static void attribute(XmlElement element, String qualified, String value) {
    String name = qualified.substring(qualified.lastIndexOf('}') + 1).toLowerCase(Locale.ROOT);
    if (name.startsWith("on")) {
      throw refused(element, "the attribute " + name + " is not allowed");
    }
    boolean reference = name.equals("href") || name.equals("src") || qualified.endsWith("}base");
    if (reference && !HARMLESS.matcher(value.strip()).matches()) {
      throw refused(element, "it refers to \"" + value.strip() + "\"; only what is in the picture"
          + " itself can be referred to");
    }
    text(element, value);
  }

  private static void text(XmlElement element, String text) {
    Matcher reference = REFERENCE.matcher(text);
    while (reference.find()) {
      if (!reference.group(1).equals("#")) {
        throw refused(element, "a style refers to something outside of the picture");
      }
    }
    // A backslash could hide either word from this check.
    if (text.contains("@import") || text.contains("\\")) {
      throw refused(element, "a style with @import or a backslash is not allowed");
    }
  }

  private static ChartException refused(XmlElement element, String what) {
    return new ChartException("SVG, " + element.position() + ": " + what);
  }
}
