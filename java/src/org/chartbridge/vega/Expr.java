// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.util.ArrayList;
import java.util.List;

/** Writes expressions of Vega's expression language. */
final class Expr {
  /** How dates and times are written for readers, in UTC. */
  static final String DATE = "%Y %b %-d";
  static final String DATE_TIME = "%Y %b %-d %H:%M";

  private Expr() {}

  /** A field of the row at hand. */
  static String datum(String field) {
    return "datum[" + text(field) + "]";
  }

  static String isValid(String field) {
    return "isValid(" + datum(field) + ")";
  }

  /** A text literal; nothing in it is taken as part of the expression. */
  static String text(String text) {
    StringBuilder literal = new StringBuilder("'");
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      if (c == '\'' || c == '\\') {
        literal.append('\\').append(c);
      } else if (c < ' ' || c == '\u007f' || c == '\u2028' || c == '\u2029') {
        literal.append(String.format("\\u%04x", (int) c));
      } else {
        literal.append(c);
      }
    }
    return literal.append('\'').toString();
  }

  static String number(double value) {
    return Json.node(value).toString();
  }

  /** A list of texts and numbers. */
  static String list(List<?> values) {
    List<String> literals = new ArrayList<>();
    for (Object value : values) {
      literals.add(value instanceof Number number ? number(number.doubleValue())
                                                  : text(value.toString()));
    }
    return "[" + String.join(", ", literals) + "]";
  }

  /** The place of a field's value in a list, from 0; -1 when it is not there. */
  static String indexOf(List<?> values, String field) {
    return "indexof(" + list(values) + ", " + datum(field) + ")";
  }

  static String utcFormat(String value, String format) {
    return "utcFormat(" + value + ", " + text(format) + ")";
  }

  /** A number for a tooltip: about six digits, all digits of its whole part. */
  static String numberText(String value) {
    return "format(" + value + ", abs(" + value + ") < 1e6 ? ',.6~r' : ',.0f')";
  }

  /** A number for a label in the picture: about four digits, millions as M. */
  static String shortNumberText(String value) {
    return "abs(" + value + ") < 1e6 ? format(" + value + ", abs(" + value
        + ") < 1e4 ? ',.4~r' : ',.0f') : replace(format(" + value + ", '.3~s'), 'G', 'B')";
  }

  /** A share from 0 to 1 as percentage, with one decimal. */
  static String shareText(String value) {
    return "format(" + value + ", '.1~%')";
  }
}
