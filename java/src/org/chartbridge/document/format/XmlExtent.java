// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.nio.charset.StandardCharsets;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.xml.XmlElement;

/**
 * Documents within a document: an element with all that is in it, as it stands in the text. Its own
 * reader gets it behind as many line ends and spaces as there are characters in front of it, so
 * that whatever the reader says about lines and columns holds for the whole document.
 */
final class XmlExtent {
  private final String text;

  /**
   * @param text the text of a well-formed document
   */
  XmlExtent(String text) {
    this.text = text;
  }

  /** The element as a document in UTF-8. */
  byte[] document(XmlElement element) {
    TextPosition position = element.position();
    int start = offset(position);
    String own = text.substring(start, end(start));
    if (!text.substring(start, endOfTag(start)).contains("xmlns")) {
      // Its namespace is declared further out; the lines within it are all that can be kept then.
      return PreservingXmlWriter.write(element);
    }
    return padded(position, own);
  }

  /** A text that begins at a position. */
  static byte[] padded(TextPosition position, String own) {
    String padding = "\n".repeat(position.line() - 1) + " ".repeat(position.column() - 1);
    return (padding + own).getBytes(StandardCharsets.UTF_8);
  }

  /** Where the content of an element begins. */
  TextPosition contentPosition(XmlElement element) {
    int start = offset(element.position());
    return TextPosition.of(text, endOfTag(start) + 1);
  }

  private int offset(TextPosition position) {
    int at = 0;
    for (int line = 1; line < position.line(); line++) {
      at = nextLine(at);
    }
    return text.offsetByCodePoints(at, position.column() - 1);
  }

  private int nextLine(int from) {
    int at = from;
    while (text.charAt(at) != '\n' && text.charAt(at) != '\r') {
      at++;
    }
    boolean crLf = text.charAt(at) == '\r' && at + 1 < text.length() && text.charAt(at + 1) == '\n';
    return at + (crLf ? 2 : 1);
  }

  private int end(int start) {
    int depth = 0;
    int at = start;
    while (true) {
      int open = text.indexOf('<', at);
      if (text.startsWith("<!--", open)) {
        at = text.indexOf("-->", open) + 3;
      } else if (text.startsWith("<![CDATA[", open)) {
        at = text.indexOf("]]>", open) + 3;
      } else if (text.startsWith("<?", open)) {
        at = text.indexOf("?>", open) + 2;
      } else {
        int close = endOfTag(open);
        at = close + 1;
        if (text.charAt(open + 1) == '/') {
          depth--;
        } else if (text.charAt(close - 1) != '/') {
          depth++;
        }
        if (depth == 0) {
          return at;
        }
      }
    }
  }

  /** The closing bracket of a tag; those in attribute values do not count. */
  private int endOfTag(int open) {
    char quote = 0;
    for (int i = open; ; i++) {
      char c = text.charAt(i);
      if (quote != 0) {
        quote = c == quote ? 0 : quote;
      } else if (c == '"' || c == '\'') {
        quote = c;
      } else if (c == '>') {
        return i;
      }
    }
  }
}
