// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

/**
 * A token and where it stands.
 *
 * @param text what it says; for {@link TokenKind#INVALID} the message
 * @param offset of its first character in the source, in UTF-16 units
 */
record Token(TokenKind kind, String text, int offset) {
  boolean isWord(String word) {
    return kind == TokenKind.WORD && text.equals(word);
  }

  boolean isSign(String sign) {
    return kind == TokenKind.SIGN && text.equals(sign);
  }

  boolean endsStatement() {
    return kind == TokenKind.LINE_END || kind == TokenKind.END;
  }

  /** How messages call what stands there. */
  String found() {
    return switch (kind) {
      case WORD, SIGN -> "\"" + text + "\"";
      case TEXT -> "the text \"" + shorten(text) + "\"";
      case BREAK, LINE_END -> "the end of the line";
      case END -> "the end of the chart";
      default -> text;
    };
  }

  private static String shorten(String text) {
    String line = text.replace("\n", "\\n");
    return line.length() <= 40 ? line : line.substring(0, line.offsetByCodePoints(0, 30)) + "...";
  }
}
