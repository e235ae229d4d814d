// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.Arrays;
import java.util.Collection;
import java.util.List;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.chart.TextPosition;

/** Walks over the tokens and words what was expected when something else stands there. */
final class Cursor {
  private static final int MAX_WHOLE_DIGITS = 9;

  private final String source;
  private final List<Token> tokens;
  private int at;

  Cursor(String source) {
    this.source = source;
    this.tokens = Lexer.tokens(source);
  }

  Token peek() {
    return tokens.get(at);
  }

  Token take() {
    Token token = tokens.get(at);
    if (token.kind() != TokenKind.END) {
      at++;
    }
    return token;
  }

  boolean nextIsWord(String word) {
    return at + 1 < tokens.size() && tokens.get(at + 1).isWord(word);
  }

  TextPosition position(int offset) {
    return TextPosition.of(source, offset);
  }

  /** Goes on behind the statement, after a mistake in it. */
  void skipStatement() {
    while (!peek().endsStatement()) {
      take();
    }
    take();
  }

  SyntaxError error(String expected) {
    Token token = peek();
    if (token.kind() == TokenKind.INVALID) {
      return new SyntaxError(token.offset(), token.text());
    }
    return new SyntaxError(token.offset(), "found " + token.found() + ", " + expected);
  }

  /** The error that none of these words stands here. */
  SyntaxError expected(Collection<String> words) {
    boolean word = peek().kind() == TokenKind.WORD;
    return error(word ? Suggestions.expected(peek().text(), words) : Suggestions.oneOf(words));
  }

  /** One of the words. */
  Token word(Collection<String> words) {
    Token token = peek();
    if (token.kind() != TokenKind.WORD || !words.contains(token.text())) {
      throw expected(words);
    }
    return take();
  }

  Token word(String... words) {
    return word(Arrays.asList(words));
  }

  boolean takeWord(String word) {
    boolean found = peek().isWord(word);
    if (found) {
      take();
    }
    return found;
  }

  boolean takeSign(String sign) {
    boolean found = peek().isSign(sign);
    if (found) {
      take();
    }
    return found;
  }

  void sign(String sign) {
    if (!takeSign(sign)) {
      throw error("expected \"" + sign + "\"");
    }
  }

  void takeBreak() {
    if (peek().kind() == TokenKind.BREAK) {
      take();
    }
  }

  /**
   * What stands between two clauses: a comma, a line break, or both. False at the end of the
   * statement.
   */
  boolean takeSeparator() {
    boolean lineBreak = peek().kind() == TokenKind.BREAK;
    takeBreak();
    boolean comma = takeSign(",");
    takeBreak();
    if (!comma && !lineBreak && !peek().endsStatement()) {
      throw error("expected \",\" or the end of the line");
    }
    return comma || lineBreak;
  }

  /** A text in quotes. */
  Token text() {
    return take(TokenKind.TEXT, "a text in quotes");
  }

  /** A name, in quotes or not. */
  Token name(String what) {
    if (peek().kind() != TokenKind.WORD && peek().kind() != TokenKind.TEXT) {
      throw error("expected " + what);
    }
    return take();
  }

  Token color() {
    return take(TokenKind.COLOR, "a colour such as #0072b2");
  }

  int whole() {
    Token token = peek();
    boolean whole = token.kind() == TokenKind.NUMBER && token.text().matches("[+-]?[0-9]+");
    if (!whole || token.text().length() > MAX_WHOLE_DIGITS) {
      throw error("expected a whole number");
    }
    return Integer.parseInt(take().text());
  }

  double number() {
    Token token = peek();
    Double number = token.kind() == TokenKind.NUMBER ? AxisLimit.parse(token.text()) : null;
    if (number == null) {
      throw error("expected a number");
    }
    take();
    return number;
  }

  /** A number or a date, as a number. */
  double limit() {
    Token token = peek();
    boolean fits = token.kind() == TokenKind.NUMBER || token.kind() == TokenKind.DATE;
    Double limit = fits ? AxisLimit.parse(token.text()) : null;
    if (limit == null) {
      throw error("expected a number or a date such as 2024-01-31");
    }
    take();
    return limit;
  }

  private Token take(TokenKind kind, String what) {
    if (peek().kind() != kind) {
      throw error("expected " + what);
    }
    return take();
  }
}
