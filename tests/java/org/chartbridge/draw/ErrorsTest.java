// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.chartbridge.chart.Arrangement.FILLED;
import static org.chartbridge.chart.Arrangement.STACKED;
import static org.chartbridge.chart.ElementKind.AREA;
import static org.chartbridge.chart.ElementKind.BAR;
import static org.chartbridge.chart.ElementKind.BOX;
import static org.chartbridge.chart.ElementKind.HEATMAP;
import static org.chartbridge.chart.ElementKind.HISTOGRAM;
import static org.chartbridge.chart.ElementKind.LINE;
import static org.chartbridge.chart.ElementKind.PIE;
import static org.chartbridge.chart.ElementKind.POINT;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import org.chartbridge.chart.Axis;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Data;
import org.junit.jupiter.api.Test;

/** What a chart's writer reads when the data cannot be drawn. */
class ErrorsTest {
  private static Data data() {
    return new Data().texts("c", "a", "b", "a").numbers("n", 1, -2, 3)
        .millis("t", 0, 86_400_000, 172_800_000).numbers("none", Double.NaN, Double.NaN, Double.NaN)
        .numbers("zero", 0, 0, 0).texts("nothing", null, null, null);
  }

  private static ChartMaker chart() {
    return new ChartMaker();
  }

  private static void fails(String message, ChartMaker chart) {
    fails(message, chart, data());
  }

  private static void fails(String message, ChartMaker chart, Data data) {
    ChartException e = assertThrows(ChartException.class,
        () -> ChartDrawing.prepare(chart.chart(), data.table(), DrawOptions.DEFAULT));
    assertEquals(message, e.getMessage());
  }

  @Test
  void noRows() {
    fails("Element 1 (bar) has nothing to draw: the data has no rows.",
        chart().add(BAR, "c", "n", null), new Data().numbers("c").numbers("n"));
  }

  @Test
  void allMissing() {
    fails("Element 1 (point) has nothing to draw: no row has a value in all of \"n\", \"none\".",
        chart().add(POINT, "n", "none", null));
    fails("Element 1 (line) has nothing to draw: no row has a value in all of \"n\", \"none\".",
        chart().add(LINE, "n", "none", null));
    fails("Element 1 (bar) has nothing to draw: no row has a value in all of \"c\", \"none\".",
        chart().add(BAR, "c", "mean(none)", null));
    fails("Element 1 (histogram) has nothing to draw: no row has a value in all of \"none\".",
        chart().add(HISTOGRAM, "none", null, null));
    fails("Element 1 (pie) has nothing to draw: no row has a value in all of its columns.",
        chart().add(PIE, "c", "none", null));
    fails("Element 2 (point) has nothing to draw: no row has a value in all of \"n\", \"none\".",
        chart().add(POINT, "n", "n", null).add(POINT, "n", "none", null));
  }

  @Test
  void unknownColumns() {
    ChartException e = assertThrows(ChartException.class, () -> ChartDrawing.prepare(
        chart().add(BAR, "c", "sum(m)", null).chart(), data().table(), DrawOptions.DEFAULT));
    assertTrue(
        e.getMessage().startsWith("Element 1 (bar), y: The data has no column \"m\"; its columns "
            + "are c, n, t, none, zero, nothing."),
        e.getMessage());
    e = assertThrows(ChartException.class, () -> ChartDrawing.prepare(
        chart().add(BAR, "c", "n", null).facet("q", null, true, true).chart(), data().table(),
        DrawOptions.DEFAULT));
    assertTrue(e.getMessage().startsWith("Facet: The data has no column \"q\""), e.getMessage());
  }

  @Test
  void missingChannels() {
    fails("Element 1 (line), y: the channel is missing; name the column to show there.",
        chart().add(LINE, "n", null, null));
    fails("Element 1 (heatmap), color: the channel is missing; name the column to show there.",
        chart().add(HEATMAP, "n", "n", null));
  }

  @Test
  void notPositiveOnALogScale() {
    fails(
        "Element 1 (point), y: the value -2 of column \"n\" has no place on a log scale, which "
            + "starts "
            + "above 0; use scale linear, or drop such rows.",
        chart().y(ChartMaker.scale(ScaleKind.LOG)).add(POINT, "t", "n", null));
    fails(
        "Element 1 (bar), y: the value 0 of column \"zero\" has no place on a log scale, which "
            + "starts "
            + "above 0; use scale linear, or drop such rows.",
        chart().y(ChartMaker.scale(ScaleKind.LOG)).add(BAR, "c", "sum(zero)", null));
    fails("Axis y: min and max of a log scale must be above 0.",
        chart()
            .y(new Axis(ScaleKind.LOG, null, 0.0, null, false, true, null))
            .add(LINE, "t", "n", null));
  }

  @Test
  void stacksOnALogScale() {
    Data data =
        new Data().texts("c", "a", "a").texts("g", "p", "q").numbers("n", 1, 2).numbers("x", 1, 2);
    fails(
        "Element 1 (bar), y: stacked bars cannot be read on a log scale; use arrangement "
            + "grouped, or "
            + "scale linear.",
        chart().y(ChartMaker.scale(ScaleKind.LOG)).add(BAR, "c", "n", "g", STACKED), data);
    fails(
        "Element 1 (area), y: stacked areas cannot be read on a log scale; use arrangement "
            + "overlaid, or "
            + "scale linear.",
        chart().y(ChartMaker.scale(ScaleKind.LOG)).add(AREA, "x", "n", "g", STACKED), data);
    fails(
        "Element 1 (histogram), x: equal bins have no equal widths on a log scale; use scale "
            + "linear.",
        chart().x(ChartMaker.scale(ScaleKind.LOG)).add(HISTOGRAM, "x", null, null), data);
  }

  @Test
  void tooManyCategories() {
    Data data =
        new Data().texts("c", ChartCases.strings(501, i -> "c" + i)).numbers("n", new double[501]);
    fails(
        "Element 1 (bar), x: column \"c\" has 501 categories, more than the 500 that fit an "
            + "axis; choose "
            + "fewer, or another column.",
        chart().add(BAR, "c", "n", null), data);
    fails(
        "Element 1 (point), color: column \"c\" has 501 different values, more than the 100 "
            + "colours that "
            + "a legend can hold; choose a column with fewer.",
        chart().add(POINT, "n", "n", "c"), data);
    fails(
        "Facet: column \"c\" has 501 different values, more than the 100 panels that fit a "
            + "picture; "
            + "choose a column with fewer.",
        chart().add(POINT, "n", "n", null).facet("c", null, true, true), data);
    fails(
        "Element 1 (pie), x: there are 500 slices, more than the 100 that a pie can show; use a "
            + "bar, or "
            + "choose a column with fewer values.",
        chart().add(PIE, "d", null, null),
        new Data()
            .texts("d", ChartCases.strings(501, i -> "d" + i % 500))
            .numbers("n", new double[501]));
  }

  @Test
  void fiveHundredCategoriesAreDrawn() {
    Data data = new Data().texts("c", ChartCases.strings(500, i -> "c" + i))
        .numbers("n", ChartCases.doubles(500, i -> i));
    ChartDrawing drawing = ChartDrawing.prepare(
        chart().add(BAR, "c", "n", null).chart(), data.table(), DrawOptions.DEFAULT);
    assertEquals(500, drawing.marks().size());
  }

  @Test
  void pies() {
    fails(
        "Element 1 (pie), y: the value -2 of \"b\" is negative, and a slice cannot be; drop it, "
            + "or use a "
            + "bar.",
        chart().add(PIE, "c", "n", null));
    fails("Element 1 (pie), y: all values are 0, so there is nothing to divide.",
        chart().add(PIE, "c", "zero", null));
    fails("Element 2 (pie) cannot share a plot with other elements; give it a chart of its own.",
        chart().add(BAR, "c", "n", null).add(PIE, "c", "n", null));
  }

  @Test
  void wrongKindsOfColumns() {
    fails(
        "Element 1 (bar), y: column \"c\" holds categories, and mean needs numbers; use count, "
            + "or declare "
            + "the column as number.",
        chart().add(BAR, "n", "mean(c)", null));
    fails("Element 1 (bar), y: column \"t\" holds times, which have no sum; use count, min or max.",
        chart().add(BAR, "c", "sum(t)", null));
    fails(
        "Element 1 (area), y: column \"c\" holds categories, and an area needs numbers there; "
            + "use count, or "
            + "declare the column as number.",
        chart().add(AREA, "n", "c", null));
    fails(
        "Element 1 (point), size: column \"c\" holds categories, and a point needs numbers "
            + "there; choose "
            + "another column, or declare it as number.",
        chart().add(POINT, "n", "n", null, "c", null, null));
    fails("Element 1 (point), size: the value -2 is negative; sizes must not be below 0.",
        chart().add(POINT, "n", "n", null, "n", null, null));
    fails(
        "Element 1 (heatmap), color: column \"c\" holds categories, and a heatmap needs numbers "
            + "there; "
            + "choose another column, or declare it as number.",
        chart().add(HEATMAP, "n", "n", "c"));
    fails(
        "Element 1 (histogram), x: column \"c\" holds categories, and a histogram needs numbers "
            + "there; "
            + "choose another column, or declare it as number.",
        chart().add(HISTOGRAM, "c", null, null));
    fails(
        "Element 1 (box), y: column \"nothing\" holds categories, and a box needs numbers "
            + "there; choose "
            + "another column, or declare it as number.",
        chart().add(BOX, "c", "nothing", null));
    fails(
        "Element 1 (line), color: an aggregate gives every mark its own colour, which a line "
            + "cannot show; "
            + "name a column without aggregate.",
        chart().add(LINE, "n", "n", "mean(n)"));
    fails("Element 1 (bar), x: x and y are both summed up; one of them must be a plain column.",
        chart().add(BAR, "sum(n)", "sum(n)", null));
    fails(
        "Element 1 (histogram), y: a histogram sums up the rows of each bin; use count or another "
            + "aggregate, or leave y out.",
        chart().add(HISTOGRAM, "n", "n", null));
    fails("Element 1 (box), y: a box plot shows the distribution of rows; name the column without "
        + "aggregate.", chart().add(BOX, "c", "mean(n)", null));
  }

  @Test
  void positionsThatAreSummedUp() {
    fails("Element 1 (line), x: a line cannot sum up its positions; sum up y instead.",
        chart().add(LINE, "mean(n)", "n", null));
  }

  @Test
  void limitsOfTimesAreDates() {
    fails("Axis x: min 1970 Feb 1 00:00 leaves no data in sight; the values run from "
        + "1970 Jan 1 00:00 to 1970 Jan 3 00:00.",
        chart().x(ChartMaker.limits(31 * 86_400_000.0, null)).add(POINT, "t", "n", null));
  }

  @Test
  void scalesThatDoNotFit() {
    fails(
        "Element 1 (point), x: column \"c\" holds categories, which do not fit the axis' scale "
            + "linear; "
            + "change the scale, or declare the column as number.",
        chart().x(ChartMaker.scale(ScaleKind.LINEAR)).add(POINT, "c", "n", null));
    fails(
        "Element 1 (point), x: column \"n\" holds numbers, which do not fit the axis' scale "
            + "time; change "
            + "the scale, or declare the column as time.",
        chart().x(ChartMaker.scale(ScaleKind.TIME)).add(POINT, "n", "n", null));
    fails("Element 1 (bar), y: its values cannot stand on a category scale; use scale linear.",
        chart().x(ChartMaker.scale(ScaleKind.CATEGORY)).y(ChartMaker.scale(ScaleKind.CATEGORY))
            .add(BAR, "c", "sum(n)", null));
    fails(
        "Element 2 (line), x: it shows numbers, but Element 1 (bar) shows categories on the "
            + "same axis; "
            + "let both show the same kind of column, or declare scale category.",
        chart().add(BAR, "c", "n", null).add(LINE, "n", "n", null));
  }

  @Test
  void limitsAndFormats() {
    fails("Axis y: min 5 is not below max 3.",
        chart().y(ChartMaker.limits(5.0, 3.0)).add(POINT, "n", "n", null));
    fails("Axis y: min 10 leaves no data in sight; the values run from -2 to 3.",
        chart().y(ChartMaker.limits(10.0, null)).add(POINT, "n", "n", null));
    fails("Axis x: min and max do not fit categories; drop them.",
        chart().x(ChartMaker.limits(0.0, null)).add(BAR, "c", "n", null));
    fails("Axis y: the format \"#.#.#\" is no number pattern such as #,##0.0.",
        chart().y(ChartMaker.format("#.#.#")).add(POINT, "n", "n", null));
    fails("Axis x: the format \"bbb\" is no date pattern such as d MMM yyyy.",
        chart().x(ChartMaker.format("bbb")).add(POINT, "t", "n", null));
  }

  @Test
  void sharesOfNegativeValues() {
    fails(
        "Element 1 (bar), y: the value -2 has no share of a whole; arrangement filled needs "
            + "values that "
            + "are not negative.",
        chart().add(BAR, "c", "n", null, FILLED));
    fails(
        "Element 1 (area), y: the value -2 cannot be stacked on others; use arrangement "
            + "overlaid, or drop "
            + "the negative values.",
        chart().add(AREA, "t", "n", "c"));
  }

  @Test
  void twoRowsInOneCell() {
    fails(
        "Element 1 (heatmap), color: several rows fall on the cell a, x; sum their colours up, "
            + "for example "
            + "by mean.",
        chart().add(HEATMAP, "c", "d", "n"),
        new Data().texts("c", "a", "a").texts("d", "x", "x").numbers("n", 1, 2));
  }

  @Test
  void emptyFacetAndStyle() {
    fails("Facet: column \"nothing\" has no values; choose another column, or drop the facet.",
        chart().add(POINT, "n", "n", null).facet("nothing", null, true, true));
    fails("There is no style \"fancy\"; the styles are print, dark, mono, slides.",
        chart().add(POINT, "n", "n", null).style("fancy"));
    fails("\"red\" is no colour; a colour is written #rrggbb.",
        chart().add(POINT, "n", "n", null).palette("red"));
  }
}
