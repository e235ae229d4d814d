// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import java.util.Random;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.ScaleKind;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class AxisLimitTest {
  @ParameterizedTest
  @CsvSource({"0,0", "-5,-5", "+.5,0.5", "5.,5", "1e3,1000", "1.5E-3,0.0015", "1970-01-01,0",
      "1970-01-02,86400000", "1969-12-31,-86400000", "1970-01-01T12:00,43200000",
      "1970-01-01T00:00:01.25,1250", "1970-01-01T00:00Z,0", "1970-01-01T00:00-01:30,5400000",
      "1970-01-01T02:00:00+02:00,0", "0001-01-01,-62135596800000"})
  void
  readsNumbersAndDates(String text, double value) {
    assertEquals(value, AxisLimit.parse(text));
  }

  @ParameterizedTest
  @ValueSource(
      strings = {
        "", " ", "a", "1,5", "1 000", "--1", "1e", "e5", "0x10", "1f", "NaN", "Infinity", "1e999",
        "2024-02-30", "2024-1-1", "2024-01", "24-01-01", "2024-01-01T", "2024-01-01T25:00",
        "2024-01-01 12:00", "2024-01-01T12:00+2", "+12024-01-01", "-0001-01-01", "2024-01-01T12",
        "2024-01-01T12:00:00.", "2024-01-01T12:00+25:00", "2024-01-01Z"
      })
  void refusesEverythingElse(String text) {
    assertNull(AxisLimit.parse(text));
  }

  @Test
  void datesAreNoNumbers() {
    assertNull(AxisLimit.parseNumber("2024-01-01"));
    assertEquals(1.5, AxisLimit.parseNumber("1.5"));
  }

  @ParameterizedTest
  @CsvSource({"0,1970-01-01", "43200000,1970-01-01T12:00", "86400000,1970-01-02",
      "-1,1969-12-31T23:59:59.999", "1000,1970-01-01T00:00:01", "0.5,0.5", "-0.0,-0.0",
      "253402300800000,253402300800000", "-62135596800000,0001-01-01",
      "-62135596800001,-62135596800001"})
  void
  writesTimes(double value, String text) {
    assertEquals(text, AxisLimit.text(value, ScaleKind.TIME));
    assertEquals(value, AxisLimit.parse(text));
  }

  @ParameterizedTest
  @CsvSource(
      {"0,0", "-0.0,-0.0", "12,12", "0.1,0.1", "1e15,1.0E15", "999999999999999,999999999999999"})
  void
  writesNumbers(double value, String text) {
    assertEquals(text, AxisLimit.text(value, ScaleKind.AUTO));
    assertEquals(value, AxisLimit.parse(text));
  }

  @Test
  void readsBackWhatItWrites() {
    Random random = new Random(3);
    for (int i = 0; i < 20_000; i++) {
      double value = Double.longBitsToDouble(random.nextLong());
      if (Double.isFinite(value)) {
        assertEquals(value, AxisLimit.parse(AxisLimit.text(value, ScaleKind.LINEAR)));
        double millis = Math.rint(random.nextGaussian() * 1e13);
        assertEquals(millis, AxisLimit.parse(AxisLimit.text(millis, ScaleKind.TIME)));
      }
    }
  }
}
