// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.math.BigDecimal;
import java.math.MathContext;
import java.text.DecimalFormat;
import java.text.DecimalFormatSymbols;
import java.text.NumberFormat;
import java.time.Instant;
import java.time.ZoneOffset;
import java.time.ZonedDateTime;
import java.time.chrono.IsoChronology;
import java.time.format.DateTimeFormatter;
import java.time.format.DateTimeFormatterBuilder;
import java.time.format.FormatStyle;
import java.util.Locale;
import java.util.function.DoubleFunction;

/**
 * Texts of numbers, shares and times in one locale. Times are shown in UTC, the zone they are
 * stored in.
 */
final class Formats {
  private static final String SUPERSCRIPTS =
      "\u2070\u00b9\u00b2\u00b3\u2074\u2075\u2076\u2077\u2078\u2079";
  private static final double COMPACT_FROM = 1e6;
  private static final double LARGEST_PLAIN = 1e15;
  private static final double SMALLEST_PLAIN = 1e-5;
  private static final int TOOLTIP_DIGITS = 6;
  private static final int LABEL_DIGITS = 4;

  private final Locale locale;
  private final NumberFormat number;
  private final NumberFormat percent;
  /** Made when the first time is written: the locale's date texts take long to load. */
  private TimeFormats times;

  /** The date and time formats of a locale. */
  private static final class TimeFormats {
    final DateTimeFormatter date;
    final DateTimeFormatter dateTime;
    final DateTimeFormatter dayAndMonth;
    final DateTimeFormatter month;
    final DateTimeFormatter year;
    final DateTimeFormatter shortTime;
    final DateTimeFormatter mediumTime;

    TimeFormats(Locale locale) {
      date = DateTimeFormatter.ofLocalizedDate(FormatStyle.MEDIUM).withLocale(locale);
      dateTime = DateTimeFormatter.ofLocalizedDateTime(FormatStyle.MEDIUM, FormatStyle.SHORT)
          .withLocale(locale);
      dayAndMonth = DateTimeFormatter.ofPattern(dayAndMonthPattern(locale), locale);
      month = DateTimeFormatter.ofPattern("LLL", locale);
      year = DateTimeFormatter.ofPattern("u", locale);
      shortTime = DateTimeFormatter.ofLocalizedTime(FormatStyle.SHORT).withLocale(locale);
      mediumTime = DateTimeFormatter.ofLocalizedTime(FormatStyle.MEDIUM).withLocale(locale);
    }
  }

  Formats(Locale locale) {
    this.locale = locale;
    number = NumberFormat.getNumberInstance(locale);
    number.setMaximumFractionDigits(15);
    percent = NumberFormat.getPercentInstance(locale);
  }

  private TimeFormats times() {
    if (times == null) {
      times = new TimeFormats(locale);
    }
    return times;
  }

  private static String dayAndMonthPattern(Locale locale) {
    String full = DateTimeFormatterBuilder.getLocalizedDateTimePattern(
        FormatStyle.MEDIUM, null, IsoChronology.INSTANCE, locale);
    String pattern =
        full.replaceAll("[,\\s]*(\\bde\\b\\s*)?'?[yu]+[^dM]*", full.matches("[yu].*") ? "" : "")
            .replaceAll("[\\s/\\-,]+$", "");
    try {
      DateTimeFormatter.ofPattern(pattern, locale);
      return pattern.contains("d") && (pattern.contains("M") || pattern.contains("L"))
          ? pattern : "d MMM";
    } catch (IllegalArgumentException e) {
      return "d MMM";
    }
  }

  /** A number as people write it in a sentence: no exponent, no trailing zeros, a decimal point. */
  static String plain(double value) {
    if (Double.isNaN(value) || Double.isInfinite(value)) {
      return Double.toString(value);
    }
    if (value == 0) {
      return "0";
    }
    double size = Math.abs(value);
    BigDecimal exact = new BigDecimal(Double.toString(value)).stripTrailingZeros();
    return size < LARGEST_PLAIN && size > 1e-9 ? exact.toPlainString() : exact.toString();
  }

  /** A value for a tooltip or a label: about six digits, more where the whole part has more. */
  String number(double value) {
    if (value == 0 || Double.isNaN(value)) {
      return number.format(Double.isNaN(value) ? Double.NaN : 0);
    }
    double size = Math.abs(value);
    if (size >= LARGEST_PLAIN || size < SMALLEST_PLAIN) {
      return power(value);
    }
    int whole = (int) Math.floor(Math.log10(size)) + 1;
    int digits = Math.max(TOOLTIP_DIGITS, whole);
    return number.format(new BigDecimal(value).round(new MathContext(digits)));
  }

  /** A value for a label in the picture: about four digits. */
  String shortNumber(double value) {
    double size = Math.abs(value);
    if (size >= COMPACT_FROM || size < SMALLEST_PLAIN) {
      return size >= COMPACT_FROM && size < LARGEST_PLAIN ? compact(value) : number(value);
    }
    int whole = (int) Math.floor(Math.log10(size)) + 1;
    int digits = Math.max(LABEL_DIGITS, whole);
    return number.format(new BigDecimal(value).round(new MathContext(digits)));
  }

  private String compact(double value) {
    NumberFormat format = NumberFormat.getCompactNumberInstance(locale, NumberFormat.Style.SHORT);
    format.setMaximumFractionDigits(2);
    return format.format(value);
  }

  /** A share for a label, never rounded down to nothing. */
  String shareLabel(double value) {
    if (value > 0 && value < 0.001) {
      return "<" + share(0.001, 1);
    }
    return share(value, value < 0.0095 ? 1 : 0);
  }

  /** A share from 0 to 1 as percentage. */
  String share(double value, int digits) {
    NumberFormat format = (NumberFormat) percent.clone();
    format.setMaximumFractionDigits(digits);
    return format.format(value);
  }

  /** A point in time. */
  String time(double millis, boolean dateOnly) {
    return (dateOnly ? times().date : times().dateTime).format(at(millis));
  }

  String dayAndMonth(double millis) {
    return times().dayAndMonth.format(at(millis));
  }

  String date(double millis) {
    return times().date.format(at(millis));
  }

  String month(double millis) {
    return times().month.format(at(millis));
  }

  String year(double millis) {
    return times().year.format(at(millis));
  }

  String clock(double millis, boolean seconds) {
    return (seconds ? times().mediumTime : times().shortTime).format(at(millis));
  }

  String clockWithMillis(double millis) {
    return times().mediumTime.format(at(millis))
        + DecimalFormatSymbols.getInstance(locale).getDecimalSeparator()
        + String.format(Locale.ROOT, "%03d", Math.floorMod((long) Math.floor(millis), 1000L));
  }

  private static ZonedDateTime at(double millis) {
    return Instant.ofEpochMilli((long) Math.floor(millis)).atZone(ZoneOffset.UTC);
  }

  /**
   * How ticks are written that lie {@code step} apart: all with the same number of decimals.
   *
   * @param largest the largest absolute value on the axis
   */
  DoubleFunction<String> ticks(double step, double largest) {
    int exponent = (int) Math.floor(Math.log10(step) + 1e-9);
    if (largest >= LARGEST_PLAIN || step < SMALLEST_PLAIN / 10) {
      return value -> Math.abs(value) < step / 2 ? number.format(0) : power(value);
    }
    if (largest >= COMPACT_FROM && compactDigits(exponent, largest) <= 2) {
      NumberFormat compact =
          NumberFormat.getCompactNumberInstance(locale, NumberFormat.Style.SHORT);
      compact.setMaximumFractionDigits(2);
      return value -> Math.abs(value) < step / 2 ? compact.format(0) : compact.format(value);
    }
    NumberFormat format = NumberFormat.getNumberInstance(locale);
    int decimals = Math.max(0, -exponent);
    format.setMinimumFractionDigits(decimals);
    format.setMaximumFractionDigits(decimals);
    return value -> format.format(Math.abs(value) < step / 2 ? 0 : value);
  }

  private static int compactDigits(int exponent, double largest) {
    int unit = (int) Math.floor(Math.log10(largest)) / 3 * 3;
    return Math.max(0, unit - exponent);
  }

  /** A value as digits times a power of ten. */
  String power(double value) {
    BigDecimal rounded = new BigDecimal(value).round(new MathContext(TOOLTIP_DIGITS));
    int exponent = rounded.precision() - rounded.scale() - 1;
    BigDecimal digits = rounded.scaleByPowerOfTen(-exponent).stripTrailingZeros();
    String ten = "10" + superscript(exponent);
    if (digits.compareTo(BigDecimal.ONE) == 0) {
      return ten;
    }
    return number.format(digits) + "\u00d7" + ten;
  }

  private static String superscript(int exponent) {
    StringBuilder text = new StringBuilder(exponent < 0 ? "\u207b" : "");
    for (char digit : Integer.toString(Math.abs(exponent)).toCharArray()) {
      text.append(SUPERSCRIPTS.charAt(digit - '0'));
    }
    return text.toString();
  }

  /**
   * A number format of the chart's own.
   *
   * @throws IllegalArgumentException when the pattern is none
   */
  DoubleFunction<String> numberPattern(String pattern) {
    DecimalFormat format = new DecimalFormat(pattern, DecimalFormatSymbols.getInstance(locale));
    return format::format;
  }

  /**
   * A date format of the chart's own.
   *
   * @throws IllegalArgumentException when the pattern is none
   */
  DoubleFunction<String> timePattern(String pattern) {
    DateTimeFormatter format = DateTimeFormatter.ofPattern(pattern, locale);
    format.format(at(0));
    return value -> format.format(at(value));
  }
}
