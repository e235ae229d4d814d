// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.awt.Shape;
import java.awt.geom.Area;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.io.IOException;
import java.io.StringReader;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import javax.swing.text.MutableAttributeSet;
import javax.swing.text.html.HTML;
import javax.swing.text.html.HTMLEditorKit;
import javax.swing.text.html.parser.ParserDelegator;
import org.chartbridge.draw.Mark;
import org.junit.jupiter.api.Test;

class ImageMapTest {
  private static final Picture PICTURE = Picture.ofPercent(100, 50, 200, g -> {});

  /** One tag of a page with its attributes. */
  private record Tag(HTML.Tag name, Map<String, String> attributes) {}

  private static List<Tag> parse(byte[] html) throws IOException {
    List<Tag> tags = new ArrayList<>();
    new ParserDelegator().parse(
        new StringReader(new String(html, UTF_8)), new HTMLEditorKit.ParserCallback() {
          @Override
          public void handleSimpleTag(HTML.Tag tag, MutableAttributeSet attributes, int position) {
            Map<String, String> copy = new LinkedHashMap<>();
            attributes.getAttributeNames().asIterator().forEachRemaining(
                name -> copy.put(name.toString(), attributes.getAttribute(name).toString()));
            tags.add(new Tag(tag, copy));
          }

          @Override
          public void handleStartTag(HTML.Tag tag, MutableAttributeSet attributes, int position) {
            handleSimpleTag(tag, attributes, position);
          }
        }, true);
    return tags;
  }

  private static List<Map<String, String>> areas(byte[] html) throws IOException {
    List<Map<String, String>> areas = new ArrayList<>();
    for (Tag tag : parse(html)) {
      if (tag.name() == HTML.Tag.AREA) {
        areas.add(tag.attributes());
      }
    }
    return areas;
  }

  private static Mark mark(Shape area, String... labelsAndValues) {
    Map<String, String> values = new LinkedHashMap<>();
    for (int i = 0; i < labelsAndValues.length; i += 2) {
      values.put(labelsAndValues[i], labelsAndValues[i + 1]);
    }
    return new Mark(area, values, 0, "");
  }

  private static MapArea only(Shape shape, double scale) {
    List<MapArea> areas = MapArea.of(shape, scale);
    assertEquals(1, areas.size());
    return areas.get(0);
  }

  private static void assertArea(String shape, int[] coordinates, MapArea area) {
    assertEquals(shape, area.shape());
    assertArrayEquals(coordinates, area.coordinates());
  }

  @Test
  void rectanglesAndCirclesStayWhatTheyAre() {
    assertArea(
        "rect", new int[] {3, 5, 23, 46}, only(new Rectangle2D.Double(1.4, 2.5, 10, 20.4), 2));
    assertArea(
        "circle", new int[] {20, 30, 11}, only(new Ellipse2D.Double(4.6, 9.6, 10.8, 10.8), 2));
    assertEquals("poly", only(new Ellipse2D.Double(0, 0, 40, 20), 1).shape());
  }

  @Test
  void nothingIsTooSmallToPointAt() {
    assertArea("rect", new int[] {10, 20, 11, 21}, only(new Rectangle2D.Double(10, 20, 0, 0), 1));
    assertArea("circle", new int[] {5, 5, 1}, only(new Ellipse2D.Double(4.9, 4.9, 0.2, 0.2), 1));
  }

  @Test
  void pathsBecomePolygons() {
    Path2D triangle = new Path2D.Double();
    triangle.moveTo(0, 0);
    triangle.lineTo(10, 0);
    triangle.lineTo(10.1, 0.1);
    triangle.lineTo(5, 8);
    triangle.lineTo(0, 0);
    triangle.closePath();
    assertArea("poly", new int[] {0, 0, 10, 0, 5, 8}, only(triangle, 1));
    assertArea("poly", new int[] {0, 0, 30, 0, 15, 24}, only(triangle, 3));
  }

  @Test
  void aPolygonFollowsItsCurve() {
    MapArea ellipse = only(new Ellipse2D.Double(0, 0, 200, 100), 1);
    Path2D drawn = new Path2D.Double();
    int[] c = ellipse.coordinates();
    drawn.moveTo(c[0], c[1]);
    for (int i = 2; i < c.length; i += 2) {
      drawn.lineTo(c[i], c[i + 1]);
    }
    drawn.closePath();
    assertTrue(drawn.contains(100, 2) && drawn.contains(198, 50) && drawn.contains(30, 20));
    assertFalse(drawn.contains(10, 10) || drawn.contains(192, 88));
  }

  @Test
  void separatePartsAreSeparateAreas() {
    Area two = new Area(new Rectangle2D.Double(0, 0, 10, 10));
    two.add(new Area(new Rectangle2D.Double(20, 0, 10, 10)));
    assertEquals(2, MapArea.of(two, 1).size());
    assertEquals(0, MapArea.of(new Path2D.Double(), 1).size());
  }

  @Test
  void laterMarksComeFirst() throws IOException {
    List<Mark> marks = List.of(mark(new Rectangle2D.Double(0, 0, 5, 5), "n", "below"),
        mark(new Rectangle2D.Double(2, 2, 5, 5), "n", "above"));
    ImageMap map = new ImageMap(PICTURE, marks, true);
    List<Map<String, String>> areas = areas(map.html());
    assertEquals("n: above", areas.get(0).get("title"));
    assertEquals("4,4,14,14", areas.get(0).get("coords"));
    assertEquals("rect", areas.get(0).get("shape"));
    assertEquals("n: below", areas.get(1).get("title"));
    assertEquals("n: below", areas.get(1).get("alt"));
    JsonNode json = new ObjectMapper().readTree(map.json());
    assertEquals("above", json.get("areas").get(0).get("values").get("n").asText());
  }

  @Test
  void textsAreEscaped() throws IOException {
    String nasty = "\"><script>alert('x')</script>&amp;\u0001 \u00e4\uD83D\uDCC8";
    ImageMap map = new ImageMap(
        PICTURE, List.of(mark(new Rectangle2D.Double(0, 0, 5, 5), "a & b", nasty, "c", "2")), true);
    String html = new String(map.html(), UTF_8);
    assertFalse(html.contains("<script"), html);
    Map<String, String> area = areas(map.html()).get(0);
    assertEquals("a & b: " + nasty.replace('\u0001', ' ') + "\nc: 2", area.get("title"));
    JsonNode json = new ObjectMapper().readTree(map.json()).get("areas").get(0);
    assertEquals(nasty, json.get("values").get("a & b").asText());
    assertEquals("a & b: " + nasty + "\nc: 2", json.get("tooltip").asText());
  }

  @Test
  void withoutTooltipsAreasAreSilent() throws IOException {
    ImageMap map =
        new ImageMap(PICTURE, List.of(mark(new Rectangle2D.Double(0, 0, 5, 5), "a", "b")), false);
    assertFalse(areas(map.html()).get(0).containsKey("title"));
    assertFalse(new String(map.html(), UTF_8).contains("b\""));
    JsonNode area = new ObjectMapper().readTree(map.json()).get("areas").get(0);
    assertNull(area.get("tooltip"));
    assertEquals("b", area.get("values").get("a").asText());
  }

  @Test
  void jsonSaysEverything() throws IOException {
    Mark mark = new Mark(new Ellipse2D.Double(0, 0, 10, 10),
        new LinkedHashMap<>(Map.of("Region", "North")), 2, "1999");
    String json = new String(new ImageMap(PICTURE, List.of(mark), true).json(), UTF_8);
    assertEquals("{\"width\":200,\"height\":100,\"areas\":[{\"shape\":\"circle\","
            + "\"coords\":[10,10,10],\"element\":2,\"panel\":\"1999\","
            + "\"tooltip\":\"Region: North\",\"values\":{\"Region\":\"North\"}}]}",
        json);
  }

  @Test
  void aPageShowsThePictureWithItsMap() throws IOException {
    ImageMap map =
        new ImageMap(PICTURE, List.of(mark(new Rectangle2D.Double(0, 0, 5, 5), "a", "b")), true);
    byte[] page = map.page("sales 100% #1:\u00e4.png", "Sales & <more>");
    assertTrue(new String(page, UTF_8).startsWith("<!DOCTYPE html>\n<html>"));
    Map<String, String> image = null;
    Map<String, String> element = null;
    for (Tag tag : parse(page)) {
      image = tag.name() == HTML.Tag.IMG ? tag.attributes() : image;
      element = tag.name() == HTML.Tag.MAP ? tag.attributes() : element;
    }
    assertEquals("./sales%20100%25%20%231:%C3%A4.png", image.get("src"));
    assertEquals("200", image.get("width"));
    assertEquals("100", image.get("height"));
    assertEquals("Sales & <more>", image.get("alt"));
    assertEquals("#" + element.get("name"), image.get("usemap"));
    assertEquals(map.name(), element.get("name"));
    assertTrue(new String(map.page("x.png", null), UTF_8).contains("<title>x.png</title>"));
  }

  @Test
  void mapsOfDifferentChartsHaveDifferentNames() {
    Mark one = mark(new Rectangle2D.Double(0, 0, 5, 5), "a", "b");
    Mark two = mark(new Rectangle2D.Double(0, 0, 5, 6), "a", "b");
    assertEquals(new ImageMap(PICTURE, List.of(one), true).name(),
        new ImageMap(PICTURE, List.of(one), true).name());
    assertNotEquals(new ImageMap(PICTURE, List.of(one), true).name(),
        new ImageMap(PICTURE, List.of(two), true).name());
  }

  @Test
  void blocksHaveTheirLengthsInFront() {
    assertArrayEquals(new byte[] {0, 0, 0, 2, 7, 8, 0, 0, 0, 0, 0, 0, 0, 1, 9},
        Blocks.join(new byte[] {7, 8}, new byte[0], new byte[] {9}));
    byte[] large = Blocks.join(new byte[0x010203]);
    assertArrayEquals(new byte[] {0, 1, 2, 3}, Arrays.copyOf(large, 4));
    assertEquals(4 + 0x010203, large.length);
  }
}
