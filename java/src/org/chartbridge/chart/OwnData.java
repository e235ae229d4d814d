// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** The CSV text that a chart carries. */
final class OwnData {
  private OwnData() {}

  /**
   * The text without what only lays out the document that it stands in: blank lines in front of the
   * first record, and the indentation of the line that the end tag stands in. Null when nothing is
   * left.
   */
  static String normalized(String text) {
    if (text == null || text.isBlank()) {
      return null;
    }
    String data = text.substring(startOfFirstRecord(text));
    int last = data.lastIndexOf('\n') + 1;
    if (last == data.length()) {
      return data;
    }
    return data.substring(last).isBlank() ? data.substring(0, last) : data + '\n';
  }

  private static int startOfFirstRecord(String text) {
    int start = 0;
    for (int i = 0; Character.isWhitespace(text.charAt(i)); i++) {
      if (text.charAt(i) == '\n') {
        start = i + 1;
      }
    }
    return start;
  }
}
