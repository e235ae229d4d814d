// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import org.chartbridge.chart.Aggregate;
import org.junit.jupiter.api.Test;

class StatisticsTest {
  private static double aggregate(Aggregate aggregate, double... values) {
    Accumulator sum = new Accumulator(aggregate);
    for (double value : values) {
      sum.add(value);
    }
    return sum.result();
  }

  @Test
  void aggregates() {
    double[] values = {4, Double.NaN, 1, 9, 2};
    assertEquals(4, aggregate(Aggregate.COUNT, values));
    assertEquals(16, aggregate(Aggregate.SUM, values));
    assertEquals(4, aggregate(Aggregate.MEAN, values));
    assertEquals(3, aggregate(Aggregate.MEDIAN, values));
    assertEquals(1, aggregate(Aggregate.MIN, values));
    assertEquals(9, aggregate(Aggregate.MAX, values));
    assertEquals(7, aggregate(Aggregate.MEDIAN, 9, 7, 1));
  }

  @Test
  void aggregatesOfNothingAreMissingButCountIsZero() {
    assertEquals(0, aggregate(Aggregate.COUNT, Double.NaN));
    for (Aggregate kind : new Aggregate[] {
        Aggregate.SUM, Aggregate.MEAN, Aggregate.MEDIAN, Aggregate.MIN, Aggregate.MAX}) {
      assertTrue(Double.isNaN(aggregate(kind, Double.NaN)), kind.toString());
    }
  }

  @Test
  void sumsDoNotLoseSmallValuesBesideLargeOnes() {
    assertEquals(2.0, aggregate(Aggregate.SUM, 1, 1e100, 1, -1e100));
    double[] tenths = new double[10];
    java.util.Arrays.fill(tenths, 0.1);
    assertEquals(1.0, aggregate(Aggregate.SUM, tenths));
  }

  @Test
  void quartilesInterpolateAndWhiskersEndAtValues() {
    Quartiles q = Quartiles.of(new double[] {7, 1, 2, 3, 4, 5, 6, 30, -20});
    assertEquals(9, q.count());
    assertEquals(2, q.q1());
    assertEquals(4, q.median());
    assertEquals(6, q.q3());
    assertEquals(1, q.lowWhisker());
    assertEquals(7, q.highWhisker());
    assertArrayEquals(new double[] {-20, 30}, q.outliers());
    Quartiles even = Quartiles.of(new double[] {1, 2, 3, 4});
    assertEquals(1.75, even.q1());
    assertEquals(2.5, even.median());
    assertEquals(3.25, even.q3());
  }

  @Test
  void quartilesOfOneValue() {
    Quartiles q = Quartiles.of(new double[] {5});
    assertEquals(5, q.lowWhisker());
    assertEquals(5, q.q1());
    assertEquals(5, q.highWhisker());
    assertEquals(0, q.outliers().length);
  }

  @Test
  void valueJustInsideTheWhiskersReachIsNoOutlier() {
    // The box is 2 to 6, so the whiskers reach to 12.
    assertEquals(0, Quartiles.of(new double[] {2, 2, 4, 6, 12}).outliers().length);
    assertEquals(1, Quartiles.of(new double[] {2, 2, 4, 6, 12.1}).outliers().length);
  }

  @Test
  void binsByFreedmanAndDiaconisAreRoundAndCoverTheData() {
    double[] values = ChartCases.doubles(1001, i -> i / 10.0);
    // The interquartile range is 50, so the rule says 2 * 50 / cbrt(1001) = 9.997; round: 10.
    Bins bins = Bins.fitting(values);
    assertEquals(new Bins(0, 10, 10), bins);
    assertEquals(0, bins.of(0));
    assertEquals(0, bins.of(9.9));
    assertEquals(1, bins.of(10));
    assertEquals(9, bins.of(100));
    assertEquals(-1, bins.of(100.1));
    assertEquals(-1, bins.of(-0.1));
  }

  @Test
  void binsAreCappedWhenOutliersStretchTheRange() {
    double[] values = ChartCases.doubles(1000, i -> i == 0 ? 1e6 : i / 1000.0);
    Bins bins = Bins.fitting(values);
    assertTrue(bins.count() <= 61, bins.toString());
    assertEquals(bins.count() - 1, bins.of(1e6));
  }

  @Test
  void givenBinsDivideTheRangeEvenly() {
    Bins bins = Bins.given(new double[] {2, 3, 12}, 5);
    assertEquals(new Bins(2, 2, 5), bins);
    assertEquals(4, bins.of(12));
    assertEquals(0, bins.of(3));
  }

  @Test
  void binsOfTimesAreWholeDaysOrHours() {
    double day = 86_400_000;
    double[] days = ChartCases.doubles(365, i -> (19_000 + i) * day);
    Bins bins = Bins.fittingTimes(days);
    assertEquals(0, bins.width() % day);
    assertEquals(0, bins.start() % day);
    double[] hours = ChartCases.doubles(100, i -> 19_000 * day + i * 3_600_000.0);
    assertEquals(0, Bins.fittingTimes(hours).width() % 3_600_000);
  }

  @Test
  void binsOfEqualValues() {
    Bins bins = Bins.fitting(new double[] {3, 3, 3});
    assertEquals(1, bins.count());
    assertEquals(0, bins.of(3));
  }
}
