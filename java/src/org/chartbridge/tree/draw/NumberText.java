// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.math.BigDecimal;
import java.math.MathContext;
import java.math.RoundingMode;
import java.text.DecimalFormat;
import java.text.DecimalFormatSymbols;
import java.util.Locale;
import java.util.NavigableSet;

/**
 * Numbers as texts. The digits before the decimal sign are never rounded away, nor those that tell
 * numbers apart which belong together.
 */
final class NumberText {
  /** From here on a double may not even hold each whole number. */
  private static final double LARGE = 1e15;
  private static final double SMALL = 1e-5;
  private static final char MINUS = '\u2212';
  /** A double has no more digits that mean anything. */
  static final int MOST_DIGITS = 17;
  /** How fine a text is in relation to the range of the numbers that belong together. */
  private static final int DIGITS_OF_RANGE = 3;

  private final int digits;
  private final DecimalFormat plain;
  private final DecimalFormat grouped;
  private final DecimalFormat scientific;
  private final DecimalFormat percent;

  NumberText(Locale locale, int digits) {
    this.digits = digits;
    DecimalFormatSymbols symbols = DecimalFormatSymbols.getInstance(locale);
    symbols.setMinusSign(MINUS);
    plain = format("0." + "#".repeat(22), symbols);
    grouped = format("#,##0.##", symbols);
    scientific = format("0." + "#".repeat(MOST_DIGITS - 1) + "E0", symbols);
    percent = format("0.#", symbols);
  }

  private static DecimalFormat format(String pattern, DecimalFormatSymbols symbols) {
    DecimalFormat format = new DecimalFormat(pattern, symbols);
    format.setRoundingMode(RoundingMode.HALF_EVEN);
    return format;
  }

  /** A number that stands for itself. */
  String number(double value) {
    return rounded(value, digits);
  }

  /**
   * One of several numbers that are compared.
   *
   * @param range the distance between the lowest and the highest of them; predictions such as
   *     100000001.2 and 100000001.7 have digits enough to be told apart
   */
  String number(double value, double range) {
    if (!(range > 0) || Double.isInfinite(range) || value == 0) {
      return number(value);
    }
    int finest = (int) Math.floor(Math.log10(range)) - Math.min(digits, DIGITS_OF_RANGE) + 1;
    int needed = (int) Math.floor(Math.log10(Math.abs(value))) - finest + 1;
    return rounded(value, Math.max(digits, Math.min(MOST_DIGITS, needed)));
  }

  private String rounded(double value, int significant) {
    if (Double.isNaN(value) || Double.isInfinite(value)) {
      return Double.toString(value);
    }
    if (value == 0) {
      return plain.format(0);
    }
    BigDecimal exact = new BigDecimal(Double.toString(value));
    double size = Math.abs(value);
    if (size >= LARGE || size < SMALL) {
      return scientific.format(exact.round(rounding(significant)));
    }
    int whole = size < 1 ? 0 : exact.precision() - exact.scale();
    return plain.format(exact.round(rounding(Math.max(significant, whole))));
  }

  private static MathContext rounding(int significant) {
    return new MathContext(significant, RoundingMode.HALF_EVEN);
  }

  /**
   * The value of a split: with one digit behind the decimal sign at least, since between whole
   * numbers the half decides, and with so many that it is not read as {@code others}.
   *
   * @param others the values of all splits that it might be confused with
   */
  String split(double value, NavigableSet<Double> others) {
    int whole = Math.abs(value) < 1 || Math.abs(value) >= LARGE
        ? 0 : (int) Math.floor(Math.log10(Math.abs(value))) + 2;
    int significant = Math.max(digits, whole);
    Double below = others.lower(value);
    Double above = others.higher(value);
    while (significant < MOST_DIGITS
        && (sameText(value, below, significant) || sameText(value, above, significant))) {
      significant++;
    }
    return rounded(value, significant);
  }

  private boolean sameText(double value, Double other, int significant) {
    return other != null && rounded(value, significant).equals(rounded(other, significant));
  }

  /** A number of records, which weights may have made a fraction. */
  String count(double value) {
    return grouped.format(value);
  }

  String share(double share) {
    double hundredths = 100 * share;
    if (hundredths > 0 && hundredths < 0.05) {
      return "<\u200A" + percent.format(0.1) + "\u2009%";
    }
    return percent.format(hundredths) + "\u2009%";
  }

  /** A value as the document writes it: a number is rounded, another text stays. */
  String value(String text) {
    double number = parsed(text);
    return Double.isNaN(number) ? text : number(number);
  }

  /** The value of a split as the document writes it: a number is rounded, another text stays. */
  String split(String text, NavigableSet<Double> others) {
    double number = parsed(text);
    return Double.isNaN(number) ? text : split(number, others);
  }

  /** The number that a text stands for; NaN when it is none. */
  static double parsed(String text) {
    String number = text.strip();
    // Java also reads 1d and 1f.
    if (number.isEmpty() || Character.isLetter(number.charAt(number.length() - 1))) {
      return Double.NaN;
    }
    try {
      return Double.parseDouble(number);
    } catch (NumberFormatException e) {
      return Double.NaN;
    }
  }
}
