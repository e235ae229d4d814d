// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import java.nio.charset.StandardCharsets;
import java.util.Map;

/**
 * Writes trees in one canonical form: UTF-8, an XML declaration, two spaces of indentation,
 * attributes in the order of the tree, empty elements closed in their start tag, LF line ends.
 * Trees whose elements hold elements or text, but never both, come back equal from the parser.
 */
public final class XmlWriter {
  private final StringBuilder out =
      new StringBuilder("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");

  private XmlWriter() {}

  /**
   * The document with this root. Its namespace becomes the default namespace, which all elements
   * must share.
   */
  public static byte[] write(XmlElement root) {
    XmlWriter writer = new XmlWriter();
    writer.element(root, 0, root.namespace());
    return writer.out.toString().getBytes(StandardCharsets.UTF_8);
  }

  private void element(XmlElement element, int depth, String namespace) {
    indent(depth);
    out.append('<').append(element.name());
    if (depth == 0 && !namespace.isEmpty()) {
      attribute("xmlns", namespace);
    }
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      attribute(attribute.getKey(), attribute.getValue());
    }
    if (element.content().isEmpty()) {
      out.append("/>\n");
      return;
    }
    if (element.content().stream().allMatch(node -> node instanceof XmlText)) {
      out.append('>');
      text(element.text());
      out.append("</").append(element.name()).append(">\n");
      return;
    }
    out.append(">\n");
    for (XmlNode node : element.content()) {
      node(node, depth + 1, namespace);
    }
    indent(depth);
    out.append("</").append(element.name()).append(">\n");
  }

  private void node(XmlNode node, int depth, String namespace) {
    if (node instanceof XmlElement element) {
      element(element, depth, namespace);
    } else if (node instanceof XmlComment comment) {
      indent(depth);
      out.append("<!--").append(comment.text()).append("-->\n");
    } else if (node instanceof XmlText text && !text.text().isBlank()) {
      indent(depth);
      escape(text.text().strip());
      out.append('\n');
    }
  }

  /** Text that is all an element holds is written as it is; spaces and line ends may matter. */
  private void text(String text) {
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      switch (c) {
        case '&' -> out.append("&amp;");
        case '<' -> out.append("&lt;");
        case '>' -> out.append("&gt;");
        // A parser turns a bare one into a line feed.
        case '\r' -> out.append("&#13;");
        default -> out.append(c);
      }
    }
  }

  private void attribute(String name, String value) {
    out.append(' ').append(name).append("=\"");
    escape(value);
    out.append('"');
  }

  /**
   * Line ends and tabs are written as references: a parser turns the bare ones in attributes into
   * spaces.
   */
  private void escape(String text) {
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      switch (c) {
        case '&' -> out.append("&amp;");
        case '<' -> out.append("&lt;");
        case '>' -> out.append("&gt;");
        case '"' -> out.append("&quot;");
        case '\n', '\r', '\t' -> out.append("&#").append((int) c).append(';');
        default -> out.append(c);
      }
    }
  }

  private void indent(int depth) {
    out.append("  ".repeat(depth));
  }
}
