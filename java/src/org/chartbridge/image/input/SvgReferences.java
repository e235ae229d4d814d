// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.Base64;
import java.util.Map;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlElement;

/**
 * Holds an SVG document to itself: it may refer to its own parts and to pixels that it carries, and
 * to nothing else.
 */
final class SvgReferences {
  private static final String XLINK_HREF = "{http://www.w3.org/1999/xlink}href";
  private static final Pattern DATA =
      Pattern.compile("data:image/(png|jpeg|jpg|gif);base64,(.*)", Pattern.DOTALL);
  private static final Pattern CSS_REFERENCE =
      Pattern.compile("url\\(\\s*([\"']?)\\s*([^\"')]*)|@import|\\\\", Pattern.CASE_INSENSITIVE);

  /** Elements whose references only take a reader elsewhere. */
  private static final Set<String> LINKS = Set.of("a");

  private SvgReferences() {}

  /**
   * @throws ChartException at the first reference to anything else
   */
  static void check(XmlElement element) {
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      String name = attribute.getKey();
      if (name.equals("href") || name.equals(XLINK_HREF)) {
        checkTarget(element, attribute.getValue().strip());
      } else {
        checkCss(element, attribute.getValue());
      }
    }
    if (element.name().equals("style")) {
      checkCss(element, element.text());
    }
    element.children().forEach(SvgReferences::check);
  }

  /** What the element refers to, or null. */
  static String target(XmlElement element) {
    String target = element.attribute(XLINK_HREF);
    target = target == null ? element.attribute("href") : target;
    return target == null ? null : target.strip();
  }

  private static void checkTarget(XmlElement element, String target) {
    if (target.startsWith("#") || LINKS.contains(element.name())) {
      return;
    }
    Matcher data = DATA.matcher(target);
    if (!element.name().equals("image") || !data.matches()) {
      throw refused(element, target);
    }
    checkPixels(element, data.group(2));
  }

  /** A small file can claim a huge picture. */
  private static void checkPixels(XmlElement element, String base64) {
    try {
      byte[] bytes = Base64.getMimeDecoder().decode(base64);
      InputFormat format = InputFormat.of(bytes);
      if (format == InputFormat.SVG) {
        throw new ChartException("it is SVG, where pixels were announced");
      }
      PixelReader.checkSize(format, bytes);
    } catch (ChartException | IllegalArgumentException e) {
      throw element.error("the image inside the SVG cannot be read: " + e.getMessage());
    }
  }

  /** Style sheets can name files; a backslash could hide that they do. */
  private static void checkCss(XmlElement element, String css) {
    Matcher reference = CSS_REFERENCE.matcher(css);
    while (reference.find()) {
      String target = reference.group(2);
      if (target == null || !target.startsWith("#")) {
        throw refused(element, target == null ? reference.group() : target);
      }
    }
  }

  private static ChartException refused(XmlElement element, String target) {
    String shown = target.length() <= 60 ? target : target.substring(0, 60) + "...";
    return element.error("<" + element.name() + "> refers to \""
        + shown + "\"; an SVG image that is converted may refer to its own"
        + " parts (#name) and to PNG, JPEG and GIF inside it (data:image/png;base64,...) only");
  }
}
