// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.util.Set;
import java.util.stream.Collectors;
import org.chartbridge.draw.Style;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** Which of the settings of a style trees follow. */
class TreeStyleTest {
  private static final String HOUSE = "<font family=\"DejaVu Serif\"/>"
      + "<colors background=\"#fffdf7\" text=\"#5b1a2b\" muted=\"#2f6b3c\"/>"
      + "<axes color=\"#1d4f91\"/>";

  private static final TreeDocument IRIS = PmmlReader.read(Models.example("iris"));

  private static Style style(String content) {
    String document = "<style xmlns=\"urn:chartbridge:style:1\">" + content + "</style>";
    return Style.parse(Models.utf8(document), null);
  }

  private static TreePicture picture(TreeDocument document, Style style) {
    return new TreePictures(document, TreeDisplay.DEFAULT, style, SamplePaths.NONE).shown();
  }

  private static RecordingGraphics drawn(TreeDocument document, Style style) {
    RecordingGraphics g = new RecordingGraphics();
    picture(document, style).draw(g);
    return g;
  }

  private static Set<Color> textColors(RecordingGraphics g) {
    return g.texts.stream().map(RecordingGraphics.Text::color).collect(Collectors.toSet());
  }

  @ParameterizedTest
  @ValueSource(strings = {"iris", "airquality"})
  void textsHaveTheFontAndTheColoursOfTheStyle(String model) {
    RecordingGraphics g = drawn(PmmlReader.read(Models.example(model)), style(HOUSE));
    for (RecordingGraphics.Text text : g.texts) {
      assertEquals("DejaVu Serif", text.font().getFamily(), text.text());
    }
    assertEquals(Set.of(new Color(0x5B1A2B), new Color(0x2F6B3C)), textColors(g));
    assertTrue(g.lineColors.contains(new Color(0x1D4F91)), g.lineColors.toString());
  }

  @Test
  void overviewsToo() {
    RecordingGraphics g =
        drawn(PmmlReader.read(Models.odd("nested-segments")), style(HOUSE));
    assertEquals(Set.of("DejaVu Serif"),
        g.texts.stream().map(text -> text.font().getFamily()).collect(Collectors.toSet()));
    assertEquals(Set.of(new Color(0x5B1A2B), new Color(0x2F6B3C)), textColors(g));
  }

  /** Nodes are as wide as their texts. */
  @Test
  void aWiderFontMakesAWiderTree() {
    int wide = picture(IRIS, style("<font family=\"DejaVu Sans\"/>")).width();
    assertTrue(wide > picture(IRIS, Style.named("print")).width());
  }

  @Test
  void eachBuiltInStyleHasItsColours() {
    assertEquals(Set.of(new Color(0x1F1F1F), new Color(0x555555)),
        textColors(drawn(IRIS, Style.named("print"))));
    assertEquals(Set.of(new Color(0xF2F2F2), new Color(0xB9BEC6)),
        textColors(drawn(IRIS, Style.named("dark"))));
    assertEquals(Set.of(Color.BLACK, new Color(0x404040)),
        textColors(drawn(IRIS, Style.named("mono"))));
  }

  /** A document that makes the ground dark and says nothing of texts. */
  @Test
  void textsThatCouldNotBeReadOnTheGroundAreReplaced() {
    RecordingGraphics g = drawn(IRIS, style("<colors background=\"#202020\"/>"));
    assertEquals(Set.of(new Color(0xF2F2F2), new Color(0xB9BEC6)), textColors(g));
    assertNotEquals(Set.of(), g.lineColors);
  }

  @Test
  void whatIsPaleButCanBeReadIsLeft() {
    RecordingGraphics g = drawn(IRIS, style("<colors text=\"#8c6d1f\" muted=\"#a0a0a0\"/>"));
    assertEquals(Set.of(new Color(0x8C6D1F), new Color(0xA0A0A0)), textColors(g));
  }
}
