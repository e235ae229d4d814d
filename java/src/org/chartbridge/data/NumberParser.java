// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.charset.StandardCharsets;

/**
 * Reads decimal numbers from bytes: an optional sign, digits with an optional point, an optional
 * exponent, spaces around it. Short numbers, which is nearly all of them, are converted without
 * making a string; the result is always the nearest double.
 */
final class NumberParser {
  /** Beyond this, one more digit could leave the range of exactly representable whole numbers. */
  private static final long MAX_EXACT = (1L << 53) / 10 - 1;

  private static final int MAX_EXPONENT = 9999;

  /**
   * Powers of ten that a double holds exactly; a product or quotient with one of them is rounded
   * only once.
   */
  private static final double[] POWERS = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10,
      1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

  private NumberParser() {}

  /** The number, or NaN when the bytes are no finite decimal number. */
  static double parse(byte[] bytes, int from, int to) {
    int start = from;
    int end = to;
    while (start < end && bytes[start] == ' ') {
      start++;
    }
    while (end > start && bytes[end - 1] == ' ') {
      end--;
    }
    int i = start;
    boolean negative = i < end && bytes[i] == '-';
    if (negative || (i < end && bytes[i] == '+')) {
      i++;
    }
    long mantissa = 0;
    int scale = 0;
    int digits = 0;
    boolean exact = true;
    boolean fraction = false;
    for (; i < end; i++) {
      int digit = bytes[i] - '0';
      if (digit >= 0 && digit <= 9) {
        exact = exact && mantissa <= MAX_EXACT;
        mantissa = mantissa * 10 + digit;
        scale -= fraction ? 1 : 0;
        digits++;
      } else if (bytes[i] == '.' && !fraction) {
        fraction = true;
      } else {
        break;
      }
    }
    if (digits == 0) {
      return Double.NaN;
    }
    if (i < end) {
      int exponent = exponent(bytes, i, end);
      if (exponent == Integer.MIN_VALUE) {
        return Double.NaN;
      }
      scale += exponent;
    }
    if (!exact || Math.abs(scale) >= POWERS.length) {
      return library(bytes, start, end);
    }
    double value = scale < 0 ? mantissa / POWERS[-scale] : mantissa * POWERS[scale];
    return negative ? -value : value;
  }

  /** The exponent that begins at {@code from} with its letter, or MIN_VALUE when it is none. */
  private static int exponent(byte[] bytes, int from, int to) {
    if (bytes[from] != 'e' && bytes[from] != 'E') {
      return Integer.MIN_VALUE;
    }
    int i = from + 1;
    boolean negative = i < to && bytes[i] == '-';
    if (negative || (i < to && bytes[i] == '+')) {
      i++;
    }
    if (i == to) {
      return Integer.MIN_VALUE;
    }
    int exponent = 0;
    for (; i < to; i++) {
      int digit = bytes[i] - '0';
      if (digit < 0 || digit > 9) {
        return Integer.MIN_VALUE;
      }
      exponent = Math.min(exponent * 10 + digit, MAX_EXPONENT);
    }
    return negative ? -exponent : exponent;
  }

  private static double library(byte[] bytes, int from, int to) {
    double value =
        Double.parseDouble(new String(bytes, from, to - from, StandardCharsets.ISO_8859_1));
    return Double.isInfinite(value) ? Double.NaN : value;
  }
}
