// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;
import org.chartbridge.format.RandomCharts;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.EnumSource;
import org.junit.jupiter.params.provider.ValueSource;

class GraphLanguageTest {
  private static final String BAR = "\ndraw bar: x a";

  private static Chart read(String source) {
    return GraphLanguage.read(source.getBytes(UTF_8));
  }

  private static Element element(String source) {
    return read(source).elements().get(0);
  }

  @Test
  void readsEveryStatement() {
    Chart chart =
        read(
            """
            // everything
            title "T"
            subtitle "S"
            caption "C"
            size 900 by 500
            style dark
            palette #0072b2, #E69F00
            column d: time written "dd.MM.yyyy", label "Day"
            column r: category N < "far S", label "Region"
            column n: number
            draw line: x d, y mean of n, label r, fill #000000, opacity 0.5
            axis x: time, from 2024-01-31 to 2024-01-31T12:00:00+02:00, format "yyyy"
            axis y: log, no title, from 1, to 1e3, reversed, no grid, format "#,##0"
            legend: bottom, title "L"
            panels by r: rows of 3, free x, free y
            """);
    Chart expected =
        new Chart(
            new ChartSize(900, 500),
            new Titles("T", "S", "C"),
            List.of(
                new ColumnDeclaration("d", ColumnKind.TIME, "Day", "dd.MM.yyyy", List.of()),
                new ColumnDeclaration(
                    "r", ColumnKind.CATEGORY, "Region", null, List.of("N", "far S")),
                new ColumnDeclaration("n", ColumnKind.NUMBER, null, null, List.of())),
            new Axis(ScaleKind.TIME, null, 1706659200000.0, 1706695200000.0, false, true, "yyyy"),
            new Axis(ScaleKind.LOG, "", 1.0, 1000.0, true, false, "#,##0"),
            List.of(
                new Element(
                    ElementKind.LINE, Channel.of("d"), new Channel("n", Aggregate.MEAN), null,
                    null, Channel.of("r"), null, null, "#000000", 0.5)),
            new Legend(LegendPosition.BOTTOM, "L"),
            new Facet("r", 3, false, false),
            "dark",
            List.of("#0072b2", "#E69F00"));
    assertEquals(expected, chart);
  }

  @Test
  void leavesEverythingElseAtItsDefault() {
    Element bar = new Element(ElementKind.BAR, Channel.of("a"), null, null, null, null,
        Arrangement.GROUPED, null, null, 1);
    Chart expected = new Chart(ChartSize.DEFAULT, Titles.NONE, List.of(), Axis.DEFAULT,
        Axis.DEFAULT, List.of(bar), Legend.DEFAULT, null, null, List.of());
    assertEquals(expected, read("draw bar: x a"));
  }

  @ParameterizedTest
  @EnumSource(ElementKind.class)
  void readsEveryElement(ElementKind kind) {
    String color = kind == ElementKind.HEATMAP ? ", color c" : "";
    Element element =
        element("draw " + kind.name().toLowerCase(Locale.ROOT) + ": x a, y b" + color);
    assertEquals(kind, element.kind());
    assertEquals(Channel.of("a"), element.x());
    assertEquals(Channel.of("b"), element.y());
    assertEquals(Arrangement.defaultOf(kind), element.arrangement());
  }

  @ParameterizedTest
  @EnumSource(Arrangement.class)
  void readsEveryArrangement(Arrangement arrangement) {
    String word = arrangement.name().toLowerCase(Locale.ROOT);
    assertEquals(arrangement, element("draw " + word + " bar: x a").arrangement());
    assertEquals(arrangement, element("draw " + word + " histogram: x a").arrangement());
  }

  @ParameterizedTest
  @CsvSource({"count,COUNT", "sum,SUM", "mean,MEAN", "median,MEDIAN", "min,MIN", "max,MAX"})
  void readsEveryAggregate(String word, Aggregate aggregate) {
    assertEquals(new Channel("b", aggregate), element("draw bar: x a, y " + word + " of b").y());
    assertEquals(new Channel("of", aggregate), element("draw bar: x a, y " + word + " of of").y());
  }

  @Test
  void countAloneCountsRowsAndOtherWordsNameColumns() {
    assertEquals(Channel.count(), element("draw bar: x a, y count").y());
    assertEquals(Channel.of("count"), element("draw bar: x a, y \"count\"").y());
    assertEquals(Channel.of("sum"), element("draw bar: x a, y sum").y());
    assertEquals(Channel.of("mean"), element("draw bar: x mean\n  y b").x());
    assertEquals(Channel.of("none"), element("draw bar: x none").x());
    assertEquals(Channel.of("x"), element("draw bar: x x").x());
    assertEquals(Channel.of("of"), element("draw bar: x of").x());
  }

  @Test
  void readsEveryChannel() {
    Element point = element("draw point: x a, y b, color c, size d, label e");
    assertEquals(Channel.of("c"), point.color());
    assertEquals(Channel.of("d"), point.size());
    assertEquals(Channel.of("e"), point.label());
    assertEquals(20, element("draw histogram: x a, bins 20").bins());
  }

  @ParameterizedTest
  @EnumSource(ScaleKind.class)
  void readsEveryScale(ScaleKind scale) {
    assertEquals(scale, read("axis x: " + scale.name().toLowerCase(Locale.ROOT) + BAR).x().scale());
  }

  @ParameterizedTest
  @EnumSource(LegendPosition.class)
  void readsEveryLegendPosition(LegendPosition position) {
    Chart chart = read("legend: " + position.name().toLowerCase(Locale.ROOT) + BAR);
    assertEquals(new Legend(position, null), chart.legend());
  }

  @ParameterizedTest
  @CsvSource(value = {"from 1 to 2|1|2", "from 1, to 2|1|2", "to 2, from 1|1|2",
                 "from -1.5e-3|-0.0015|", "to +.5||0.5", "from 5.|5|", "from 1970-01-02|86400000|",
                 "to 1970-01-01T00:00:01.5||1500", "to 1970-01-01T01:00+01:00||0",
                 "from 1970-01-01T00:00Z|0|"},
      delimiter = '|')
  void
  readsAxisLimits(String clause, Double min, Double max) {
    Axis axis = read("axis y: " + clause + BAR).y();
    assertEquals(min, axis.min());
    assertEquals(max, axis.max());
  }

  @Test
  void readsAxisTitles() {
    assertNull(read("axis x: log" + BAR).x().title());
    assertEquals("", read("axis x: no title" + BAR).x().title());
    assertEquals("a", read("axis x: title \"a\"" + BAR).x().title());
  }

  @Test
  void readsPanels() {
    assertEquals(new Facet("r", null, true, true), read("panels by r" + BAR).facet());
    assertEquals(new Facet("a b", 2, true, false),
        read("panels by \"a b\": free y, rows of 2" + BAR).facet());
    assertNull(read(BAR).facet());
  }

  @Test
  void readsEscapesInTexts() {
    assertEquals("\" \\ \n \t € \uD83D\uDE00 // #",
        read("title \"\\\" \\\\ \\n \\t \\u{20AC} \\u{1f600} // #\"" + BAR).titles().title());
    assertEquals("", read("title \"\"" + BAR).titles().title());
  }

  @Test
  void readsNamesInAnyScript() {
    Element element = element("draw point: x größe, y 价格, color _a.b2, label e\u0301te");
    assertEquals("größe", element.x().column());
    assertEquals("价格", element.y().column());
    assertEquals("_a.b2", element.color().column());
    assertEquals("e\u0301te", element.label().column());
    assertEquals("\uD835\uDC00b", element("draw bar: x \uD835\uDC00b").x().column());
  }

  @ParameterizedTest
  @ValueSource(strings = {
    "draw bar: x a, y b, color c",
    "draw bar:x a,y b,color c",
    "draw bar:\n  x a\n  y b\n  color c",
    "draw bar: x a,\n y b,\n\tcolor c\n",
    "draw bar:\n\n  // first\n  x a   // why\n  // then\n\n  y b\n  , color c\n// end",
    "\n\n  draw bar: x a,\n    y b\n    color c\n",
    "  draw\t bar : x \"a\" , y b , color c",
    "\tdraw bar:\n\t\tx a\n\t\ty b\n\t\tcolor c\n\t// x\n",
  })
  void laysOutStatementsFreely(String source) {
    Element expected = new Element(ElementKind.BAR, Channel.of("a"), Channel.of("b"),
        Channel.of("c"), null, null, Arrangement.GROUPED, null, null, 1);
    for (String lineEnd : List.of("\n", "\r\n", "\r")) {
      String text = source.replace("\n", lineEnd);
      assertEquals(expected, element(text));
      assertEquals(expected, element("\uFEFF" + text));
    }
  }

  @Test
  void listsBreakAfterTheirSigns() {
    Chart chart = read(
        "palette\n  #000000,\n  #111111\ncolumn c:\n  category a <\n    b <\n    \"c d\",\n  "
            + "label \"C\""
        + BAR);
    assertEquals(List.of("#000000", "#111111"), chart.palette());
    assertEquals(List.of("a", "b", "c d"), chart.columns().get(0).order());
    assertEquals("C", chart.columns().get(0).label());
    Chart broken = read("column c: category\n  label \"C\"" + BAR);
    assertEquals(List.of(), broken.columns().get(0).order());
    assertEquals("C", broken.columns().get(0).label());
  }

  @Test
  void statementsComeInAnyOrder() {
    Chart one =
        read("title \"T\"\ndraw bar: x a\ndraw line: x a, y b\naxis y: log\ncolumn a: category");
    Chart two =
        read("column a: category\naxis y: log\ndraw bar: x a\ntitle \"T\"\ndraw line: x a, y b");
    assertEquals(one, two);
    assertEquals(2, one.elements().size());
  }

  @ParameterizedTest
  @ValueSource(strings = {", ", ",\n  ", "\n  ", "\n    // note\n\n  , "})
  void saysEverythingThatTheModelHolds(String separator) {
    RandomCharts charts = new RandomCharts(11);
    for (int i = 0; i < 1_000; i++) {
      Chart chart = charts.next();
      String text = GraphLanguageWriter.of(chart, separator);
      assertEquals(chart, assertReads(text), text);
    }
  }

  private static Chart assertReads(String text) {
    try {
      return read(text);
    } catch (ChartException e) {
      throw new AssertionError(e.getMessage() + "\n" + text, e);
    }
  }
}
