// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class GeoJsonTest {
  /** The outer ring runs as the standard has it, against the clock. */
  private static final String SQUARE =
      "{'type':'Polygon','coordinates':[[[0,0],[4,0],[4,2],[0,2],[0,0]],"
          + "[[1,0.5],[1,1],[2,1],[2,0.5],[1,0.5]]]}";

  private static GeoJson read(String text) {
    return GeoJson.read(text.replace('\'', '"').getBytes(StandardCharsets.UTF_8), 2);
  }

  private static String failure(String text) {
    return assertThrows(ChartException.class, () -> read(text)).getMessage();
  }

  @Test
  void ringsAreTurnedForVega() {
    String features = read(SQUARE).features().toString();
    assertTrue(features.contains("[[0,0],[0,2],[4,2],[4,0],[0,0]]"), features);
    assertTrue(features.contains("[[1,0.5],[2,0.5],[2,1],[1,1],[1,0.5]]"), features);
    assertEquals(features,
        read(SQUARE.replace("[[0,0],[4,0],[4,2],[0,2],[0,0]]", "[[0,0],[0,2],[4,2],[4,0],[0,0]]"))
            .features().toString(),
        "a ring that runs the other way already stays");
  }

  @Test
  void ringsAcrossTheAntimeridianAreTurnedLikeOthers() {
    String ring = "{'type':'Polygon','coordinates':[[[179,0],[-179,0],[-179,2],[179,2],[179,0]]]}";
    assertTrue(read(ring).features().toString().contains("[[179,0],[179,2],[-179,2]"));
    assertArrayEquals(new double[] {179, 181}, read(ring).extent().longitudes());
  }

  @Test
  void everyGeometryBecomesAFeature() {
    GeoJson document = read("{'type':'GeometryCollection','geometries':["
        + "{'type':'Point','coordinates':[1,2,300]},{'type':'MultiPoint','coordinates':[[1,2]]},"
        + "{'type':'LineString','coordinates':[[0,0],[5,6]]},"
        + "{'type':'MultiLineString','coordinates':[[[0,0],[5,6]]]}," + SQUARE
        + ",{'type':'MultiPolygon','coordinates':[[[[0,0],[0,1],[1,1],[0,0]]]]},"
        + "{'type':'GeometryCollection','geometries':[]}]}");
    assertEquals(6, document.features().size());
    assertEquals("[1,2]", document.features().get(0).at("/geometry/coordinates").toString());
    assertEquals(0, document.extent().south());
    assertEquals(6, document.extent().north());
    assertArrayEquals(new double[] {0, 5}, document.extent().longitudes());
  }

  @Test
  void featuresKeepTheirSingleProperties() {
    GeoJson document = read("{'type':'FeatureCollection','features':["
        + "{'type':'Feature','properties':{'name':'A','n':3,'deep':{'x':1}},'geometry':"
        + "{'type':'Point','coordinates':[7,8]}},"
        + "{'type':'Feature','properties':null,'geometry':null}]}");
    assertEquals(1, document.features().size());
    assertEquals("{\"name\":\"A\",\"n\":3}",
        document.features().get(0).get("properties").toString());
  }

  @Test
  void theShortestStretchOfLongitudesIsShown() {
    MapExtent extent = new MapExtent();
    assertTrue(extent.isEmpty());
    extent.add(170, 0);
    extent.add(-175, 1);
    assertFalse(extent.isEmpty());
    assertArrayEquals(new double[] {170, 185}, extent.longitudes());
    extent.add(-100, 1);
    assertArrayEquals(new double[] {170, 260}, extent.longitudes());
    MapExtent east = new MapExtent();
    east.add(190, 0);
    assertArrayEquals(new double[] {-170, -170}, east.longitudes());
    MapExtent world = new MapExtent();
    for (int longitude = -180; longitude < 180; longitude += 90) {
      world.addLine(java.util.List.of(
          new double[] {longitude, 0}, new double[] {longitude + 90, 0}));
    }
    assertArrayEquals(new double[] {-180, 180}, world.longitudes());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "|it is empty.",
      "[1]|found a list, expected a JSON object with a \"type\".",
      "{}|/type: there is no \"type\".",
      "{'type':3}|/type: found 3, expected a text.",
      "{'type':'Topology'}|/type: this is TopoJSON; convert it to GeoJSON.",
      "{'type':'Circle'}|/type: found \"Circle\", expected FeatureCollection, Feature or one of"
          + " Point, MultiPoint, LineString, MultiLineString, Polygon, MultiPolygon,"
          + " GeometryCollection.",
      "{'type':'FeatureCollection'}|/features: a FeatureCollection has a list of features.",
      "{'type':'FeatureCollection','features':[3]}|/features/0: expected an object of type"
          + " Feature.",
      "{'type':'Feature','properties':{}}|a Feature has a \"geometry\", which may be null.",
      "{'type':'Feature','properties':[],'geometry':null}|/properties: found a list, expected an"
          + " object or null.",
      "{'type':'Feature','geometry':{'type':'Dot'}}|/geometry/type: found \"Dot\", expected one"
          + " of Point, MultiPoint, LineString, MultiLineString, Polygon, MultiPolygon,"
          + " GeometryCollection.",
      "{'type':'Point'}|a Point has \"coordinates\".",
      "{'type':'Point','coordinates':[1]}|/coordinates: a position has a longitude and a latitude.",
      "{'type':'Point','coordinates':[1,'x']}|/coordinates/1: found \"x\", expected a number.",
      "{'type':'Point','coordinates':[500000,2]}|/coordinates/0: the longitude 500000 is no number"
          + " of degrees; GeoJSON has longitude and latitude (WGS 84).",
      "{'type':'Point','coordinates':[52,113.5]}|/coordinates/1: the latitude 113.5 is not within"
          + " -90 to 90 degrees; the longitude stands first.",
      "{'type':'LineString','coordinates':[[1,2]]}|/coordinates: found 1 positions, expected at"
          + " least 2.",
      "{'type':'Polygon','coordinates':[[[0,0],[1,0],[1,1],[0,1]]]}|/coordinates/0: the ring is"
          + " not closed: its last position is not its first.",
      "{'type':'MultiPolygon','coordinates':[[[0,0]]]}|/coordinates/0/0: found 2 positions,"
          + " expected at least 4.",
      "{'type':'GeometryCollection'}|/geometries: a GeometryCollection has a list of geometries.",
  })
  void mistakesAreToldWithDocumentAndPlace(String text, String message) {
    assertEquals("GeoJSON document 2: " + message, failure(text == null ? "" : text));
  }

  @Test
  void whatIsNoJsonIsToldWithItsPlace() {
    assertTrue(failure("{'type':").startsWith("GeoJSON document 2: line 1, column "), failure("{"));
    assertTrue(failure(SQUARE + "x").contains("no JSON"), failure(SQUARE + "x"));
  }

  @Test
  void collectionsNestOnlySoDeep() {
    String open = "{'type':'GeometryCollection','geometries':[";
    assertTrue(failure(open.repeat(60) + "]}".repeat(60)).contains("nest more than 50 deep"));
  }
}
