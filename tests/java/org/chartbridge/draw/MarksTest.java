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
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.geom.Arc2D;
import java.awt.geom.Rectangle2D;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Data;
import org.junit.jupiter.api.Test;

/** Marks stand where their values belong, and say what they show. */
class MarksTest {
  private static final double CLOSE = 0.01;

  private static ChartDrawing draw(ChartMaker chart, Data data) {
    return draw(chart, data, Locale.ENGLISH, Map.of());
  }

  private static ChartDrawing draw(
      ChartMaker chart, Data data, Locale locale, Map<String, String> messages) {
    return ChartDrawing.prepare(
        chart.chart(), data.table(), new DrawOptions(locale, null, messages));
  }

  private static Data sales() {
    return new Data().texts("q", "Q1", "Q1", "Q2", "Q2", "Q1", "Q2")
        .texts("r", "N", "S", "N", "S", "N", null).numbers("v", 10, 20, 30, Double.NaN, 5, 7);
  }

  private static double y(ChartDrawing drawing, double py) {
    Frame frame = drawing.plots().get(0).frame();
    return frame.y().value((frame.area().getMaxY() - py) / frame.area().getHeight());
  }

  private static double x(ChartDrawing drawing, double px) {
    Frame frame = drawing.plots().get(0).frame();
    return frame.x().value((px - frame.area().getX()) / frame.area().getWidth());
  }

  @Test
  void groupedBarsSumTheirRows() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "q", "sum(v)", "r"), sales());
    List<Mark> marks = drawing.marks();
    assertEquals(3, marks.size());
    assertEquals(Map.of("q", "Q1", "v (sum)", "15", "r", "N"), marks.get(0).values());
    assertEquals(List.of("q", "v (sum)", "r"), List.copyOf(marks.get(0).values().keySet()));
    assertEquals("q: Q1\nv (sum): 15\nr: N", marks.get(0).tooltip());
    double[] tops = {15, 20, 30};
    for (int i = 0; i < 3; i++) {
      Rectangle2D bar = marks.get(i).area().getBounds2D();
      assertEquals(tops[i], y(drawing, bar.getY()), CLOSE);
      assertEquals(0, y(drawing, bar.getMaxY()), CLOSE);
      assertEquals(0, marks.get(i).element());
      assertEquals("", marks.get(i).panel());
    }
    assertEquals(marks.get(0).area().getBounds2D().getMaxX(),
        marks.get(1).area().getBounds2D().getX(), CLOSE);
  }

  @Test
  void stackedBarsStandOnEachOther() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "q", "sum(v)", "r", STACKED), sales());
    Mark lower = drawing.marks().stream().filter(m -> m.values().equals(
        Map.of("q", "Q1", "v (sum)", "15", "r", "N"))).findFirst().orElseThrow();
    Mark upper = drawing.marks()
                     .stream()
                     .filter(m -> m.values().get("r").equals("S"))
                     .findFirst()
                     .orElseThrow();
    assertEquals(lower.area().getBounds2D().getY(), upper.area().getBounds2D().getMaxY(), CLOSE);
    assertEquals(35, y(drawing, upper.area().getBounds2D().getY()), CLOSE);
  }

  @Test
  void filledBarsShowShares() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "q", "sum(v)", "r", FILLED), sales());
    Mark mark = drawing.marks().get(0);
    assertEquals("42.9%", mark.values().get("Share"));
    assertEquals(15 / 35.0, y(drawing, mark.area().getBounds2D().getY()), 1e-4);
  }

  @Test
  void negativeBarsHangFromZero() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "q", "v", null),
        new Data().texts("q", "a", "b").numbers("v", 4, -3));
    Rectangle2D bar = drawing.marks().get(1).area().getBounds2D();
    assertEquals(0, y(drawing, bar.getY()), CLOSE);
    assertEquals(-3, y(drawing, bar.getMaxY()), CLOSE);
  }

  @Test
  void barsOfNumbersByCategoryLie() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "v", "q", null),
        new Data().texts("q", "a", "b").numbers("v", 4, 8));
    Rectangle2D first = drawing.marks().get(0).area().getBounds2D();
    Rectangle2D second = drawing.marks().get(1).area().getBounds2D();
    assertEquals(4, x(drawing, first.getMaxX()), CLOSE);
    assertEquals(8, x(drawing, second.getMaxX()), CLOSE);
    assertTrue(first.getMaxY() < second.getY(), "the first category is at the top");
  }

  @Test
  void rowsAtOnePlaceShareTheWidthOfABar() {
    ChartDrawing drawing = draw(new ChartMaker().add(BAR, "q", "v", null),
        new Data().texts("q", "a", "a", "b").numbers("v", 1, 2, 3));
    Rectangle2D first = drawing.marks().get(0).area().getBounds2D();
    Rectangle2D second = drawing.marks().get(1).area().getBounds2D();
    assertEquals(first.getMaxX(), second.getX(), CLOSE);
    assertEquals(
        drawing.marks().get(2).area().getBounds2D().getWidth(), first.getWidth() * 2, CLOSE);
  }

  @Test
  void pointsStandAtTheirValues() {
    ChartDrawing drawing =
        draw(new ChartMaker().x(ChartMaker.scale(ScaleKind.LOG)).add(POINT, "x", "y", null),
            new Data().numbers("x", 1, 1000, 30, Double.NaN).numbers("y", 5, -5, Double.NaN, 3));
    assertEquals(2, drawing.marks().size());
    Rectangle2D point = drawing.marks().get(1).area().getBounds2D();
    assertEquals(1000, x(drawing, point.getCenterX()), 0.1);
    assertEquals(-5, y(drawing, point.getCenterY()), CLOSE);
  }

  @Test
  void pointsBeyondGivenLimitsAreNotMarks() {
    ChartDrawing drawing =
        draw(new ChartMaker().x(ChartMaker.limits(0.0, 10.0)).add(POINT, "x", "y", null),
            new Data().numbers("x", 1, 11).numbers("y", 5, 6));
    assertEquals(1, drawing.marks().size());
  }

  @Test
  void reversedAxesTurnPositionsAround() {
    ChartDrawing drawing =
        draw(new ChartMaker().y(ChartMaker.reversed()).add(POINT, "x", "y", null),
            new Data().numbers("x", 1, 2).numbers("y", 1, 2));
    assertTrue(drawing.marks().get(0).area().getBounds2D().getY()
        < drawing.marks().get(1).area().getBounds2D().getY());
  }

  @Test
  void linesAreSortedAndSkipMissingValues() {
    ChartDrawing drawing = draw(new ChartMaker().add(LINE, "x", "y", null),
        new Data().numbers("x", 3, 1, 2).numbers("y", 30, 10, Double.NaN));
    assertEquals(
        List.of("1", "3"), drawing.marks().stream().map(m -> m.values().get("x")).toList());
  }

  @Test
  void stackedAreasInterpolateBetweenTheirOwnValues() {
    ChartDrawing drawing = draw(new ChartMaker().add(AREA, "x", "y", "c"),
        new Data().numbers("x", 0, 1, 2, 0, 2).numbers("y", 1, 1, 1, 10, 30)
            .texts("c", "a", "a", "a", "b", "b"));
    Rectangle2D last = drawing.marks().get(drawing.marks().size() - 1).area().getBounds2D();
    assertEquals(5, drawing.marks().size());
    assertEquals(31, y(drawing, last.getY()), CLOSE);
  }

  @Test
  void histogramCountsItsBins() {
    ChartDrawing drawing = draw(new ChartMaker().add(HISTOGRAM, "v", null, null).bins(4),
        new Data().numbers("v", 0, 1, 1.5, 4, 7, 8));
    assertEquals(Map.of("v", "0 \u2013 2", "Count", "3"), drawing.marks().get(0).values());
    assertEquals(List.of("3", "1", "2"),
        drawing.marks().stream().map(m -> m.values().get("Count")).toList());
    Rectangle2D bin = drawing.marks().get(0).area().getBounds2D();
    assertEquals(0, x(drawing, bin.getX()), CLOSE);
    assertEquals(2, x(drawing, bin.getMaxX()), CLOSE);
    assertEquals(3, y(drawing, bin.getY()), CLOSE);
  }

  @Test
  void boxesShowQuartilesAndOutliers() {
    ChartDrawing drawing = draw(new ChartMaker().add(BOX, "g", "v", null),
        new Data().texts("g", "a", "a", "a", "a", "a", "a").numbers("v", 1, 2, 3, 4, 5, 50));
    Mark box = drawing.marks().get(0);
    assertEquals(List.of("g", "Upper whisker", "Upper quartile", "Median", "Lower quartile",
        "Lower whisker", "Count"), List.copyOf(box.values().keySet()));
    assertEquals("3.5", box.values().get("Median"));
    assertEquals(4.75, y(drawing, box.area().getBounds2D().getY()), CLOSE);
    assertEquals(2.25, y(drawing, box.area().getBounds2D().getMaxY()), CLOSE);
    assertEquals(Map.of("g", "a", "v", "50"), drawing.marks().get(1).values());
    assertEquals(50, y(drawing, drawing.marks().get(1).area().getBounds2D().getCenterY()), CLOSE);
  }

  @Test
  void slicesHaveTheAnglesOfTheirShares() {
    ChartDrawing drawing = draw(new ChartMaker().add(PIE, "n", "v", null),
        new Data().texts("n", "a", "b", "c").numbers("v", 1, 0, 3));
    assertEquals(2, drawing.marks().size());
    assertEquals(Map.of("n", "c", "v", "3", "Share", "75%"), drawing.marks().get(1).values());
    Arc2D slice = (Arc2D) drawing.marks().get(1).area();
    assertEquals(0, slice.getAngleStart(), CLOSE);
    assertEquals(-270, slice.getAngleExtent(), CLOSE);
  }

  @Test
  void cellsTileTheHeatMap() {
    ChartDrawing drawing = draw(new ChartMaker().add(HEATMAP, "x", "y", "mean(v)"),
        new Data()
            .texts("x", "a", "b", "a", "b")
            .texts("y", "c", "c", "d", "d")
            .numbers("v", 1, 2, 3, 4));
    Rectangle2D area = drawing.plots().get(0).frame().area();
    Rectangle2D cell = drawing.marks().get(3).area().getBounds2D();
    assertEquals(Map.of("x", "b", "y", "d", "v (mean)", "4"), drawing.marks().get(3).values());
    assertEquals(area.getCenterX(), cell.getX(), CLOSE);
    assertEquals(area.getCenterY(), cell.getY(), CLOSE);
    assertEquals(area.getMaxX(), cell.getMaxX(), CLOSE);
    assertEquals(area.getMaxY(), cell.getMaxY(), CLOSE);
  }

  @Test
  void marksOfPanelsNameTheirPanel() {
    Data data = new Data().numbers("x", 1, 2).numbers("y", 1, 2).texts("p", "left", "right");
    ChartDrawing drawing =
        draw(new ChartMaker().add(POINT, "x", "y", null).facet("p", 2, true, true), data);
    assertEquals(List.of("left", "right"), drawing.marks().stream().map(Mark::panel).toList());
    assertEquals("left", drawing.marks().get(0).values().get("p"));
    assertEquals(2, drawing.plots().size());
    double leftEnd = drawing.plots().get(0).frame().area().getMaxX();
    assertTrue(drawing.marks().get(1).area().getBounds2D().getX() > leftEnd);
    assertEquals(drawing.plots().get(0).frame().x(), drawing.plots().get(1).frame().x());
  }

  @Test
  void freeAxesFitTheirOwnPanel() {
    Data data = new Data().numbers("x", 0, 1, 100, 200).numbers("y", 1, 2, 3, 4)
        .texts("p", "left", "left", "right", "right");
    ChartDrawing drawing =
        draw(new ChartMaker().add(POINT, "x", "y", null).facet("p", 2, false, true), data);
    assertTrue(drawing.plots().get(0).frame().x().upper() < 2);
    assertTrue(drawing.plots().get(1).frame().x().lower() > 50);
  }

  @Test
  void freeCategoriesShowOnlyThoseOfTheirPanel() {
    Data data =
        new Data().texts("c", "a", "b", "c").numbers("v", 1, 2, 3).texts("p", "l", "l", "r");
    ChartDrawing drawing =
        draw(new ChartMaker().add(BAR, "c", "v", null).facet("p", 2, false, true), data);
    assertTrue(drawing.plots().get(0).frame().x().shows(0));
    assertFalse(drawing.plots().get(1).frame().x().shows(0));
    Rectangle2D area = drawing.plots().get(1).frame().area();
    assertEquals(
        area.getCenterX(), drawing.marks().get(2).area().getBounds2D().getCenterX(), CLOSE);
  }

  @Test
  void textsAreTranslatedAndNumbersLocalised() {
    ChartDrawing drawing =
        draw(new ChartMaker().titles("Sales", null, null).add(BAR, "q", "mean(v)", null),
            new Data().texts("q", "Yes").numbers("v", 1234.5), Locale.GERMANY,
            Map.of("Sales", "Umsatz", "v", "Wert", "mean", "Mittel", "Yes", "Ja"));
    assertEquals(Map.of("q", "Ja", "Wert (Mittel)", "1.234,5"), drawing.marks().get(0).values());
    RecordingGraphics g = new RecordingGraphics(800, 600);
    drawing.draw(g);
    List<String> texts = g.texts.stream().map(RecordingGraphics.TextRun::text).toList();
    assertTrue(texts.containsAll(List.of("Umsatz", "Wert (Mittel)", "Ja")), texts.toString());
  }

  @Test
  void timesAreDatesInTooltips() {
    ChartDrawing drawing = draw(new ChartMaker().add(LINE, "t", "v", null),
        new Data().times("t", "2024-02-29T00:00", "2024-03-01T00:00").numbers("v", 1, 2),
        Locale.GERMANY, Map.of());
    assertEquals("29.02.2024", drawing.marks().get(0).values().get("t"));
  }

  @Test
  void everyMarkOfEveryChartLiesInThePicture() {
    Rectangle2D picture = new Rectangle2D.Double(-30, -30, 860, 660);
    ChartCases.all().forEach((name, item) -> {
      ChartDrawing drawing = draw(item.chart(), item.data());
      assertFalse(drawing.marks().isEmpty(), name);
      drawing.marks().forEach(mark -> {
        assertTrue(picture.contains(mark.area().getBounds2D()), () -> name + ": " + mark);
        assertFalse(mark.values().isEmpty(), name);
        mark.values().values().forEach(
            text -> assertFalse(text.isBlank(), () -> name + ": " + mark));
      });
    });
  }
}
