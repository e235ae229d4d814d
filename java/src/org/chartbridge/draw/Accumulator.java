// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Arrays;
import org.chartbridge.chart.Aggregate;

/** Sums up the values of one mark. Missing values are left out. */
final class Accumulator {
  private final Aggregate aggregate;
  private long count;
  private double sum;
  private double correction;
  private double min = Double.POSITIVE_INFINITY;
  private double max = Double.NEGATIVE_INFINITY;
  private double[] values = new double[0];

  Accumulator(Aggregate aggregate) {
    this.aggregate = aggregate;
  }

  void add(double value) {
    if (Double.isNaN(value)) {
      return;
    }
    if (aggregate == Aggregate.MEDIAN) {
      if (count == values.length) {
        values = Arrays.copyOf(values, Math.max(8, values.length * 2));
      }
      values[(int) count] = value;
    }
    count++;
    min = Math.min(min, value);
    max = Math.max(max, value);
    addExactly(value);
  }

  /** Neumaier's summation, so that sums of decimals do not drift with the order of rows. */
  private void addExactly(double value) {
    double total = sum + value;
    boolean larger = Math.abs(sum) >= Math.abs(value);
    correction += larger ? (sum - total) + value : (value - total) + sum;
    sum = total;
  }

  /** The result; NaN when there was no value to sum up, but 0 for a count. */
  double result() {
    if (aggregate == Aggregate.COUNT) {
      return count;
    }
    if (count == 0) {
      return Double.NaN;
    }
    return switch (aggregate) {
      case SUM -> sum + correction;
      case MEAN -> (sum + correction) / count;
      case MIN -> min;
      case MAX -> max;
      case MEDIAN -> median();
      default -> throw new IllegalStateException(aggregate.toString());
    };
  }

  private double median() {
    double[] sorted = Arrays.copyOf(values, (int) count);
    Arrays.sort(sorted);
    return Quartiles.quantile(sorted, 0.5);
  }
}
