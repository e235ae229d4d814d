// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.time.DateTimeException;
import java.time.Instant;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.time.OffsetDateTime;
import java.time.Year;
import java.time.YearMonth;
import java.time.ZoneOffset;
import java.time.ZonedDateTime;
import java.time.format.DateTimeFormatter;
import java.time.format.DateTimeFormatterBuilder;
import java.time.temporal.TemporalAccessor;
import java.util.Locale;
import org.chartbridge.chart.ChartException;

/**
 * Reads times of a {@link DateTimeFormatter} pattern, with English names of months and days in any
 * case. What a pattern leaves out is the earliest there is: January, the 1st, midnight, 1970-01-01;
 * a time without an offset or a zone is UTC.
 */
final class PatternTimeParser {
  private final String text;
  private final DateTimeFormatter formatter;

  PatternTimeParser(String column, String pattern) {
    text = pattern;
    try {
      formatter =
          new DateTimeFormatterBuilder().parseCaseInsensitive().appendPattern(pattern).toFormatter(
              Locale.ENGLISH);
    } catch (IllegalArgumentException e) {
      throw new ChartException("Column \"" + column + "\": \"" + pattern
              + "\" is not a date pattern: " + e.getMessage() + ".",
          e);
    }
  }

  String text() {
    return text;
  }

  /** Milliseconds since 1970-01-01T00:00Z, or {@link IsoTimeParser#NONE}. */
  long parse(byte[] bytes, int from, int to) {
    try {
      return instant(formatter.parseBest(Utf8.decode(bytes, from, to), ZonedDateTime::from,
                         OffsetDateTime::from, Instant::from, LocalDateTime::from, LocalDate::from,
                         YearMonth::from, Year::from, LocalTime::from))
          .toEpochMilli();
    } catch (DateTimeException | ArithmeticException e) {
      return IsoTimeParser.NONE;
    }
  }

  private static Instant instant(TemporalAccessor parsed) {
    if (parsed instanceof ZonedDateTime time) {
      return time.toInstant();
    }
    if (parsed instanceof OffsetDateTime time) {
      return time.toInstant();
    }
    if (parsed instanceof Instant time) {
      return time;
    }
    return localDateTime(parsed).toInstant(ZoneOffset.UTC);
  }

  private static LocalDateTime localDateTime(TemporalAccessor parsed) {
    if (parsed instanceof LocalDateTime time) {
      return time;
    }
    if (parsed instanceof LocalDate date) {
      return date.atStartOfDay();
    }
    if (parsed instanceof YearMonth month) {
      return month.atDay(1).atStartOfDay();
    }
    if (parsed instanceof Year year) {
      return year.atDay(1).atStartOfDay();
    }
    return LocalTime.from(parsed).atDate(LocalDate.EPOCH);
  }
}
