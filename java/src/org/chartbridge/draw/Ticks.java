// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.math.BigDecimal;
import java.util.ArrayList;
import java.util.List;
import java.util.function.DoubleFunction;
import java.util.function.ToDoubleFunction;

/** Round places on linear and logarithmic axes. */
final class Ticks {
  private static final int MOST = 1000;
  private static final int[] MANTISSAS = {1, 2, 5};

  private Ticks() {}

  /** The smallest of 1, 2, 5 times a power of ten that is not below {@code rough}. */
  static double step(double rough) {
    int exponent = (int) Math.floor(Math.log10(rough));
    for (int shift = exponent; ; shift++) {
      for (int mantissa : MANTISSAS) {
        double step = BigDecimal.valueOf(mantissa).scaleByPowerOfTen(shift).doubleValue();
        if (step >= rough * (1 - 1e-9)) {
          return step;
        }
      }
    }
  }

  /**
   * The multiples of {@code step} from {@code lower} to {@code upper}, each the double nearest to
   * its decimal value.
   */
  static List<Double> multiples(double lower, double upper, double step) {
    BigDecimal exact = new BigDecimal(Double.toString(step));
    double slack = 1e-9;
    double first = Math.ceil(lower / step - slack);
    double last = Math.floor(upper / step + slack);
    List<Double> values = new ArrayList<>();
    for (double i = first; i <= last && values.size() < MOST; i++) {
      values.add(new BigDecimal(i).multiply(exact).doubleValue());
    }
    return values;
  }

  /**
   * Ticks of a linear axis, as many as fit.
   *
   * @param rough the smallest step wanted
   * @param fits whether labels that lie {@code step} apart have room, by the widest of them
   */
  static List<Tick> linear(double lower, double upper, double rough,
      java.util.function.BiPredicate<List<Tick>, Double> fits, StepFormat format) {
    double step = step(rough);
    List<Tick> ticks = labelled(lower, upper, step, format);
    for (int i = 0; i < 12 && ticks.size() > 1 && !fits.test(ticks, step); i++) {
      step = step(step * 1.5);
      ticks = labelled(lower, upper, step, format);
    }
    return ticks;
  }

  private static List<Tick> labelled(double lower, double upper, double step, StepFormat format) {
    DoubleFunction<String> text = format.of(step, Math.max(Math.abs(lower), Math.abs(upper)));
    List<Tick> ticks = new ArrayList<>();
    for (double value : multiples(lower, upper, step)) {
      ticks.add(Tick.of(value, text.apply(value)));
    }
    return ticks;
  }

  /** How numbers are written that lie {@code step} apart. */
  interface StepFormat {
    DoubleFunction<String> of(double step, double largest);
  }

  /**
   * Ticks of a logarithmic axis: powers of ten, with 2 and 5 between them where there is room, or
   * fewer powers where there is not.
   *
   * @param length the axis in pixels
   * @param size the room that a label takes along the axis
   */
  static List<Tick> log(double lower, double upper, double length, ToDoubleFunction<String> size,
      DoubleFunction<String> given, Formats formats) {
    double decades = Math.log10(upper) - Math.log10(lower);
    DoubleFunction<String> text = given != null ? given : logFormat(lower, upper, formats);
    if (decades < 1) {
      List<Tick> linear = shortLog(lower, upper, length, size, given, formats);
      if (linear.size() >= 2) {
        return linear;
      }
    }
    double perDecade = length / decades;
    List<Tick> fine = powers(lower, upper, MANTISSAS, 1, text);
    if (decades <= 4 && roomy(fine, perDecade * Math.log10(2), size)) {
      return fine;
    }
    int every = 1;
    List<Tick> coarse = powers(lower, upper, new int[] {1}, every, text);
    while (coarse.size() > 2 && !roomy(coarse, perDecade * every, size)) {
      every++;
      coarse = powers(lower, upper, new int[] {1}, every, text);
    }
    return coarse.size() >= 2 ? coarse : fine;
  }

  private static List<Tick> shortLog(double lower, double upper, double length,
      ToDoubleFunction<String> size, DoubleFunction<String> given, Formats formats) {
    double step = step((upper - lower) / Math.max(2, length / 60));
    for (int i = 0; i < 6; i++) {
      List<Tick> ticks = labelled(lower, upper, step,
          (apart, largest) -> given != null ? given : formats.ticks(apart, largest));
      double closest = Double.POSITIVE_INFINITY;
      for (int j = 1; j < ticks.size(); j++) {
        double ratio = ticks.get(j).value() / ticks.get(j - 1).value();
        closest = Math.min(closest, Math.log10(ratio) / Math.log10(upper / lower) * length);
      }
      if (roomy(ticks, closest, size)) {
        return ticks;
      }
      step = step(step * 1.5);
    }
    return List.of();
  }

  private static DoubleFunction<String> logFormat(double lower, double upper, Formats formats) {
    boolean plain = upper <= 1e6 && lower >= 1e-4;
    return value -> plain ? formats.number(value) : formats.power(value);
  }

  private static List<Tick> powers(double lower, double upper, int[] mantissas, int every,
      DoubleFunction<String> text) {
    List<Tick> ticks = new ArrayList<>();
    int first = (int) Math.floor(Math.log10(lower) - 1e-9);
    int last = (int) Math.ceil(Math.log10(upper) + 1e-9);
    for (int exponent = first; exponent <= last; exponent++) {
      if (Math.floorMod(exponent, every) != 0) {
        continue;
      }
      for (int mantissa : mantissas) {
        double value = new BigDecimal(mantissa).scaleByPowerOfTen(exponent).doubleValue();
        if (value >= lower * (1 - 1e-9) && value <= upper * (1 + 1e-9)) {
          ticks.add(Tick.of(value, text.apply(value)));
        }
      }
    }
    return ticks;
  }

  private static boolean roomy(List<Tick> ticks, double apart, ToDoubleFunction<String> size) {
    for (Tick tick : ticks) {
      for (String line : tick.lines()) {
        if (size.applyAsDouble(line) > apart) {
          return false;
        }
      }
    }
    return true;
  }
}
