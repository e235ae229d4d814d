// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Arrays;
import java.util.function.DoubleUnaryOperator;

/**
 * Equal intervals that cover a range. Each holds the values from its lower end up to, but not
 * including, its upper end; the last holds its upper end too.
 *
 * @param start lower end of the first
 * @param width width of each
 * @param count how many
 */
record Bins(double start, double width, int count) {
  private static final double[] TIME_UNITS = {86_400_000, 3_600_000, 60_000, 1_000};
  private static final int MOST = 60;
  private static final int FEWEST = 5;

  /** A given number of bins over the values' range. */
  static Bins given(double[] values, int count) {
    double min = Arrays.stream(values).min().orElse(0);
    double max = Arrays.stream(values).max().orElse(1);
    if (min == max) {
      double half = min == 0 ? 0.5 : Math.abs(min) * 0.5;
      return new Bins(min - half, 2 * half / count, count);
    }
    return new Bins(min, (max - min) / count, count);
  }

  /**
   * Bins as wide as the rule of Freedman and Diaconis asks, rounded to a round width, at least 5
   * and at most about 60.
   */
  static Bins fitting(double[] values) {
    return fitting(values, width -> 1);
  }

  /** Bins of times: whole seconds, minutes, hours or days. */
  static Bins fittingTimes(double[] values) {
    return fitting(values, Bins::timeUnit);
  }

  private static double timeUnit(double width) {
    for (double unit : TIME_UNITS) {
      if (width >= unit) {
        return unit;
      }
    }
    return 1;
  }

  private static Bins fitting(double[] values, DoubleUnaryOperator units) {
    double[] sorted = values.clone();
    Arrays.sort(sorted);
    double min = sorted[0];
    double range = sorted[sorted.length - 1] - min;
    if (range == 0) {
      return given(values, 1);
    }
    double spread = Quartiles.quantile(sorted, 0.75) - Quartiles.quantile(sorted, 0.25);
    double width = 2 * spread / Math.cbrt(sorted.length);
    double sturges = range / (Math.ceil(Math.log(sorted.length) / Math.log(2)) + 1);
    width = width > 0 ? width : sturges;
    width = Math.max(range / MOST, Math.min(range / FEWEST, width));
    double whole = units.applyAsDouble(width);
    double round = Math.max(1, nearest(width / whole, range / whole)) * whole;
    if (whole == 1) {
      round = nearest(width, range);
    }
    double start = Math.floor(min / round + 1e-9) * round;
    int count = (int) Math.floor((sorted[sorted.length - 1] - start) / round + 1e-9) + 1;
    boolean endsOnEdge =
        Math.abs(start + (count - 1) * round - sorted[sorted.length - 1]) < round * 1e-9;
    return new Bins(start, round, endsOnEdge && count > 1 ? count - 1 : count);
  }

  private static double nearest(double width, double range) {
    double up = Ticks.step(width);
    double down = Ticks.step(up / 2.6);
    boolean downFits = range / down <= MOST;
    return downFits && width - down < up - width ? down : up;
  }

  double lower(int bin) {
    return edge(bin);
  }

  double upper(int bin) {
    return edge(bin + 1);
  }

  private double edge(int i) {
    double edge = start + i * width;
    return Math.abs(edge) < width * 1e-9 ? 0 : edge;
  }

  /** The bin that holds a value, or -1. */
  int of(double value) {
    int bin = (int) Math.floor((value - start) / width + 1e-9);
    if (bin == count && value <= upper(count - 1) + width * 1e-9) {
      return count - 1;
    }
    return bin < 0 || bin >= count ? -1 : bin;
  }
}
