// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Splits a source text into tokens. Wrong characters become tokens too, so that the parser finds
 * them in their order.
 */
final class Lexer {
  private static final Pattern DATE = Pattern.compile(
      "[0-9]{4}-[0-9]{2}-[0-9]{2}"
              + "(T[0-9]{2}:[0-9]{2}(:[0-9]{2}(\\.[0-9]+)?)?(Z|[+-][0-9]{2}:[0-9]{2})?)?");
  private static final Pattern NUMBER =
      Pattern.compile("[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][+-]?[0-9]+)?");
  private static final Pattern COLOR = Pattern.compile("#[0-9a-fA-F]{6}");
  private static final int MAX_CODE_POINT_DIGITS = 6;

  private final String source;
  private final List<Token> tokens = new ArrayList<>();
  private int at;
  private int baseIndent = -1;
  /** The line whose end was looked for last, since a line may hold very many texts. */
  private int knownStart = -1;
  private int knownEnd = -1;

  private Lexer(String source) {
    this.source = source;
  }

  /** All tokens; the last one is {@link TokenKind#END}. */
  static List<Token> tokens(String source) {
    Lexer lexer = new Lexer(source);
    lexer.startLine(0);
    while (lexer.at < source.length()) {
      lexer.next();
    }
    lexer.add(TokenKind.END, "", source.length());
    return lexer.tokens;
  }

  private void add(TokenKind kind, String text, int offset) {
    tokens.add(new Token(kind, text, offset));
  }

  private void next() {
    int c = source.codePointAt(at);
    if (c == '\n' || c == '\r') {
      startLine(at);
    } else if (c == ' ' || c == '\t') {
      at++;
    } else if (source.startsWith("//", at)) {
      at = lineEnd(at);
    } else if (c == '"') {
      text();
    } else if (c == '#') {
      match(COLOR, TokenKind.COLOR, "a colour is # and six hexadecimal digits, such as #0072b2");
    } else if (isDigit(c) || c == '+' || c == '-' || c == '.') {
      number();
    } else if (isWordStart(c)) {
      word();
    } else {
      sign(c);
    }
  }

  /**
   * Skips line ends, blank lines and comment lines, and says whether the next line goes on with the
   * statement.
   */
  private void startLine(int lineBreak) {
    int start = lineBreak;
    int content = start;
    while (content < source.length()) {
      char c = source.charAt(content);
      if (c == '\n' || c == '\r') {
        start = content + 1;
      } else if (source.startsWith("//", content)) {
        content = lineEnd(content) - 1;
      } else if (c != ' ' && c != '\t') {
        break;
      }
      content++;
    }
    int indent = content - start;
    boolean first = tokens.isEmpty();
    if (baseIndent < 0) {
      baseIndent = indent;
    }
    if (!first && content < source.length()) {
      add(indent > baseIndent ? TokenKind.BREAK : TokenKind.LINE_END, "", lineBreak);
    }
    at = content;
  }

  private int lineEnd(int from) {
    if (from >= knownStart && from <= knownEnd) {
      return knownEnd;
    }
    int end = from;
    while (end < source.length() && source.charAt(end) != '\n' && source.charAt(end) != '\r') {
      end++;
    }
    knownStart = from;
    knownEnd = end;
    return end;
  }

  private void number() {
    Pattern pattern = matches(DATE) ? DATE : NUMBER;
    TokenKind kind = pattern == DATE ? TokenKind.DATE : TokenKind.NUMBER;
    match(pattern, kind,
        "this is neither a number nor a date; put names that start with a digit in quotes");
  }

  private boolean matches(Pattern pattern) {
    Matcher matcher = pattern.matcher(source).region(at, source.length());
    return matcher.lookingAt();
  }

  private void match(Pattern pattern, TokenKind kind, String rule) {
    Matcher matcher = pattern.matcher(source).region(at, source.length());
    int run = runEnd(at + 1);
    if (matcher.lookingAt() && matcher.end() == run) {
      add(kind, matcher.group(), at);
    } else {
      add(TokenKind.INVALID, "found \"" + source.substring(at, run) + "\"; " + rule, at);
    }
    at = run;
  }

  /** The end of everything that is written without a space in between. */
  private int runEnd(int from) {
    int end = from;
    while (end < source.length()) {
      int c = source.codePointAt(end);
      boolean inTime = c == ':' && end + 1 < source.length() && isDigit(source.charAt(end + 1));
      if (!isWordPart(c) && c != '+' && c != '-' && c != '#' && !inTime) {
        break;
      }
      end += Character.charCount(c);
    }
    return end;
  }

  private void word() {
    int end = at;
    while (end < source.length() && isWordPart(source.codePointAt(end))) {
      end += Character.charCount(source.codePointAt(end));
    }
    add(TokenKind.WORD, source.substring(at, end), at);
    at = end;
  }

  private void sign(int c) {
    String sign = Character.toString(c);
    if (c == ',' || c == ':' || c == '<') {
      add(TokenKind.SIGN, sign, at);
    } else if (Character.isISOControl(c)) {
      add(TokenKind.INVALID, String.format("found the control character U+%04X", c), at);
    } else {
      add(TokenKind.INVALID,
          "found \"" + sign + "\", which has no meaning here; put names with it in quotes", at);
    }
    at += sign.length();
  }

  private void text() {
    int start = at;
    int end = lineEnd(at);
    StringBuilder text = new StringBuilder();
    at++;
    while (at < end && source.charAt(at) != '"') {
      if (source.charAt(at) != '\\') {
        text.append(source.charAt(at++));
      } else if (!escape(text, end)) {
        skipText(end);
        return;
      }
    }
    if (at >= end) {
      add(TokenKind.INVALID, "the text that begins here is not closed with \" on its line", start);
      return;
    }
    at++;
    add(TokenKind.TEXT, text.toString(), start);
  }

  /** After a wrong escape, goes on behind the text. */
  private void skipText(int end) {
    while (at < end && source.charAt(at) != '"') {
      at += source.charAt(at) == '\\' ? 2 : 1;
    }
    at = Math.min(end, at + 1);
  }

  private boolean escape(StringBuilder text, int end) {
    char c = at + 1 < end ? source.charAt(at + 1) : '\n';
    if (c == 'u') {
      return codePoint(text, end);
    }
    int known = "\"\\nt".indexOf(c);
    if (known < 0) {
      String found = "\\" + (c == '\n' ? "" : Character.toString(source.codePointAt(at + 1)));
      add(TokenKind.INVALID,
          "found " + found + " in a text; expected \\\", \\\\, \\n, \\t or \\u{...}", at);
      return false;
    }
    text.append("\"\\\n\t".charAt(known));
    at += 2;
    return true;
  }

  private boolean codePoint(StringBuilder text, int end) {
    int close = source.indexOf('}', at);
    boolean braces = at + 2 < end && source.charAt(at + 2) == '{' && close > at + 3 && close < end;
    String digits = braces ? source.substring(at + 3, close) : "";
    boolean hex = digits.length() <= MAX_CODE_POINT_DIGITS && digits.matches("[0-9a-fA-F]+");
    int c = hex ? Integer.parseInt(digits, 16) : -1;
    boolean surrogate = c >= Character.MIN_SURROGATE && c <= Character.MAX_SURROGATE;
    if (!Character.isValidCodePoint(c) || surrogate) {
      add(TokenKind.INVALID, "\\u must be followed by a code point in braces, such as \\u{20AC}",
          at);
      return false;
    }
    text.appendCodePoint(c);
    at = close + 1;
    return true;
  }

  private static boolean isDigit(int c) {
    return c >= '0' && c <= '9';
  }

  private static boolean isWordStart(int c) {
    return c == '_' || Character.isLetter(c);
  }

  private static boolean isWordPart(int c) {
    boolean mark = Character.getType(c) == Character.NON_SPACING_MARK
        || Character.getType(c) == Character.COMBINING_SPACING_MARK;
    return c == '_' || c == '.' || mark || Character.isLetterOrDigit(c);
  }
}
