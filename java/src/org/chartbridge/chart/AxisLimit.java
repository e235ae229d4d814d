// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.time.DateTimeException;
import java.time.Instant;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** The texts of axis limits: numbers, or ISO 8601 dates and date-times, which are read in UTC. */
public final class AxisLimit {
  private static final Pattern NUMBER =
      Pattern.compile("[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][+-]?[0-9]+)?");
  private static final Pattern DATE = Pattern.compile("[0-9]{4}-[0-9]{2}-[0-9]{2}");
  private static final Pattern TIME =
      Pattern.compile(DATE + "T[0-9]{2}:[0-9]{2}(:[0-9]{2}(\\.[0-9]{1,9})?)?");
  private static final Pattern ZONE = Pattern.compile("Z|[+-][0-9]{2}:[0-9]{2}");
  private static final long DAY = 86_400_000L;
  private static final long YEAR_1 = -62_135_596_800_000L;
  private static final long YEAR_10000 = 253_402_300_800_000L;

  private AxisLimit() {}

  /**
   * @return the number, or the time in milliseconds since 1970-01-01T00:00Z; null when the text is
   *     neither, or is a number beyond the range of a double
   */
  public static Double parse(String text) {
    if (NUMBER.matcher(text).matches()) {
      double number = Double.parseDouble(text);
      return Double.isInfinite(number) ? null : Double.valueOf(number);
    }
    try {
      return (double) instant(text).toEpochMilli();
    } catch (DateTimeException | ArithmeticException e) {
      return null;
    }
  }

  /** The number of a decimal text with a point; null when it is none. */
  public static Double parseNumber(String text) {
    return NUMBER.matcher(text).matches() ? parse(text) : null;
  }

  /**
   * The text that {@link #parse} reads back as the same value; a date where the axis shows times.
   */
  public static String text(double value, ScaleKind scale) {
    boolean isTime = scale == ScaleKind.TIME && value == Math.rint(value);
    if (!isTime || value < YEAR_1 || value >= YEAR_10000 || isNegativeZero(value)) {
      return numberText(value);
    }
    LocalDateTime time =
        LocalDateTime.ofInstant(Instant.ofEpochMilli((long) value), ZoneOffset.UTC);
    return (long) value % DAY == 0 ? time.toLocalDate().toString() : time.toString();
  }

  /** The shortest decimal text of the same value; whole numbers come without a point. */
  public static String numberText(double value) {
    boolean isWhole = value == Math.rint(value) && Math.abs(value) < 1e15 && !isNegativeZero(value);
    return isWhole ? Long.toString((long) value) : Double.toString(value);
  }

  private static boolean isNegativeZero(double value) {
    return value == 0 && 1 / value < 0;
  }

  private static Instant instant(String text) {
    if (DATE.matcher(text).matches()) {
      return LocalDate.parse(text).atStartOfDay(ZoneOffset.UTC).toInstant();
    }
    Matcher time = TIME.matcher(text);
    if (!time.lookingAt()) {
      throw new DateTimeException("no ISO 8601 date or date-time");
    }
    String zone = text.substring(time.end());
    if (!zone.isEmpty() && !ZONE.matcher(zone).matches()) {
      throw new DateTimeException("no zone");
    }
    LocalDateTime local = LocalDateTime.parse(time.group());
    return local.toInstant(zone.isEmpty() ? ZoneOffset.UTC : ZoneOffset.of(zone));
  }
}
