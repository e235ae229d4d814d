// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.math.BigDecimal;
import java.math.MathContext;
import java.math.RoundingMode;
import java.text.DecimalFormat;
import java.text.DecimalFormatSymbols;
import java.util.Locale;

/** Numbers as texts. The digits before the decimal sign are never rounded away. */
final class NumberText {
  private static final double LARGE = 1e12;
  private static final double SMALL = 1e-5;
  private static final char MINUS = '\u2212';

  private final int digits;
  private final DecimalFormat plain;
  private final DecimalFormat grouped;
  private final DecimalFormat scientific;
  private final DecimalFormat percent;

  NumberText(Locale locale, int digits) {
    this.digits = digits;
    DecimalFormatSymbols symbols = DecimalFormatSymbols.getInstance(locale);
    symbols.setMinusSign(MINUS);
    plain = format("0.###############", symbols);
    grouped = format("#,##0.##", symbols);
    scientific = format("0." + "#".repeat(Math.max(0, digits - 1)) + "E0", symbols);
    percent = format("0.#", symbols);
  }

  private static DecimalFormat format(String pattern, DecimalFormatSymbols symbols) {
    DecimalFormat format = new DecimalFormat(pattern, symbols);
    format.setRoundingMode(RoundingMode.HALF_EVEN);
    return format;
  }

  /** A prediction, a mean or the value of a split. */
  String number(double value) {
    if (Double.isNaN(value) || Double.isInfinite(value)) {
      return Double.toString(value);
    }
    double size = Math.abs(value);
    if (size >= LARGE || size > 0 && size < SMALL) {
      return scientific.format(value);
    }
    BigDecimal exact = new BigDecimal(Double.toString(value));
    int whole = size < 1 ? 0 : exact.precision() - exact.scale();
    BigDecimal rounded =
        exact.round(new MathContext(Math.max(digits, whole), RoundingMode.HALF_EVEN));
    return plain.format(rounded);
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
    try {
      double number = Double.parseDouble(text.strip());
      boolean word = Character.isLetter(text.strip().charAt(text.strip().length() - 1));
      return word || Double.isNaN(number) ? text : number(number);
    } catch (NumberFormatException e) {
      return text;
    }
  }
}
