// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

/** The kinds of tokens of the graph language. */
enum TokenKind {
  /** A keyword or a name without quotes. */
  WORD,
  /** A text in double quotes; the token holds what it means. */
  TEXT,
  NUMBER,
  /** An ISO 8601 date or date-time. */
  DATE,
  /** {@code #rrggbb}. */
  COLOR,
  /** One of {@code , : <}. */
  SIGN,
  /** A line break inside a statement: the next line is indented deeper than the first statement. */
  BREAK,
  /** The end of a statement's last line. */
  LINE_END,
  END,
  /** Characters that are no token; the token holds what is wrong with them. */
  INVALID
}
