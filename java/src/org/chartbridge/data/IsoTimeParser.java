// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.time.DateTimeException;
import java.time.LocalDate;
import java.time.LocalTime;

/**
 * Reads the extended forms of ISO 8601 from bytes: a year, a year and month, a date, or a date and
 * a time of day with an optional offset. {@code T} or a space stands between date and time; a time
 * without an offset is UTC.
 */
final class IsoTimeParser {
  /** The answer for bytes that are no ISO 8601 time. */
  static final long NONE = Long.MIN_VALUE;

  private static final long MILLIS_PER_DAY = 86_400_000L;
  private static final int MILLIS_PER_MINUTE = 60_000;
  private static final int NANOS_PER_MILLI = 1_000_000;

  private byte[] bytes;
  private int position;
  private int end;
  private boolean valid;

  /**
   * Milliseconds since 1970-01-01T00:00Z, or {@link #NONE}. Fractions of a millisecond are cut
   * off.
   */
  long parse(byte[] text, int from, int to) {
    bytes = text;
    position = from;
    end = to;
    valid = true;
    try {
      long millis = dateAndTime();
      return valid && position == end ? millis : NONE;
    } catch (DateTimeException e) {
      return NONE;
    }
  }

  private long dateAndTime() {
    int year = digits(4);
    int month = accept('-') ? digits(2) : 1;
    boolean full = accept('-');
    int day = full ? digits(2) : 1;
    if (!valid) {
      return NONE;
    }
    long millis = LocalDate.of(year, month, day).toEpochDay() * MILLIS_PER_DAY;
    if (full && (accept('T') || accept('t') || accept(' '))) {
      millis += timeOfDay() - offset();
    }
    return millis;
  }

  private long timeOfDay() {
    int hour = digits(2);
    require(':');
    int minute = digits(2);
    int second = accept(':') ? digits(2) : 0;
    int nanos = accept('.') || accept(',') ? fraction() : 0;
    return valid ? LocalTime.of(hour, minute, second, nanos).toNanoOfDay() / NANOS_PER_MILLI : 0;
  }

  private int fraction() {
    int nanos = 0;
    int unit = 100_000_000;
    int start = position;
    while (position < end && isDigit(bytes[position])) {
      nanos += (bytes[position++] - '0') * unit;
      unit /= 10;
    }
    valid &= position > start;
    return nanos;
  }

  private long offset() {
    if (accept('Z') || accept('z')) {
      return 0;
    }
    boolean negative = accept('-');
    if (!negative && !accept('+')) {
      return 0;
    }
    int hours = digits(2);
    boolean colon = accept(':');
    int minutes = colon || position < end ? digits(2) : 0;
    valid &= hours <= 18 && minutes < 60;
    long millis = (hours * 60L + minutes) * MILLIS_PER_MINUTE;
    return negative ? -millis : millis;
  }

  private int digits(int count) {
    if (!valid || position + count > end) {
      valid = false;
      return 0;
    }
    int value = 0;
    for (int i = 0; i < count; i++) {
      byte b = bytes[position++];
      valid &= isDigit(b);
      value = value * 10 + (b - '0');
    }
    return value;
  }

  private static boolean isDigit(byte b) {
    return b >= '0' && b <= '9';
  }

  private boolean accept(char c) {
    if (position < end && bytes[position] == c) {
      position++;
      return true;
    }
    return false;
  }

  private void require(char c) {
    valid &= accept(c);
  }
}
