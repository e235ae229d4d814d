// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import org.chartbridge.chart.ChartException;

/**
 * Says a number pattern of {@link java.text.DecimalFormat} as an expression of d3-format. Signs
 * stand before a prefix, as the pattern has them.
 */
final class NumberFormatJson {
  private static final String PARTS = "#0,.";

  private final String where;
  private final String pattern;
  private final StringBuilder prefix = new StringBuilder();
  private final StringBuilder digits = new StringBuilder();
  private final StringBuilder suffix = new StringBuilder();
  private boolean percent;

  private NumberFormatJson(String where, String pattern) {
    this.where = where;
    this.pattern = pattern;
  }

  /**
   * The expression of a value's text.
   *
   * @param where what messages call the place of the pattern, for example {@code Axis y}
   * @param pattern the pattern
   * @param value the expression of the value
   */
  static String expression(String where, String pattern, String value) {
    return new NumberFormatJson(where, pattern).read().write(value);
  }

  private ChartException none(String what) {
    return new ChartException(where + ": the format \"" + pattern + "\" has no form in Vega-Lite, "
        + "which has no number format with " + what + "; choose one such as #,##0.0 or 0%.");
  }

  private NumberFormatJson read() {
    int i = 0;
    while (i < pattern.length()) {
      char c = pattern.charAt(i);
      if (c == '\'') {
        i = quoted(i + 1);
      } else if (PARTS.indexOf(c) >= 0) {
        if (!suffix.isEmpty()) {
          throw none("digits in two places");
        }
        digits.append(c);
        i++;
      } else {
        literal(c);
        i++;
      }
    }
    return this;
  }

  private StringBuilder side() {
    return digits.isEmpty() ? prefix : suffix;
  }

  private int quoted(int from) {
    if (from < pattern.length() && pattern.charAt(from) == '\'') {
      side().append('\'');
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
      side().append(pattern.charAt(i));
      i++;
    }
    return i;
  }

  private void literal(char c) {
    switch (c) {
      case ';' -> throw none("a pattern of its own for negative numbers");
      case '\u00a4' -> throw none("a currency sign");
      case '\u2030' -> throw none("per mille");
      case 'E' -> {
        if (!digits.isEmpty()) {
          throw none("an exponent");
        }
        side().append(c);
      }
      case '%' -> {
        percent = true;
        side().append(c);
      }
      default -> side().append(c);
    }
  }

  private String write(String value) {
    String specifier = specifier();
    String number = percent ? "100 * " + value : value;
    if (prefix.isEmpty()) {
      String text = "format(" + number + ", " + Expr.text(specifier) + ")";
      return suffix.isEmpty() ? text : text + " + " + Expr.text(suffix.toString());
    }
    String text = "(" + value + " < 0 ? '\u2212' : '') + " + Expr.text(prefix.toString())
        + " + format(abs(" + number + "), " + Expr.text(specifier) + ")";
    return suffix.isEmpty() ? text : text + " + " + Expr.text(suffix.toString());
  }

  private String specifier() {
    int point = digits.indexOf(".");
    String whole = point < 0 ? digits.toString() : digits.substring(0, point);
    String fraction = point < 0 ? "" : digits.substring(point + 1);
    if (fraction.indexOf(',') >= 0) {
      throw none("groups behind the point");
    }
    int least = (int) fraction.chars().filter(c -> c == '0').count();
    if (least != 0 && least != fraction.length()) {
      throw none("both required and optional decimals");
    }
    int group = whole.lastIndexOf(',');
    if (group >= 0 && whole.length() - group - 1 != 3) {
      throw none("groups of other than three digits");
    }
    String trim = least == 0 && !fraction.isEmpty() ? "~" : "";
    return padding(whole) + (group >= 0 ? "," : "") + "." + fraction.length() + trim + "f";
  }

  private String padding(String whole) {
    if (whole.chars().filter(c -> c == '0').count() > 1) {
      throw none("leading zeros");
    }
    return "";
  }
}
