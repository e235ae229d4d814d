// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

/** Finds things inside the text of a well-formed start tag. */
final class XmlTags {
  private XmlTags() {}

  /** The offset of an attribute's name inside the tag {@code [start, end)}, or -1. */
  static int attributeOffset(String source, int start, int end, String attribute) {
    int at = start;
    while (at < end && !isSpace(source.charAt(at))) {
      at++;
    }
    while (at < end) {
      at = skipSpace(source, at, end);
      int equals = source.indexOf('=', at);
      if (equals < 0 || equals >= end) {
        return -1;
      }
      if (localName(source.substring(at, equals).strip()).equals(attribute)) {
        return at;
      }
      at = afterValue(source, equals + 1, end);
    }
    return -1;
  }

  private static String localName(String qualifiedName) {
    return qualifiedName.substring(qualifiedName.indexOf(':') + 1);
  }

  private static int afterValue(String source, int afterEquals, int end) {
    int open = skipSpace(source, afterEquals, end);
    if (open >= end) {
      return end;
    }
    int close = source.indexOf(source.charAt(open), open + 1);
    return close < 0 ? end : close + 1;
  }

  private static int skipSpace(String source, int from, int end) {
    int at = from;
    while (at < end && isSpace(source.charAt(at))) {
      at++;
    }
    return at;
  }

  private static boolean isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
  }
}
