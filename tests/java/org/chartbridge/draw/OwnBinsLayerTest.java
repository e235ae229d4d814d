// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.chartbridge.chart.ElementKind.BAR;
import static org.chartbridge.chart.ElementKind.POINT;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Data;
import org.chartbridge.data.Table;
import org.junit.jupiter.api.Test;

/** Histograms that bring their bins. */
class OwnBinsLayerTest {
  private static final double CLOSE = 0.01;
  private static final List<Bin> BINS =
      List.of(new Bin(0, 5, 12), new Bin(5, 15, 3), new Bin(20, 30, 0));
  private static final Table NO_DATA = new Table(List.of(), 0);

  private static ChartDrawing draw(Chart chart, Table table) {
    return ChartDrawing.prepare(chart, table, new DrawOptions(Locale.ENGLISH, null, Map.of()));
  }

  private static Chart with(ChartMaker maker, Element histogram) {
    Chart chart = maker.chart();
    List<Element> elements = new ArrayList<>(List.of(histogram));
    elements.addAll(chart.elements());
    return chart.withElements(elements);
  }

  private static Element bins(List<Bin> bins) {
    return Element.histogram(bins, null, 1);
  }

  private static double x(ChartDrawing drawing, int panel, double px) {
    Frame frame = drawing.plots().get(panel).frame();
    return frame.x().value((px - frame.area().getX()) / frame.area().getWidth());
  }

  private static double y(ChartDrawing drawing, int panel, double py) {
    Frame frame = drawing.plots().get(panel).frame();
    return frame.y().value((frame.area().getMaxY() - py) / frame.area().getHeight());
  }

  @Test
  void needNoDataAndStandWhereTheyBelong() {
    ChartDrawing drawing = draw(with(new ChartMaker(), bins(BINS)), NO_DATA);
    assertEquals(3, drawing.marks().size());
    for (int i = 0; i < 3; i++) {
      Rectangle2D bar = drawing.marks().get(i).area().getBounds2D();
      assertEquals(BINS.get(i).from(), x(drawing, 0, bar.getX()), CLOSE);
      assertEquals(BINS.get(i).to(), x(drawing, 0, bar.getMaxX()), CLOSE);
      assertEquals(BINS.get(i).value(), y(drawing, 0, bar.getY()), CLOSE);
      assertEquals(0, y(drawing, 0, bar.getMaxY()), CLOSE);
    }
    assertEquals("Bin: 5 \u2013 15\nCount: 3", drawing.marks().get(1).tooltip());
  }

  @Test
  void heightsWithFractionsAreNoCounts() {
    ChartDrawing drawing =
        draw(with(new ChartMaker(), bins(List.of(new Bin(0, 0.5, 0.25)))), NO_DATA);
    assertEquals("Bin: 0 \u2013 0.5\nValue: 0.25", drawing.marks().get(0).tooltip());
  }

  @Test
  void titlesOfTheAxesNameTheValues() {
    Axis x = new Axis(ScaleKind.LINEAR, "Weight", null, null, false, true, null);
    Axis y = new Axis(ScaleKind.AUTO, "Animals", null, null, false, true, null);
    ChartDrawing drawing = draw(with(new ChartMaker().x(x).y(y), bins(BINS)), NO_DATA);
    assertEquals("Weight: 0 \u2013 5\nAnimals: 12", drawing.marks().get(0).tooltip());
  }

  @Test
  void standInEachPanelBehindTheOtherElements() {
    Data data = new Data().numbers("a", 1, 2, 3).numbers("b", 4, 5, 6).texts("f", "p", "q", "q");
    ChartMaker points =
        new ChartMaker().add(POINT, "a", "b", null).facet("f", null, true, true);
    ChartDrawing drawing = draw(with(points, bins(BINS)), data.table());
    List<Mark> marks = drawing.marks();
    assertEquals(9, marks.size());
    assertEquals(6, marks.stream().filter(mark -> mark.element() == 0).count());
    assertEquals("f: q\na: 0 \u2013 5\nCount: 12",
        marks.stream().filter(mark -> mark.panel().equals("q")).findFirst().orElseThrow()
            .tooltip());
    for (int panel = 0; panel < 2; panel++) {
      Rectangle2D bar = marks.get(panel == 0 ? 0 : 4).area().getBounds2D();
      assertEquals(5, x(drawing, panel, bar.getMaxX()), CLOSE);
      assertEquals(12, y(drawing, panel, bar.getY()), CLOSE);
    }
  }

  @Test
  void haveTheirColourAndLeaveEmptyBinsEmpty() {
    Element green = Element.histogram(BINS, "#00ff00", 0.5);
    ChartDrawing drawing = draw(with(new ChartMaker(), green), NO_DATA);
    BufferedImage image = new BufferedImage(800, 600, BufferedImage.TYPE_INT_RGB);
    Graphics2D g = image.createGraphics();
    drawing.draw(g);
    g.dispose();
    Rectangle2D bar = drawing.marks().get(0).area().getBounds2D();
    Color color = new Color(image.getRGB((int) bar.getCenterX(), (int) bar.getMaxY() - 20));
    assertEquals(255, color.getGreen());
    assertEquals(127, color.getRed(), 2);
    Rectangle2D empty = drawing.marks().get(2).area().getBounds2D();
    assertEquals(0, empty.getHeight(), CLOSE);
  }

  @Test
  void zerosAndUnequalWidthsFitLogAxes() {
    Axis log = ChartMaker.scale(ScaleKind.LOG);
    List<Bin> decades = List.of(new Bin(0.1, 1, 0), new Bin(1, 10, 20), new Bin(10, 1000, 5));
    ChartDrawing drawing = draw(with(new ChartMaker().x(log).y(log), bins(decades)), NO_DATA);
    Rectangle2D bar = drawing.marks().get(1).area().getBounds2D();
    assertEquals(1, x(drawing, 0, bar.getX()), CLOSE);
    assertEquals(10, x(drawing, 0, bar.getMaxX()), CLOSE);
    assertEquals(20, y(drawing, 0, bar.getY()), CLOSE);
    assertEquals(bar.getMaxY(), drawing.plots().get(0).frame().area().getMaxY(), CLOSE);
  }

  @Test
  void allMayBeEmpty() {
    ChartDrawing drawing =
        draw(with(new ChartMaker(), bins(List.of(new Bin(3, 4, 0)))), NO_DATA);
    assertTrue(y(drawing, 0, drawing.marks().get(0).area().getBounds2D().getY()) < CLOSE);
  }

  @Test
  void cannotShareAnAxisOfCategoriesOrTimes() {
    Data data = new Data().texts("t", "a", "b").numbers("n", 1, 2)
        .times("d", "2024-01-01T00:00", "2024-01-02T00:00");
    String message = "Element 1 (histogram), x: its bins are numbers, but the other elements show"
        + " something else on this axis; give the histogram a chart of its own, or show a column"
        + " of numbers there.";
    for (String column : List.of("t", "d")) {
      Chart chart = with(new ChartMaker().add(BAR, column, "sum(n)", null), bins(BINS));
      assertEquals(message,
          assertThrows(ChartException.class, () -> draw(chart, data.table())).getMessage());
      List<Element> above = new ArrayList<>(chart.elements());
      java.util.Collections.reverse(above);
      assertEquals(message.replace("Element 1", "Element 2"),
          assertThrows(ChartException.class,
              () -> draw(chart.withElements(above), data.table())).getMessage());
    }
    Chart horizontal = with(new ChartMaker().add(BAR, "sum(n)", "t", null), bins(BINS));
    assertEquals(message.replace(", x:", ", y:"),
        assertThrows(ChartException.class, () -> draw(horizontal, data.table())).getMessage());
  }

  @Test
  void areNamedInTheLegendBesideOtherElements() {
    Data data = new Data().numbers("a", 1, 2, 3).numbers("b", 4, 5, 6);
    Chart chart = with(new ChartMaker().add(POINT, "a", "b", null), bins(BINS));
    DrawOptions options = new DrawOptions(Locale.ENGLISH, null, Map.of("Histogram", "H"));
    Plan plan = new Plan(chart, data.table(), options);
    Scene scene = new Scene(plan);
    assertEquals("b", scene.y.title);
    assertEquals("a", scene.x.title);
    assertEquals("H", LegendBuilder.seriesKey(plan, scene.elements.get(0)));
    assertTrue(scene.elements.get(0).seriesIndex != scene.elements.get(1).seriesIndex);
  }
}
