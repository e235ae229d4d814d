// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.util.List;
import java.util.Locale;
import org.junit.jupiter.api.Test;

class TicksTest {
  private static final Formats ENGLISH = new Formats(Locale.ENGLISH);

  private static List<String> linear(double lower, double upper, double rough, Locale locale) {
    return texts(
        Ticks.linear(lower, upper, rough, (ticks, step) -> true, new Formats(locale)::ticks));
  }

  private static List<String> texts(List<Tick> ticks) {
    return ticks.stream().map(tick -> String.join("|", tick.lines())).toList();
  }

  private static double at(String time) {
    return LocalDateTime.parse(time).toInstant(ZoneOffset.UTC).toEpochMilli();
  }

  private static List<String> times(String from, String to, double smallest, Locale locale) {
    return texts(TimeTicks.of(at(from), at(to), smallest, false, null, new Formats(locale),
        (ticks, step) -> true));
  }

  @Test
  void stepsAreOneTwoOrFiveTimesAPowerOfTen() {
    assertEquals(1, Ticks.step(0.7));
    assertEquals(2, Ticks.step(1.01));
    assertEquals(5, Ticks.step(2.01));
    assertEquals(10, Ticks.step(5.01));
    assertEquals(0.001, Ticks.step(0.0006));
    assertEquals(0.2, Ticks.step(0.2));
    assertEquals(1e6, Ticks.step(600_000));
  }

  @Test
  void multiplesAreExactDecimals() {
    assertEquals(List.of(0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7), Ticks.multiples(0, 0.7, 0.1));
    assertEquals(List.of(-0.3, -0.2, -0.1, 0.0), Ticks.multiples(-0.3, 0, 0.1));
    assertEquals(List.of(1e-7, 2e-7, 3e-7), Ticks.multiples(1e-7, 3e-7, 1e-7));
  }

  @Test
  void linearTicksShareTheirDecimals() {
    assertEquals(List.of("0.0", "0.5", "1.0", "1.5"), linear(0, 1.5, 0.4, Locale.ENGLISH));
    assertEquals(List.of("0,00", "0,05", "0,10"), linear(0, 0.1, 0.05, Locale.GERMANY));
    assertEquals(List.of("-50", "0", "50"), linear(-50, 50, 40, Locale.ENGLISH));
    assertEquals(List.of("1.000", "1.500", "2.000"), linear(1000, 2000, 500, Locale.GERMANY));
  }

  @Test
  void largeAndSmallNumbersAreShort() {
    assertEquals(List.of("0", "1M", "2M"), linear(0, 2e6, 1e6, Locale.ENGLISH));
    assertEquals(List.of("0", "500K", "1M"), linear(0, 1e6, 5e5, Locale.ENGLISH));
    assertEquals(List.of("0", "1\u00a0Mio.", "2\u00a0Mio."), linear(0, 2e6, 1e6, Locale.GERMANY));
    assertEquals(List.of("0", "10\u207b\u2077", "2\u00d710\u207b\u2077"),
        linear(0, 2e-7, 1e-7, Locale.ENGLISH));
    assertEquals(List.of("1,000,000.00", "1,000,000.05", "1,000,000.10"),
        linear(1_000_000, 1_000_000.1, 0.05, Locale.ENGLISH));
  }

  @Test
  void denserThanTheLabelsAllowIsNotTaken() {
    List<Tick> ticks =
        Ticks.linear(0, 100, 1, (list, step) -> list.size() <= 5, ENGLISH::ticks);
    assertEquals(List.of("0", "50", "100"), texts(ticks));
  }

  @Test
  void logTicksArePowersWithTwoAndFiveWhereTheyFit() {
    List<Tick> wide = Ticks.log(1, 100, 800, text -> 30, null, ENGLISH);
    assertEquals(List.of("1", "2", "5", "10", "20", "50", "100"), texts(wide));
    List<Tick> narrow = Ticks.log(1, 100, 120, text -> 30, null, ENGLISH);
    assertEquals(List.of("1", "10", "100"), texts(narrow));
    List<Tick> eight = Ticks.log(1e-4, 1e8, 600, text -> 30, null, ENGLISH);
    assertEquals("10\u207b\u2074", texts(eight).get(0));
    assertEquals("10\u2078", texts(eight).get(eight.size() - 1));
    assertEquals(13, eight.size());
    List<Tick> sparse = Ticks.log(1e-4, 1e8, 200, text -> 30, null, ENGLISH);
    assertEquals(List.of("10\u207b\u2074", "10\u207b\u00b2", "10\u2070", "10\u00b2", "10\u2074",
                     "10\u2076", "10\u2078"),
        texts(sparse).stream().map(t -> t.equals("1") ? "10\u2070" : t).toList());
  }

  @Test
  void monthsNameTheYearOnce() {
    double month = 28 * 86_400_000.0;
    assertEquals(List.of("Nov|2023", "Dec", "Jan|2024", "Feb"),
        times("2023-10-20T00:00", "2024-02-10T00:00", month, Locale.ENGLISH));
    assertEquals(List.of("Nov|2023", "Dez", "Jan|2024"),
        times("2023-10-20T00:00", "2024-01-10T00:00", month, Locale.GERMANY));
  }

  @Test
  void yearsStandAtTheirFirstDay() {
    double year = 360 * 86_400_000.0;
    assertEquals(List.of("2020", "2021", "2022"),
        times("2020-01-01T00:00", "2022-06-01T00:00", year, Locale.ENGLISH));
    assertEquals(List.of("1900", "1950", "2000"),
        times("1890-01-01T00:00", "2022-06-01T00:00", 40 * year, Locale.ENGLISH));
  }

  @Test
  void weeksStartOnMondays() {
    List<Double> places = TimeTicks.places(at("2024-01-03T00:00"), at("2024-01-20T00:00"),
        new TimeTicks.Step(java.time.temporal.ChronoUnit.WEEKS, 1, 7 * 86_400_000.0));
    assertEquals(List.of(at("2024-01-08T00:00"), at("2024-01-15T00:00")), places);
  }

  @Test
  void daysAreWrittenInTheOrderOfTheLocale() {
    double day = 86_400_000;
    assertEquals(List.of("Mar 1|2024", "Mar 2"),
        times("2024-03-01T00:00", "2024-03-02T12:00", day, Locale.US));
    assertEquals(List.of("01.03.|2024", "02.03."),
        times("2024-03-01T00:00", "2024-03-02T12:00", day, Locale.GERMANY));
  }

  @Test
  void hoursNameTheDateOnce() {
    List<String> hours =
        times("2024-03-01T06:00", "2024-03-02T00:00", 6 * 3_600_000, Locale.GERMANY);
    assertEquals(List.of("06:00|01.03.2024", "12:00", "18:00", "00:00|02.03.2024"), hours);
  }

  @Test
  void dayAndMonthPatternsOfAllLocalesWork() {
    for (Locale locale : Locale.getAvailableLocales()) {
      String text = new Formats(locale).dayAndMonth(at("2024-03-21T00:00"));
      assertTrue(!text.isEmpty() && !text.contains("2024") && !text.contains("24"),
          locale + ": " + text);
    }
  }

  @Test
  void tooltipsShowSixDigits() {
    assertEquals("0.333333", ENGLISH.number(1 / 3.0));
    assertEquals("1,234,567", ENGLISH.number(1_234_567));
    assertEquals("0.3", ENGLISH.number(0.1 + 0.2));
    assertEquals("0", ENGLISH.number(-0.0));
    assertEquals("1.5\u00d710\u00b2\u2070", ENGLISH.number(1.5e20));
    assertEquals("1.234,5", new Formats(Locale.GERMANY).number(1234.5));
  }
}
