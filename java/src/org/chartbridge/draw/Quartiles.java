// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Arrays;

/**
 * The five numbers of a box plot, and what lies outside of them. Quantiles interpolate between the
 * two nearest values (type 7 of Hyndman and Fan); whiskers end at the last value within 1.5
 * interquartile ranges of the box.
 */
record Quartiles(
    int count, double lowWhisker, double q1, double median, double q3, double highWhisker,
    double[] outliers) {
  private static final double WHISKER = 1.5;

  static Quartiles of(double[] values) {
    double[] sorted = values.clone();
    Arrays.sort(sorted);
    double q1 = quantile(sorted, 0.25);
    double q3 = quantile(sorted, 0.75);
    double reach = WHISKER * (q3 - q1);
    double low = q1;
    double high = q3;
    double[] outside = new double[sorted.length];
    int outsideCount = 0;
    for (double value : sorted) {
      if (value < q1 - reach || value > q3 + reach) {
        outside[outsideCount++] = value;
      } else {
        low = Math.min(low, value);
        high = Math.max(high, value);
      }
    }
    return new Quartiles(sorted.length, low, q1, quantile(sorted, 0.5), q3, high,
        Arrays.copyOf(outside, outsideCount));
  }

  static double quantile(double[] sorted, double share) {
    double place = share * (sorted.length - 1);
    int below = (int) Math.floor(place);
    int above = Math.min(below + 1, sorted.length - 1);
    return sorted[below] + (place - below) * (sorted[above] - sorted[below]);
  }
}
