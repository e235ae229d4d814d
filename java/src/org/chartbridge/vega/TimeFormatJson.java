// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import org.chartbridge.chart.ChartException;

/** Says a date pattern of {@link java.time.format.DateTimeFormatter} as a d3-time-format. */
final class TimeFormatJson {
  private final String where;
  private final String pattern;
  private final StringBuilder text = new StringBuilder();

  private TimeFormatJson(String where, String pattern) {
    this.where = where;
    this.pattern = pattern;
  }

  /**
   * @param where what messages call the place of the pattern
   * @param pattern the pattern
   * @throws ChartException when a letter of it has no form; the message names it
   */
  static String specifier(String where, String pattern) {
    return new TimeFormatJson(where, pattern).read();
  }

  private String read() {
    int i = 0;
    while (i < pattern.length()) {
      char c = pattern.charAt(i);
      if (c == '\'') {
        i = quoted(i + 1);
      } else if (Character.isLetter(c)) {
        int end = i;
        while (end < pattern.length() && pattern.charAt(end) == c) {
          end++;
        }
        text.append(directive(c, end - i));
        i = end;
      } else if ("[]{}#".indexOf(c) >= 0) {
        throw none(String.valueOf(c));
      } else {
        literal(c);
        i++;
      }
    }
    return text.toString();
  }

  private int quoted(int from) {
    if (from < pattern.length() && pattern.charAt(from) == '\'') {
      literal('\'');
      return from + 1;
    }
    int i = from;
    while (i < pattern.length()) {
      if (pattern.charAt(i) == '\'') {
        if (i + 1 >= pattern.length() || pattern.charAt(i + 1) != '\'') {
          return i + 1;
        }
        i++;
      }
      literal(pattern.charAt(i));
      i++;
    }
    return i;
  }

  private void literal(char c) {
    text.append(c == '%' ? "%%" : String.valueOf(c));
  }

  private ChartException none(String letters) {
    return new ChartException(where + ": \"" + letters + "\" of the format \"" + pattern
        + "\" has no form in Vega-Lite; choose one of y, M, d, E, H, h, m, s, S and a.");
  }

  private String directive(char letter, int count) {
    String known = switch (letter) {
      case 'y', 'u' -> count == 2 ? "%y" : count == 4 ? "%Y" : count == 1 ? "%-Y" : null;
      case 'M', 'L' -> month(count);
      case 'd' -> twoDigits("%d", "%-d", count);
      case 'D' -> count == 3 ? "%j" : count == 1 ? "%-j" : null;
      case 'E' -> count <= 3 ? "%a" : count == 4 ? "%A" : null;
      case 'H' -> twoDigits("%H", "%-H", count);
      case 'h' -> twoDigits("%I", "%-I", count);
      case 'm' -> twoDigits("%M", "%-M", count);
      case 's' -> twoDigits("%S", "%-S", count);
      case 'S' -> count == 3 ? "%L" : null;
      case 'a' -> count == 1 ? "%p" : null;
      case 'Q', 'q' -> count == 1 ? "%q" : count == 3 ? "Q%q" : null;
      default -> null;
    };
    if (known == null) {
      throw none(String.valueOf(letter).repeat(count));
    }
    return known;
  }

  private static String month(int count) {
    return switch (count) {
      case 1 -> "%-m";
      case 2 -> "%m";
      case 3 -> "%b";
      case 4 -> "%B";
      default -> null;
    };
  }

  private static String twoDigits(String padded, String plain, int count) {
    return count == 2 ? padded : count == 1 ? plain : null;
  }
}
