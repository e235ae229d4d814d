// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.nio.charset.StandardCharsets;
import java.util.Map;
import org.chartbridge.xml.XmlComment;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;

/**
 * Writes a tree with every character of its texts as it is, so that running text keeps its spaces
 * and data keep their lines. Namespaces are declared where they change.
 */
final class PreservingXmlWriter {
  private final StringBuilder out = new StringBuilder();

  private PreservingXmlWriter() {}

  static byte[] write(XmlElement root) {
    PreservingXmlWriter writer = new PreservingXmlWriter();
    writer.out.append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    writer.element(root, "");
    writer.out.append('\n');
    return writer.out.toString().getBytes(StandardCharsets.UTF_8);
  }

  private void element(XmlElement element, String outer) {
    out.append('<').append(element.name());
    if (!element.namespace().equals(outer)) {
      attribute("xmlns", element.namespace());
    }
    int foreign = 0;
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      String name = attribute.getKey();
      int brace = name.lastIndexOf('}');
      if (brace >= 0) {
        String prefix = prefix(name.substring(1, brace), ++foreign);
        name = prefix + ":" + name.substring(brace + 1);
      }
      attribute(name, attribute.getValue());
    }
    if (element.content().isEmpty()) {
      out.append("/>");
      return;
    }
    out.append('>');
    for (XmlNode node : element.content()) {
      node(node, element.namespace());
    }
    out.append("</").append(element.name()).append('>');
  }

  /** The prefix xml is always there; others are declared in place. */
  private String prefix(String namespace, int number) {
    if (namespace.equals("http://www.w3.org/XML/1998/namespace")) {
      return "xml";
    }
    attribute("xmlns:n" + number, namespace);
    return "n" + number;
  }

  private void node(XmlNode node, String namespace) {
    if (node instanceof XmlElement element) {
      element(element, namespace);
    } else if (node instanceof XmlComment comment) {
      out.append("<!--").append(comment.text()).append("-->");
    } else if (node instanceof XmlText text) {
      escape(text.text(), false);
    }
  }

  private void attribute(String name, String value) {
    out.append(' ').append(name).append("=\"");
    escape(value, true);
    out.append('"');
  }

  /** Parsers turn bare carriage returns, and in attributes line ends and tabs, into others. */
  private void escape(String text, boolean attribute) {
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      switch (c) {
        case '&' -> out.append("&amp;");
        case '<' -> out.append("&lt;");
        case '>' -> out.append("&gt;");
        case '"' -> out.append(attribute ? "&quot;" : "\"");
        case '\r' -> out.append("&#13;");
        case '\n', '\t' -> {
          if (attribute) {
            out.append("&#").append((int) c).append(';');
          } else {
            out.append(c);
          }
        }
        default -> out.append(c);
      }
    }
  }
}
