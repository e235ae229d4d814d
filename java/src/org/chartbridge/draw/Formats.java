// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

/** Texts of numbers. */
final class Formats {
  private Formats() {}

  /** A number as people write it in a sentence: no exponent, no trailing zeros. */
  static String plain(double value) {
    return new java.math.BigDecimal(Double.toString(value)).stripTrailingZeros().toPlainString();
  }
}
