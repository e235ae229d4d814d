// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.chartbridge.chart.ElementKind.AREA;
import static org.chartbridge.chart.ElementKind.BAR;
import static org.chartbridge.chart.ElementKind.HEATMAP;
import static org.chartbridge.chart.ElementKind.LINE;
import static org.chartbridge.chart.ElementKind.PIE;
import static org.chartbridge.chart.ElementKind.POINT;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.data.Data;
import org.junit.jupiter.api.Test;

/** What can be seen in the picture. */
class PixelsTest {
  private static BufferedImage render(ChartDrawing drawing, double scale) {
    BufferedImage image = new BufferedImage((int) Math.ceil(drawing.width() * scale),
        (int) Math.ceil(drawing.height() * scale), BufferedImage.TYPE_INT_RGB);
    Graphics2D g = image.createGraphics();
    g.scale(scale, scale);
    drawing.draw(g);
    g.dispose();
    return image;
  }

  private static ChartDrawing prepare(ChartMaker chart, Data data) {
    return ChartDrawing.prepare(chart.chart(), data.table(), DrawOptions.DEFAULT);
  }

  private static Color at(BufferedImage image, double x, double y, double scale) {
    return new Color(image.getRGB((int) Math.floor(x * scale), (int) Math.floor(y * scale)));
  }

  private static Color center(BufferedImage image, Mark mark, double scale) {
    Rectangle2D area = mark.area().getBounds2D();
    return at(image, area.getCenterX(), area.getCenterY(), scale);
  }

  private static Data groups() {
    return new Data()
        .texts("c", "a", "a", "b", "b")
        .texts("g", "p", "q", "p", "q")
        .numbers("v", 3, 4, 5, -2);
  }

  @Test
  void barsHaveTheColoursOfTheirGroups() {
    ChartDrawing drawing = prepare(new ChartMaker().add(BAR, "c", "v", "g"), groups());
    for (double scale : new double[] {1, 2, 0.5, 1.37}) {
      BufferedImage image = render(drawing, scale);
      for (int i = 0; i < 4; i++) {
        assertEquals(Style.named("print").palette().get(i % 2),
            center(image, drawing.marks().get(i), scale));
      }
    }
  }

  @Test
  void barsEndSharplyWhereTheirMarksEnd() {
    ChartDrawing drawing = prepare(new ChartMaker().add(BAR, "c", "v", "g"), groups());
    BufferedImage image = render(drawing, 2);
    Rectangle2D bar = drawing.marks().get(0).area().getBounds2D();
    Color blue = Style.named("print").palette().get(0);
    assertEquals(blue, at(image, bar.getCenterX(), bar.getY() + 1, 2));
    assertEquals(blue, at(image, bar.getX() + 1, bar.getCenterY(), 2));
    Color above = at(image, bar.getCenterX(), bar.getY() - 1.5, 2);
    assertTrue(above.getRed() > 200 && above.getGreen() > 200, above.toString());
    assertEquals(Color.WHITE, at(image, bar.getX() - 1.5, bar.getMaxY() - 3, 2));
  }

  @Test
  void fillAndPaletteOfTheChartHold() {
    ChartDrawing filled =
        prepare(new ChartMaker().add(BAR, "c", "v", null).fill("#123456", 1), groups());
    assertEquals(new Color(0x123456), center(render(filled, 1), filled.marks().get(0), 1));
    ChartDrawing own =
        prepare(new ChartMaker().palette("#ff0000", "#00ff00").add(BAR, "c", "v", "g"), groups());
    assertEquals(Color.GREEN, center(render(own, 1), own.marks().get(1), 1));
  }

  @Test
  void opacityLetsTheGroundThrough() {
    ChartDrawing drawing = prepare(new ChartMaker().add(BAR, "c", "v", null).fill("#000000", 0.5),
        new Data().texts("c", "a").numbers("v", 3));
    Color color = center(render(drawing, 1), drawing.marks().get(0), 1);
    assertTrue(color.getRed() >= 100 && color.getRed() <= 130, color.toString());
  }

  @Test
  void stampedPointsLookLikeDrawnOnes() {
    Data data = new Data().numbers("x", 1, 2.3, 3.1, 4.77).numbers("y", 4, 2.2, 9.1, 1.3);
    ChartDrawing drawing = prepare(new ChartMaker().add(POINT, "x", "y", null), data);
    for (double scale : new double[] {1, 2, 0.7}) {
      BufferedImage stamped = render(drawing, scale);
      for (Mark mark : drawing.marks()) {
        assertEquals(Style.named("print").palette().get(0), center(stamped, mark, scale));
        Rectangle2D area = mark.area().getBounds2D();
        double away = area.getWidth() * 0.5 + 3;
        Color beside = at(stamped, area.getCenterX() + away, area.getCenterY() + 2.5, scale);
        assertTrue(beside.getGreen() > 200, beside.toString());
      }
    }
  }

  @Test
  void pointsAtTheEndsOfTheAxesAreWhole() {
    Data data = new Data().numbers("x", 0, 10).numbers("y", 0, 10);
    ChartDrawing drawing = prepare(new ChartMaker().x(ChartMaker.limits(0.0, 10.0))
        .y(ChartMaker.limits(0.0, 10.0)).add(POINT, "x", "y", null), data);
    BufferedImage image = render(drawing, 2);
    Rectangle2D area = drawing.marks().get(0).area().getBounds2D();
    Color outside = at(image, area.getCenterX() - 2, area.getCenterY() + 1.5, 2);
    assertEquals(Style.named("print").palette().get(0), outside);
  }

  @Test
  void linesBreakAtMissingValues() {
    Data data = new Data().numbers("x", 0, 1, 2, 3, 4).numbers("y", 5, 5, Double.NaN, 5, 5);
    ChartDrawing drawing = prepare(new ChartMaker().y(new org.chartbridge.chart.Axis(
        org.chartbridge.chart.ScaleKind.AUTO, null, 0.0, 9.7, false, false, null))
        .add(LINE, "x", "y", null), data);
    BufferedImage image = render(drawing, 2);
    Frame frame = drawing.plots().get(0).frame();
    Color blue = Style.named("print").palette().get(0);
    assertEquals(blue, at(image, frame.px(0.55), frame.py(5), 2));
    assertEquals(blue, at(image, frame.px(3.45), frame.py(5), 2));
    assertEquals(Color.WHITE, at(image, frame.px(1.55), frame.py(5), 2));
    assertEquals(Color.WHITE, at(image, frame.px(2.45), frame.py(5), 2));
  }

  @Test
  void denseLinesKeepTheirPeaks() {
    int count = 100_000;
    Data data = new Data().numbers("x", ChartCases.doubles(count, i -> i))
        .numbers("y", ChartCases.doubles(count, i -> i == 54_321 ? 100 : 0));
    ChartDrawing drawing = prepare(new ChartMaker().add(LINE, "x", "y", null), data);
    BufferedImage image = render(drawing, 1);
    Frame frame = drawing.plots().get(0).frame();
    int blues = 0;
    for (int x = (int) frame.area().getX(); x < frame.area().getMaxX(); x++) {
      Color color = new Color(image.getRGB(x, (int) frame.py(50)));
      blues += color.getBlue() - color.getRed() > 60 ? 1 : 0;
    }
    assertTrue(blues >= 1 && blues <= 4, "columns with the peak: " + blues);
  }

  @Test
  void slicesAndAreasAreFilled() {
    ChartDrawing pie = prepare(new ChartMaker().add(PIE, "c", "v", null),
        new Data().texts("c", "a", "b").numbers("v", 1, 1));
    BufferedImage image = render(pie, 1);
    Rectangle2D right = pie.marks().get(0).area().getBounds2D();
    assertEquals(Style.named("print").palette().get(0),
        at(image, right.getX() + 30, right.getCenterY() + 20, 1));
    ChartDrawing area = prepare(new ChartMaker().add(AREA, "x", "y", null),
        new Data().numbers("x", 0, 1).numbers("y", 4, 4));
    Frame frame = area.plots().get(0).frame();
    assertEquals(
        Style.named("print").palette().get(0), at(render(area, 1), frame.px(0.5), frame.py(2), 1));
  }

  @Test
  void cellsHaveNoSeams() {
    int side = 37;
    Data data = new Data().numbers("x", ChartCases.doubles(side * side, i -> i % side))
        .numbers("y", ChartCases.doubles(side * side, i -> i / side))
        .numbers("v", ChartCases.doubles(side * side, i -> 1));
    ChartDrawing drawing = prepare(new ChartMaker().add(HEATMAP, "x", "y", "v"), data);
    for (double scale : new double[] {1, 1.5, 2.2}) {
      BufferedImage image = render(drawing, scale);
      Rectangle2D area = drawing.plots().get(0).frame().area();
      Color first = at(image, area.getCenterX(), area.getCenterY(), scale);
      for (double x = area.getX() + 1; x < area.getMaxX() - 1; x += 1 / scale) {
        assertEquals(first, at(image, x, area.getCenterY(), scale), "x " + x);
      }
      for (double y = area.getY() + 1; y < area.getMaxY() - 1; y += 1 / scale) {
        assertEquals(first, at(image, area.getCenterX(), y, scale), "y " + y);
      }
    }
  }

  @Test
  void groundsAreThoseOfTheStyle() {
    for (String style : Style.NAMES) {
      ChartDrawing drawing = ChartDrawing.prepare(new ChartMaker().add(BAR, "c", "v", null).chart(),
          groups().table(), new DrawOptions(Locale.ROOT, Style.named(style), Map.of()));
      assertEquals(Style.named(style).background(), at(render(drawing, 1), 1, 1, 1), style);
    }
  }

  @Test
  void monoHasNoColours() {
    ChartCases.all().forEach((name, item) -> {
      if (name.startsWith("heat")) {
        return;
      }
      ChartDrawing drawing = ChartDrawing.prepare(item.chart().chart(), item.data().table(),
          new DrawOptions(Locale.ROOT, Style.named("mono"), Map.of()));
      BufferedImage image = render(drawing, 0.5);
      for (int rgb :
          image.getRGB(0, 0, image.getWidth(), image.getHeight(), null, 0, image.getWidth())) {
        Color color = new Color(rgb);
        int spread = Math.max(color.getRed(), Math.max(color.getGreen(), color.getBlue()))
            - Math.min(color.getRed(), Math.min(color.getGreen(), color.getBlue()));
        assertTrue(spread <= 2, name + ": " + color);
      }
    });
  }

  @Test
  void drawingLeavesTheGraphicsAsItWas() {
    ChartDrawing drawing = prepare(new ChartMaker().add(POINT, "v", "v", null), groups());
    BufferedImage image = new BufferedImage(800, 600, BufferedImage.TYPE_INT_RGB);
    Graphics2D g = image.createGraphics();
    g.scale(0.5, 0.5);
    drawing.draw(g);
    assertEquals(0.5, g.getTransform().getScaleX());
    assertEquals(null, g.getClip());
    BufferedImage again = render(drawing, 1);
    assertEquals(again.getRGB(400, 300), render(drawing, 1).getRGB(400, 300));
  }

  @Test
  void everyChartOfTheSmallestSizeIsDrawn() {
    ChartCases.all().forEach((name, item) -> {
      for (int[] size : new int[][] {{16, 16}, {16, 600}, {900, 16}, {60, 60}}) {
        ChartDrawing drawing = prepare(item.chart().size(size[0], size[1]), item.data());
        render(drawing, 1);
        drawing.marks();
      }
    });
  }
}
