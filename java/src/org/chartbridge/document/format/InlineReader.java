// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.TextStyle;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;

/**
 * Reads running text. A run of blanks is one space, also across the borders of elements; blanks at
 * the beginning, at the end and around line breaks are none.
 */
final class InlineReader {
  private static final List<String> NAMES = List.of("emphasis", "strong", "code", "link", "break");
  /** There are not that many ways to set a text off. */
  private static final int MAX_NESTED = 32;

  private static final Pattern TARGET = Pattern.compile("((https?|mailto):|#)\\S+");

  /** Elements that end the text, in the order of the document. */
  private final List<XmlElement> others = new ArrayList<>();

  private final List<XmlElement> links;
  private final String otherName;
  /** Whether a blank here would be one too many: at the start of a line or behind a blank. */
  private boolean complete = true;
  private boolean blank;
  /** How many elements are open that set a text off. */
  private int open;

  /**
   * @param links collects the links to headings
   * @param otherName the one other element that may follow the text; null for none
   */
  InlineReader(List<XmlElement> links, String otherName) {
    this.links = links;
    this.otherName = otherName;
  }

  List<Inline> read(XmlElement element) {
    List<Inline> content = new ArrayList<>();
    StringBuilder text = new StringBuilder();
    for (XmlNode node : element.content()) {
      if (node instanceof XmlText characters) {
        append(characters.text(), text, element);
      } else if (node instanceof XmlElement child) {
        child(child, element, content, text);
      }
    }
    flush(content, text);
    return content;
  }

  /** The elements of the other name. */
  List<XmlElement> others() {
    return others;
  }

  private void append(String characters, StringBuilder text, XmlElement element) {
    for (int i = 0; i < characters.length(); i++) {
      char c = characters.charAt(i);
      if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
        blank = true;
        continue;
      }
      if (!others.isEmpty()) {
        throw others.get(0).error("<" + element.name() + "> has text behind <" + otherName + ">");
      }
      appendBlank(text);
      text.append(c);
      complete = false;
    }
  }

  private void appendBlank(StringBuilder text) {
    if (blank && !complete) {
      text.append(' ');
      complete = true;
    }
    blank = false;
  }

  private void child(
      XmlElement child, XmlElement parent, List<Inline> content, StringBuilder text) {
    if (child.name().equals(otherName) && child.namespace().equals(parent.namespace())) {
      others.add(child);
      return;
    }
    if (!NAMES.contains(child.name()) || !child.namespace().equals(parent.namespace())) {
      throw child.error("found <" + child.name() + "> inside <" + parent.name() + ">; "
          + Suggestions.expected(child.name(), NAMES));
    }
    if (!others.isEmpty()) {
      throw child.error("<" + parent.name() + "> has text behind <" + otherName + ">");
    }
    AttributeReader in = new AttributeReader(child);
    if (child.name().equals("break")) {
      in.finish();
      in.children(List.of(), false);
      flush(content, text);
      content.add(new Inline.LineBreak());
      complete = true;
      blank = false;
      return;
    }
    appendBlank(text);
    flush(content, text);
    if (++open > MAX_NESTED) {
      throw child.error("texts are nested more than " + MAX_NESTED + " levels deep");
    }
    if (child.name().equals("link")) {
      String target = target(child, in);
      in.finish();
      content.add(new Inline.Link(target, read(child)));
    } else {
      in.finish();
      content.add(new Inline.Styled(style(child.name()), read(child)));
    }
    open--;
  }

  private String target(XmlElement element, AttributeReader in) {
    String target = in.name("to").strip();
    if (!TARGET.matcher(target).matches()) {
      throw in.unexpected("to", target,
          "an address that begins with https:, http: or mailto:, or # and the id of a heading");
    }
    if (target.startsWith("#")) {
      links.add(element);
    }
    return target;
  }

  private static TextStyle style(String name) {
    return switch (name) {
      case "emphasis" -> TextStyle.EMPHASIS;
      case "strong" -> TextStyle.STRONG;
      default -> TextStyle.CODE;
    };
  }

  private static void flush(List<Inline> content, StringBuilder text) {
    if (text.length() > 0) {
      content.add(new Inline.Text(text.toString()));
      text.setLength(0);
    }
  }
}
