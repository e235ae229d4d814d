// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.xml.XmlElement;

/**
 * Finds where in a style sheet a message of the XSLT processor belongs. The processor tells a line
 * at best, and nothing while it runs; but its messages quote what they are about.
 */
final class SheetPlaces {
  private static final Pattern LINE = Pattern.compile("^line (\\d+): ", Pattern.DOTALL);
  private static final Pattern QUOTED = Pattern.compile("'([^']+)'|\"([^\"]+)\"");
  private static final Pattern UNKNOWN_FUNCTION = Pattern.compile("funcall\\(([\\w:.-]+),");

  private final List<XmlElement> elements = new ArrayList<>();

  SheetPlaces(XmlElement root) {
    collect(root);
  }

  private void collect(XmlElement element) {
    elements.add(element);
    element.children().forEach(this::collect);
  }

  /** The message with line and column in front, as far as they can be told. */
  String located(String message) {
    String text = message.replaceAll("[.\\s]+$", "");
    Matcher line = LINE.matcher(text);
    if (!line.find()) {
      TextPosition place = onlyPlace(elements, text);
      return place == null ? text : place + ": " + text;
    }
    String reason = text.substring(line.end());
    List<XmlElement> inLine = inLine(Integer.parseInt(line.group(1)));
    TextPosition place = onlyPlace(inLine, reason);
    if (place == null && !inLine.isEmpty()) {
      place = inLine.get(0).position();
    }
    return (place == null ? "line " + line.group(1) : place) + ": " + reason;
  }

  /** The processor counts an element where its start tag ends. */
  private List<XmlElement> inLine(int line) {
    List<XmlElement> found = new ArrayList<>();
    for (XmlElement element : elements) {
      if (element.lastLineOfTag() == line) {
        found.add(element);
      }
    }
    return found;
  }

  /** The first place that holds one of the texts that the message quotes, when there is one. */
  private static TextPosition onlyPlace(List<XmlElement> among, String message) {
    for (String quoted : quoted(message)) {
      List<TextPosition> found = new ArrayList<>();
      for (XmlElement element : among) {
        addPlace(element, quoted, found);
      }
      if (found.size() == 1) {
        return found.get(0);
      }
    }
    return null;
  }

  private static List<String> quoted(String message) {
    List<String> texts = new ArrayList<>();
    Matcher function = UNKNOWN_FUNCTION.matcher(message);
    while (function.find()) {
      texts.add(function.group(1) + "(");
    }
    Matcher quote = QUOTED.matcher(message);
    while (quote.find()) {
      texts.add(quote.group(1) == null ? quote.group(2) : quote.group(1));
    }
    return texts;
  }

  private static void addPlace(XmlElement element, String quoted, List<TextPosition> found) {
    if (element.name().equals(quoted)) {
      found.add(element.position());
      return;
    }
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      if (attribute.getValue().contains(quoted)) {
        found.add(element.position(attribute.getKey()));
        return;
      }
    }
    if (element.text().contains(quoted)) {
      found.add(element.position());
    }
  }
}
