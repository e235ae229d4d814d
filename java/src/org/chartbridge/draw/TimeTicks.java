// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.time.DayOfWeek;
import java.time.Instant;
import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.time.temporal.ChronoUnit;
import java.time.temporal.TemporalAdjusters;
import java.util.ArrayList;
import java.util.List;
import java.util.function.DoubleFunction;

/** Round places on a time axis: whole seconds, hours, days, Mondays, months or years in UTC. */
final class TimeTicks {
  private static final double SECOND = 1000;
  private static final double MINUTE = 60 * SECOND;
  private static final double HOUR = 60 * MINUTE;
  private static final double DAY = 24 * HOUR;
  private static final double MONTH = 30.4 * DAY;
  private static final double YEAR = 365.25 * DAY;
  private static final int MOST = 400;

  /** A distance between ticks. */
  record Step(ChronoUnit unit, int count, double millis) {}

  private static final List<Step> STEPS = steps();

  private TimeTicks() {}

  private static List<Step> steps() {
    List<Step> steps = new ArrayList<>();
    for (int n : new int[] {1, 2, 5, 10, 20, 50, 100, 200, 500}) {
      steps.add(new Step(ChronoUnit.MILLIS, n, n));
    }
    for (int n : new int[] {1, 2, 5, 10, 15, 30}) {
      steps.add(new Step(ChronoUnit.SECONDS, n, n * SECOND));
    }
    for (int n : new int[] {1, 2, 5, 10, 15, 30}) {
      steps.add(new Step(ChronoUnit.MINUTES, n, n * MINUTE));
    }
    for (int n : new int[] {1, 2, 3, 6, 12}) {
      steps.add(new Step(ChronoUnit.HOURS, n, n * HOUR));
    }
    for (int n : new int[] {1, 2}) {
      steps.add(new Step(ChronoUnit.DAYS, n, n * DAY));
    }
    for (int n : new int[] {1, 2}) {
      steps.add(new Step(ChronoUnit.WEEKS, n, n * 7 * DAY));
    }
    for (int n : new int[] {1, 2, 3, 6}) {
      steps.add(new Step(ChronoUnit.MONTHS, n, n * MONTH));
    }
    for (int scale = 1; scale <= 100_000; scale *= 10) {
      for (int n : new int[] {1, 2, 5}) {
        steps.add(new Step(ChronoUnit.YEARS, n * scale, n * scale * YEAR));
      }
    }
    return List.copyOf(steps);
  }

  /**
   * Ticks of a time axis, as many as fit.
   *
   * @param smallest the smallest distance wanted, in milliseconds
   * @param oneLine whether year or date stand beside the finer text instead of below it
   * @param given the chart's own format, or null
   */
  static List<Tick> of(double lower, double upper, double smallest, boolean oneLine,
      DoubleFunction<String> given, Formats formats,
      java.util.function.BiPredicate<List<Tick>, Double> fits) {
    List<Tick> best = List.of();
    for (Step step : STEPS) {
      if (step.millis() < smallest) {
        continue;
      }
      List<Tick> ticks = labelled(places(lower, upper, step), step, oneLine, given, formats);
      if (ticks.size() < 2 && !best.isEmpty()) {
        break;
      }
      best = ticks;
      if (fits.test(ticks, step.millis())) {
        break;
      }
    }
    return best;
  }

  static List<Double> places(double lower, double upper, Step step) {
    List<Double> places = new ArrayList<>();
    LocalDateTime time = start(local(lower), step);
    while (places.size() < MOST) {
      double millis = time.toInstant(ZoneOffset.UTC).toEpochMilli();
      if (millis > upper) {
        break;
      }
      if (millis >= lower) {
        places.add(millis);
      }
      LocalDateTime next = time.plus(step.count(), step.unit());
      boolean days = step.unit() == ChronoUnit.DAYS && step.count() > 1;
      if (days && next.getDayOfMonth() > 30) {
        next = next.with(TemporalAdjusters.firstDayOfNextMonth());
      } else if (days && next.getMonth() != time.getMonth()) {
        next = next.withDayOfMonth(1);
      }
      time = next;
    }
    return places;
  }

  private static LocalDateTime local(double millis) {
    return LocalDateTime.ofInstant(Instant.ofEpochMilli((long) Math.floor(millis)), ZoneOffset.UTC);
  }

  private static LocalDateTime start(LocalDateTime time, Step step) {
    LocalDateTime day = time.truncatedTo(ChronoUnit.DAYS);
    int n = step.count();
    return switch (step.unit()) {
      case YEARS -> day.withDayOfYear(1).withYear(Math.floorDiv(time.getYear(), n) * n);
      case MONTHS -> day.withDayOfMonth(1).withMonth((time.getMonthValue() - 1) / n * n + 1);
      case WEEKS -> day.with(TemporalAdjusters.previousOrSame(DayOfWeek.MONDAY));
      case DAYS -> day.withDayOfMonth((day.getDayOfMonth() - 1) / n * n + 1);
      case HOURS -> day.withHour(time.getHour() / n * n);
      case MINUTES -> time.truncatedTo(ChronoUnit.HOURS).withMinute(time.getMinute() / n * n);
      case SECONDS -> time.truncatedTo(ChronoUnit.MINUTES).withSecond(time.getSecond() / n * n);
      default -> time.truncatedTo(ChronoUnit.SECONDS)
          .plus(time.getNano() / 1_000_000 / n * n, ChronoUnit.MILLIS);
    };
  }

  private static List<Tick> labelled(List<Double> places, Step step, boolean oneLine,
      DoubleFunction<String> given, Formats formats) {
    List<Tick> ticks = new ArrayList<>();
    String before = "";
    for (double place : places) {
      if (given != null) {
        ticks.add(Tick.of(place, given.apply(place)));
        continue;
      }
      String context = context(place, step, formats);
      String text = fine(place, step, formats);
      if (!context.equals(before) && !context.isEmpty()) {
        text = oneLine ? text + " " + context : text + "\n" + context;
      }
      before = context;
      ticks.add(Tick.of(place, text));
    }
    return ticks;
  }

  private static String fine(double place, Step step, Formats formats) {
    return switch (step.unit()) {
      case YEARS -> formats.year(place);
      case MONTHS -> formats.month(place);
      case WEEKS, DAYS -> formats.dayAndMonth(place);
      case HOURS, MINUTES -> formats.clock(place, false);
      case SECONDS -> formats.clock(place, true);
      default -> formats.clockWithMillis(place);
    };
  }

  private static String context(double place, Step step, Formats formats) {
    return switch (step.unit()) {
      case YEARS -> "";
      case MONTHS, WEEKS, DAYS -> formats.year(place);
      default -> formats.date(place);
    };
  }

}
