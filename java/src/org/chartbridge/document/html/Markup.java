// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

/** Text with tags, escaped. What comes out is well-formed XML too. */
final class Markup {
  private final StringBuilder out = new StringBuilder(1 << 14);

  /**
   * A start tag.
   *
   * @param attributes names and values in turn; a null value leaves the attribute out
   */
  Markup open(String name, String... attributes) {
    tag(name, attributes);
    out.append('>');
    return this;
  }

  /** A tag of an element that has no content. */
  Markup empty(String name, String... attributes) {
    tag(name, attributes);
    out.append("/>");
    return this;
  }

  private void tag(String name, String... attributes) {
    out.append('<').append(name);
    for (int i = 0; i < attributes.length; i += 2) {
      if (attributes[i + 1] != null) {
        out.append(' ').append(attributes[i]).append("=\"");
        escape(attributes[i + 1]);
        out.append('"');
      }
    }
  }

  Markup close(String name) {
    out.append("</").append(name).append('>');
    return this;
  }

  Markup text(String text) {
    escape(text);
    return this;
  }

  /** An element with text only. */
  Markup element(String name, String text, String... attributes) {
    return open(name, attributes).text(text).close(name);
  }

  Markup line() {
    out.append('\n');
    return this;
  }

  /** What is markup already. */
  Markup raw(String markup) {
    out.append(markup);
    return this;
  }

  private void escape(String text) {
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      switch (c) {
        case '&' -> out.append("&amp;");
        case '<' -> out.append("&lt;");
        case '>' -> out.append("&gt;");
        case '"' -> out.append("&quot;");
        default -> out.append(c);
      }
    }
  }

  @Override
  public String toString() {
    return out.toString();
  }
}
