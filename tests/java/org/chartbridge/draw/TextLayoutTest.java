// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Rectangle;
import java.awt.geom.Area;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;

/** Whatever is drawn: every text lies inside the picture, and no two texts touch. */
class TextLayoutTest {
  private static final int[][] SIZES = {
    {800, 600}, {200, 150}, {400, 300}, {2400, 1600}, {320, 700}, {1200, 300}
  };
  private static final double SLACK = 0.6;

  @TestFactory
  List<DynamicTest> textsAreInsideAndApart() {
    List<DynamicTest> tests = new ArrayList<>();
    ChartCases.all().forEach((name, item) -> {
      for (int[] size : SIZES) {
        tests.add(test(name, item, size, "print", Locale.ENGLISH));
      }
      tests.add(test(name, item, SIZES[0], "dark", Locale.GERMANY));
      tests.add(test(name, item, SIZES[0], "mono", Locale.JAPAN));
      tests.add(test(name, item, SIZES[0], "slides", Locale.FRANCE));
      tests.add(test(name, item, SIZES[2], "slides", Locale.GERMANY));
      tests.add(test(name, item, SIZES[1], "slides", new Locale("hi", "IN")));
    });
    return tests;
  }

  private static DynamicTest test(
      String name, ChartCases.Case item, int[] size, String style, Locale locale) {
    String title = name + ", " + size[0] + "x" + size[1] + ", " + style + ", " + locale;
    return DynamicTest.dynamicTest(title, () -> {
      ChartDrawing drawing = ChartDrawing.prepare(item.chart().size(size[0], size[1]).chart(),
          item.data().table(), new DrawOptions(locale, Style.named(style), Map.of()));
      RecordingGraphics g = new RecordingGraphics(size[0], size[1]);
      drawing.draw(g);
      List<String> faults = faults(g.texts, size[0], size[1]);
      assertTrue(faults.isEmpty(), () -> title + ":\n" + String.join("\n", faults));
    });
  }

  static List<String> faults(List<RecordingGraphics.TextRun> texts, int width, int height) {
    List<String> faults = new ArrayList<>();
    Rectangle2D picture = new Rectangle(-1, -1, width + 2, height + 2);
    for (int i = 0; i < texts.size(); i++) {
      RecordingGraphics.TextRun text = texts.get(i);
      if (text.bounds().isEmpty()) {
        continue;
      }
      if (!picture.contains(text.bounds())) {
        faults.add("outside the picture: \"" + text.text() + "\" at " + text.bounds());
      }
      if (text.clip() != null && !text.clip().contains(text.bounds())) {
        faults.add("clipped: \"" + text.text() + "\"");
      }
      for (int k = 0; k < i; k++) {
        if (overlap(text, texts.get(k))) {
          faults.add("\"" + text.text() + "\" " + text.bounds() + " touches \""
              + texts.get(k).text() + "\" " + texts.get(k).bounds());
        }
      }
    }
    return faults;
  }

  private static boolean overlap(RecordingGraphics.TextRun a, RecordingGraphics.TextRun b) {
    if (!a.bounds().intersects(b.bounds())) {
      return false;
    }
    Area common = new Area(a.outline());
    common.intersect(new Area(b.outline()));
    Rectangle2D box = common.getBounds2D();
    return box.getWidth() > SLACK && box.getHeight() > SLACK;
  }
}
