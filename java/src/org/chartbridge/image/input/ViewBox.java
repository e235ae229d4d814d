// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.regex.Pattern;

/** The four numbers of a {@code viewBox}. */
record ViewBox(double left, double top, double width, double height) {
  /** What repeats keeps what it has, so that a long value takes no time by its square. */
  private static final Pattern NUMBER =
      Pattern.compile("[+-]?([0-9]++(\\.[0-9]*+)?|\\.[0-9]++)([eE][+-]?[0-9]++)?");
  private static final Pattern SEPARATOR = Pattern.compile("[\\s,]++");
  private static final int COUNT = 4;

  /** Null for what is not four numbers with blanks or commas between them. */
  static ViewBox parse(String value) {
    String[] parts = SEPARATOR.split(value.strip(), COUNT + 1);
    if (parts.length != COUNT) {
      return null;
    }
    double[] numbers = new double[COUNT];
    for (int i = 0; i < COUNT; i++) {
      if (!NUMBER.matcher(parts[i]).matches()) {
        return null;
      }
      numbers[i] = Double.parseDouble(parts[i]);
    }
    return new ViewBox(numbers[0], numbers[1], numbers[2], numbers[3]);
  }
}
