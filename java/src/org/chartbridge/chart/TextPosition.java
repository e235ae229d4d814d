// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * A place in a source text, as editors show it.
 *
 * @param line 1-based; CR LF, LF and CR each end a line
 * @param column 1-based, in code points, so that a character beyond the basic plane counts once
 */
public record TextPosition(int line, int column) {
  /** The position of the character at {@code offset} (in UTF-16 units, at most the length). */
  public static TextPosition of(CharSequence text, int offset) {
    int line = 1;
    int lineStart = 0;
    for (int i = 0; i < offset; i++) {
      char c = text.charAt(i);
      boolean crOfCrLf = c == '\r' && i + 1 < text.length() && text.charAt(i + 1) == '\n';
      if (c == '\n' || (c == '\r' && !crOfCrLf)) {
        line++;
        lineStart = i + 1;
      }
    }
    int column = Character.codePointCount(text, lineStart, Math.max(lineStart, offset)) + 1;
    return new TextPosition(line, column);
  }

  /** For messages: {@code line 3, column 12}. */
  @Override
  public String toString() {
    return "line " + line + ", column " + column;
  }
}
