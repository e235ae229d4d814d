// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.time.Instant;
import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.time.format.DateTimeFormatter;
import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.ColumnKind;

/** Points in time as milliseconds since 1970-01-01T00:00Z; NaN where one is missing. */
final class TimeColumn implements Column {
  private static final long MILLIS_PER_SECOND = 1000;
  private static final long MILLIS_PER_MINUTE = 60 * MILLIS_PER_SECOND;
  private static final long MILLIS_PER_DAY = 24 * 60 * MILLIS_PER_MINUTE;

  private final String name;
  private final double[] millis;
  private final DateTimeFormatter formatter;

  TimeColumn(String name, double[] millis) {
    this.name = name;
    this.millis = millis;
    formatter = DateTimeFormatter.ofPattern(pattern(millis), Locale.ROOT);
  }

  /** The shortest ISO 8601 form that tells all these times apart. */
  private static String pattern(double[] millis) {
    boolean days = true;
    boolean minutes = true;
    boolean seconds = true;
    for (double time : millis) {
      if (Double.isNaN(time)) {
        continue;
      }
      long value = (long) time;
      days &= value % MILLIS_PER_DAY == 0;
      minutes &= value % MILLIS_PER_MINUTE == 0;
      seconds &= value % MILLIS_PER_SECOND == 0;
    }
    if (days) {
      return "uuuu-MM-dd";
    }
    if (minutes) {
      return "uuuu-MM-dd HH:mm";
    }
    return seconds ? "uuuu-MM-dd HH:mm:ss" : "uuuu-MM-dd HH:mm:ss.SSS";
  }

  @Override
  public String name() {
    return name;
  }

  @Override
  public ColumnKind kind() {
    return ColumnKind.TIME;
  }

  @Override
  public int size() {
    return millis.length;
  }

  @Override
  public boolean isMissing(int row) {
    return Double.isNaN(millis[row]);
  }

  @Override
  public double number(int row) {
    return millis[row];
  }

  @Override
  public int category(int row) {
    throw new UnsupportedOperationException("column \"" + name + "\" holds times");
  }

  @Override
  public List<String> categories() {
    throw new UnsupportedOperationException("column \"" + name + "\" holds times");
  }

  @Override
  public String text(int row) {
    if (isMissing(row)) {
      return "";
    }
    Instant instant = Instant.ofEpochMilli((long) millis[row]);
    return formatter.format(LocalDateTime.ofInstant(instant, ZoneOffset.UTC));
  }
}
