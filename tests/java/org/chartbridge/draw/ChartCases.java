// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.chartbridge.chart.Arrangement.FILLED;
import static org.chartbridge.chart.Arrangement.OVERLAID;
import static org.chartbridge.chart.Arrangement.STACKED;
import static org.chartbridge.chart.ElementKind.AREA;
import static org.chartbridge.chart.ElementKind.BAR;
import static org.chartbridge.chart.ElementKind.BOX;
import static org.chartbridge.chart.ElementKind.HEATMAP;
import static org.chartbridge.chart.ElementKind.HISTOGRAM;
import static org.chartbridge.chart.ElementKind.LINE;
import static org.chartbridge.chart.ElementKind.PIE;
import static org.chartbridge.chart.ElementKind.POINT;

import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.Random;
import java.util.function.IntFunction;
import java.util.function.IntToDoubleFunction;
import java.util.stream.IntStream;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Data;

/** Many different charts with data, for tests that hold for every chart. */
final class ChartCases {
  /** A chart and its data. */
  record Case(ChartMaker chart, Data data) {}

  private static final String[] QUARTERS = {"Q1", "Q2", "Q3", "Q4"};
  private static final String[] REGIONS = {"North", "South", "East", "West"};
  private static final String[] INDUSTRIES = {
    "Agriculture, forestry and fishing", "Mining and quarrying", "Manufacturing",
    "Electricity, gas, steam and air conditioning supply", "Water supply; sewerage", "Construction",
    "Wholesale and retail trade", "Transportation and storage",
    "Accommodation and food service activities", "Information and communication",
    "Financial and insurance activities", "Real estate activities",
    "Professional, scientific and technical activities"
  };
  private static final String[] MONTHS = {
    "January", "February", "March", "April", "May", "June", "July", "August", "September",
    "October", "November", "December"
  };
  private static final double DAY = 86_400_000;

  private final Random random = new Random(42);

  private ChartCases() {}

  static double[] doubles(int count, IntToDoubleFunction value) {
    return IntStream.range(0, count).mapToDouble(value).toArray();
  }

  static String[] strings(int count, IntFunction<String> value) {
    return IntStream.range(0, count).mapToObj(value).toArray(String[]::new);
  }

  private double[] uniform(int count, double low, double high) {
    return doubles(count, i -> low + (high - low) * random.nextDouble());
  }

  private double[] normal(int count, double mean, double deviation) {
    return doubles(count, i -> mean + deviation * random.nextGaussian());
  }

  private static ChartMaker titled() {
    return new ChartMaker().titles("Sales rose in every region but one in the last year",
        "Thousand units sold per quarter", "Source: company report, own calculations");
  }

  private Data sales() {
    return new Data()
        .texts("quarter", strings(64, i -> QUARTERS[i % 4]))
        .texts("region", strings(64, i -> REGIONS[i / 4 % 4]))
        .numbers("sales", uniform(64, 20, 100));
  }

  private Data flowers() {
    return new Data()
        .numbers("length", normal(150, 5, 1))
        .numbers("width", normal(150, 3, 0.6))
        .texts("species",
            strings(150, i -> new String[] {"setosa", "versicolor", "virginica"}[i % 3]));
  }

  private static Data series(int lines, int length, double step, IntToDoubleFunction value) {
    return new Data()
        .millis("date", doubles(lines * length, i -> 1_577_836_800_000.0 + i % length * step))
        .numbers("value", doubles(lines * length, value))
        .texts("name", strings(lines * length, i -> "Series " + (i / length + 1)));
  }

  /** All cases, each by a name. */
  static Map<String, Case> all() {
    return new ChartCases().make();
  }

  private Map<String, Case> make() {
    Map<String, Case> cases = new LinkedHashMap<>();
    bars(cases);
    lines(cases);
    points(cases);
    distributions(cases);
    others(cases);
    return cases;
  }

  private static void put(Map<String, Case> cases, String name, ChartMaker chart, Data data) {
    cases.put(name, new Case(chart, data));
  }

  private void bars(Map<String, Case> cases) {
    put(cases, "bar grouped", titled().add(BAR, "quarter", "sum(sales)", "region"), sales());
    put(cases, "bar stacked", titled().add(BAR, "quarter", "sum(sales)", "region", STACKED)
        .legend(LegendPosition.BOTTOM, "Region"), sales());
    put(cases, "bar filled", titled().add(BAR, "quarter", "sum(sales)", "region", FILLED)
        .legend(LegendPosition.TOP, null), sales());
    put(cases, "bar labels", titled()
        .add(BAR, "quarter", "sum(sales)", "region", null, "sum(sales)", null)
        .legend(LegendPosition.LEFT, null), sales());
    put(cases, "bar stacked labels", titled()
        .add(BAR, "quarter", "sum(sales)", "region", null, "sum(sales)", STACKED), sales());
    Data jobs = new Data().texts("industry", INDUSTRIES).numbers("jobs", uniform(13, -50, 900));
    put(cases, "bar long labels", titled().add(BAR, "industry", "jobs", null), jobs);
    put(cases, "bar lying", titled().add(BAR, "jobs", "industry", null, null, "jobs", null), jobs);
    Data items = new Data().texts("item", strings(120, i -> "Item number " + (i + 1)))
        .numbers("value", uniform(120, -20, 50));
    put(cases, "bar many", titled().add(BAR, "item", "value", null), items);
    put(cases, "bar many lying", titled().add(BAR, "value", "item", null), items);
    put(cases, "bar log", titled().y(ChartMaker.scale(ScaleKind.LOG)).add(BAR, "q", "v", null),
        new Data().texts("q", QUARTERS).numbers("v", 3, 50, 1200, 90000));
    put(cases, "bar and line", titled().add(BAR, "quarter", "sum(sales)", null)
        .add(LINE, "quarter", "mean(sales)", null), sales());
    put(cases, "bar years", titled().x(ChartMaker.format("0")).add(BAR, "year", "v", null),
        new Data().numbers("year", doubles(12, i -> 2010 + i)).numbers("v", uniform(12, 0, 5e6)));
  }

  private void lines(Map<String, Case> cases) {
    put(cases, "line five years", titled().add(LINE, "date", "value", null),
        series(1, 5 * 365, DAY, i -> 50 + 20 * Math.sin(i / 58.0)));
    put(cases, "line days", titled().add(LINE, "date", "value", "name"),
        series(2, 90, DAY, i -> random.nextDouble() / 10));
    put(cases, "line hours",
        titled().add(LINE, "date", "value", null).add(POINT, "date", "value", null),
        series(1, 30, 3_600_000, i -> 1e6 * random.nextDouble()));
    put(cases, "line seconds", titled().add(LINE, "date", "value", null),
        series(1, 50, 1_000, i -> random.nextDouble()));
    put(cases, "line centuries", titled().add(LINE, "date", "value", null),
        series(1, 40, 365.25 * 12 * DAY, i -> random.nextDouble()));
    put(cases, "line tiny numbers", titled().add(LINE, "x", "y", null),
        new Data().numbers("x", doubles(11, i -> i / 10.0)).numbers("y", uniform(11, 0, 2e-7)));
    put(cases, "line far numbers", titled().add(LINE, "x", "y", null),
        new Data().numbers("x", doubles(11, i -> 1_000_000 + i / 100.0))
            .numbers("y", uniform(11, 3e12, 3.1e12)));
    put(cases, "area stacked", titled().add(AREA, "date", "value", "name"),
        series(4, 24, 30 * DAY, i -> 10 + 40 * random.nextDouble()));
    put(cases, "area filled", titled().add(AREA, "date", "value", "name", FILLED),
        series(4, 24, 30 * DAY, i -> 10 + 40 * random.nextDouble()));
    put(cases, "area overlaid", titled().add(AREA, "date", "value", "name", OVERLAID),
        series(2, 24, 30 * DAY, i -> 40 * random.nextDouble() - 10));
  }

  private void points(Map<String, Case> cases) {
    put(cases, "point", titled().add(POINT, "length", "width", "species"), flowers());
    put(cases, "point scale", titled().add(POINT, "length", "width", "width"), flowers());
    put(cases, "point scale below", titled().add(POINT, "length", "width", "width")
        .legend(LegendPosition.BOTTOM, null), flowers());
    Data bubbles =
        new Data()
            .numbers("x", Arrays.stream(uniform(40, 2, 10)).map(e -> Math.pow(10, e)).toArray())
            .numbers("y", normal(40, 60, 10))
            .numbers("s", uniform(40, 1e6, 9e7))
            .texts("c", strings(40, i -> REGIONS[i % 4]))
            .texts("n", strings(40, i -> "Country number " + i));
    put(cases, "point bubbles", titled().x(ChartMaker.scale(ScaleKind.LOG))
        .add(POINT, "x", "y", "c", "s", "n", null), bubbles);
    put(cases, "point bubbles below", titled().x(ChartMaker.scale(ScaleKind.LOG))
        .add(POINT, "x", "y", "c", "s", "n", null).legend(LegendPosition.BOTTOM, null), bubbles);
    put(cases, "point one", titled().add(POINT, "x", "y", null),
        new Data().numbers("x", 3).numbers("y", -7.25));
    put(cases, "point eight decades",
        titled()
            .x(ChartMaker.scale(ScaleKind.LOG))
            .y(ChartMaker.scale(ScaleKind.LOG))
            .add(POINT, "x", "y", null),
        new Data()
            .numbers("x", Arrays.stream(uniform(80, -4, 4)).map(e -> Math.pow(10, e)).toArray())
            .numbers("y", Arrays.stream(uniform(80, 0, 2)).map(e -> Math.pow(10, e)).toArray()));
    put(cases, "point short log", titled().x(ChartMaker.scale(ScaleKind.LOG))
        .y(ChartMaker.scale(ScaleKind.LOG)).add(POINT, "x", "y", null),
        new Data().numbers("x", uniform(30, 130, 190)).numbers("y", uniform(30, 3, 40)));
    put(cases, "legend of forty", titled().add(POINT, "x", "y", "g"), fortyGroups());
    put(cases, "legend of forty below", titled().add(POINT, "x", "y", "g")
        .legend(LegendPosition.BOTTOM, null), fortyGroups());
  }

  private Data fortyGroups() {
    return new Data().numbers("x", uniform(400, 0, 1)).numbers("y", uniform(400, 0, 1))
        .texts("g", strings(400, i -> i % 5 == 0 ? "A rather long legend entry, number " + i % 40
            : "Entry " + i % 40));
  }

  private void distributions(Map<String, Case> cases) {
    put(cases, "histogram", titled().add(HISTOGRAM, "v", null, null),
        new Data().numbers("v", normal(272, 3.5, 1.1)));
    put(cases, "histogram groups", titled().add(HISTOGRAM, "v", null, "g", OVERLAID),
        new Data()
            .numbers("v", normal(300, 1000, 300))
            .texts("g", strings(300, i -> REGIONS[i % 2])));
    Data weights = new Data().texts("group", strings(300, i -> "Treatment " + i % 3))
        .texts("sex", strings(300, i -> i / 3 % 2 == 0 ? "female" : "male"))
        .numbers("weight", normal(300, 5, 1));
    put(cases, "box", titled().add(BOX, "group", "weight", "sex"), weights);
    put(cases, "box lying", titled().add(BOX, "weight", "group", null), weights);
    put(cases, "box alone", titled().add(BOX, null, "weight", null), weights);
  }

  private void others(Map<String, Case> cases) {
    Data shares =
        new Data()
            .texts("maker", "Alpha Industries", "Beta", "Gamma", "Delta and Sons", "Others")
            .numbers("share", 40, 25, 20, 10, 5);
    put(cases, "pie", titled().add(PIE, "maker", "share", null), shares);
    put(cases, "pie legend", titled().add(PIE, "maker", "share", null)
        .legend(LegendPosition.RIGHT, null), shares);
    put(cases, "pie many", titled().add(PIE, "item", "value", null),
        new Data().texts("item", strings(40, i -> "Item number " + i))
            .numbers("value", Arrays.stream(uniform(40, 0, 1)).map(v -> v * v * v).toArray()));
    put(cases, "pie panels", titled().add(PIE, "quarter", "sum(sales)", null)
        .facet("region", null, true, true), sales());
    put(cases, "heat map", titled()
        .add(HEATMAP, "quarter", "region", "mean(sales)", null, "mean(sales)", null), sales());
    put(cases, "heat map of industries",
        titled().add(HEATMAP, "industry", "month", "value").legend(LegendPosition.TOP, null),
        new Data()
            .texts("industry", strings(156, i -> INDUSTRIES[i % 13]))
            .texts("month", strings(156, i -> MONTHS[i / 13]))
            .numbers("value", uniform(156, 0, 3)));
    put(cases, "heat map of bins", titled().add(HEATMAP, "x", "y", "count"),
        new Data().numbers("x", normal(3000, 0, 1)).numbers("y", normal(3000, 0, 1)));
    Data months = new Data().numbers("x", uniform(600, 0, 100)).numbers("y", normal(600, 50, 20))
        .texts("g", strings(600, i -> "abc".substring(i % 3, i % 3 + 1)))
        .texts("month", strings(600, i -> MONTHS[i % 12]));
    put(cases, "twelve panels", titled().add(POINT, "x", "y", "g").facet("month", null, true, true),
        months);
    put(cases, "twelve free panels",
        titled().add(POINT, "x", "y", null).facet("month", 4, false, false), months);
    put(cases, "sixty panels", titled().add(LINE, "x", "y", null).facet("g", null, true, true),
        new Data().numbers("x", uniform(600, 0, 100)).numbers("y", normal(600, 50, 20))
            .texts("g", strings(600, i -> "Region " + i % 60)));
    put(cases, "bar panels", titled().add(BAR, "quarter", "sum(sales)", null)
        .facet("region", null, true, false), sales());
    put(cases, "long label panels", titled().add(BAR, "industry", "mean(value)", null)
        .facet("month", 2, true, true),
        new Data().texts("industry", strings(52, i -> INDUSTRIES[i % 13]))
            .texts("month", strings(52, i -> MONTHS[i / 13])).numbers("value", uniform(52, 0, 3)));
  }
}
