// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

/** Text with tags, escaped. What comes out is well-formed XML too. */
public final class Markup {
  private final StringBuilder out = new StringBuilder(1 << 14);

  /**
   * A start tag.
   *
   * @param attributes names and values in turn; a null value leaves the attribute out
   */
  public Markup open(String name, String... attributes) {
    tag(name, attributes);
    out.append('>');
    return this;
  }

  /** A tag of an element that has no content. */
  public Markup empty(String name, String... attributes) {
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

  public Markup close(String name) {
    out.append("</").append(name).append('>');
    return this;
  }

  public Markup text(String text) {
    escape(text);
    return this;
  }

  /** An element with text only. */
  public Markup element(String name, String text, String... attributes) {
    return open(name, attributes).text(text).close(name);
  }

  public Markup line() {
    out.append('\n');
    return this;
  }

  /** What is markup already. */
  public Markup raw(String markup) {
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
