// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;

/**
 * The content of a PMML {@code Array}: values with white space between them; a value that holds
 * white space stands in double quotes, in which a backslash stands before a quote.
 */
final class ValueArray {
  private ValueArray() {}

  /** The values, or null when a quote is not closed. */
  static List<String> parse(String text) {
    List<String> values = new ArrayList<>();
    int at = 0;
    while (at < text.length()) {
      char c = text.charAt(at);
      if (Character.isWhitespace(c)) {
        at++;
        continue;
      }
      StringBuilder value = new StringBuilder();
      at = c == '"' ? quoted(text, at + 1, value) : bare(text, at, value);
      if (at < 0) {
        return null;
      }
      values.add(value.toString());
    }
    return values;
  }

  private static int quoted(String text, int from, StringBuilder value) {
    int at = from;
    while (at < text.length()) {
      char c = text.charAt(at);
      if (c == '"') {
        return at + 1;
      }
      boolean escapes = c == '\\' && at + 1 < text.length()
          && (text.charAt(at + 1) == '"' || text.charAt(at + 1) == '\\');
      value.append(escapes ? text.charAt(at + 1) : c);
      at += escapes ? 2 : 1;
    }
    return -1;
  }

  private static int bare(String text, int from, StringBuilder value) {
    int at = from;
    while (at < text.length() && !Character.isWhitespace(text.charAt(at))) {
      char c = text.charAt(at);
      boolean escapes = c == '\\' && at + 1 < text.length() && text.charAt(at + 1) == '"';
      value.append(escapes ? '"' : c);
      at += escapes ? 2 : 1;
    }
    return at;
  }
}
