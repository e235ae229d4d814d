// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.chartbridge.vega.Documents.encoding;
import static org.chartbridge.vega.Documents.interactive;
import static org.chartbridge.vega.Documents.mark;
import static org.chartbridge.vega.Documents.steps;
import static org.chartbridge.vega.Documents.texts;
import static org.chartbridge.vega.Documents.view;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class InteractiveChartTest {
  private static final String PLACES = "lon,lat,n\n170,-20,3\n-175,-10,5\n";
  private static final String LAND =
      "{\"type\":\"Polygon\",\"coordinates\":[[[165,-30],[175,-30],[175,-20],[165,-30]]]}";

  private static JsonNode map(String text, String csv, String options) {
    return interactive(Documents.chart(text, csv), options, LAND);
  }

  private static String refused(String text, String csv) {
    return assertThrows(ChartException.class, () -> map(text, csv, "")).getMessage();
  }

  @Test
  void marksSayTheirValues() {
    JsonNode chart = interactive("draw bar: x region, y sum of sales, color product", "");
    JsonNode tooltip = encoding(chart, 0).path("tooltip");
    assertEquals(List.of("region", "sales (sum)", "product"),
        List.of(tooltip.at("/0/title").asText(), tooltip.at("/1/title").asText(),
            tooltip.at("/2/title").asText()));
    assertEquals("svg", chart.at("/usermeta/embedOptions/renderer").asText());
    assertFalse(
        encoding(interactive("draw bar: x region", "{\"tooltips\": false}"), 0).has("tooltip"));
  }

  @Test
  void linesHaveUnseenPointsThatSayTheirValues() {
    JsonNode chart = interactive("draw line: x month, y sum of sales", "");
    assertEquals(2, chart.at("/layer/0/layer").size());
    JsonNode points = chart.at("/layer/0/layer/1");
    assertEquals(0, points.at("/mark/opacity").asInt(1));
    assertTrue(points.path("encoding").has("tooltip"));
  }

  @Test
  void labelsCannotBreakOutOfExpressions() {
    JsonNode chart = interactive(
        "column region: category, label \"a\\\\b \\\"c\\\"\"\ndraw bar: x region", "");
    assertEquals("a\\\\b \"c\"", encoding(chart, 0).at("/tooltip/0/title").asText());
  }

  @Test
  void axesOfNumbersAndTimesZoom() {
    JsonNode both = interactive("draw point: x month, y sales", "");
    assertEquals("{\"name\":\"zoom\",\"select\":{\"type\":\"interval\",\"encodings\":[\"x\","
        + "\"y\"]},\"bind\":\"scales\"}", view(both, 0).at("/params/0").toString());
    JsonNode one = interactive("draw bar: x region, y sum of sales", "");
    assertEquals(List.of("y"), texts(view(one, 0).at("/params/0/select/encodings")));
    assertTrue(mark(one, 0).path("clip").asBoolean());
    JsonNode none = interactive("draw heatmap: x region, y product, color mean of sales", "");
    assertFalse(none.toString().contains("\"zoom\""));
    assertFalse(interactive("draw point: x month, y sales", "{\"zoom\": false}").toString()
        .contains("scales"));
  }

  @Test
  void marksArePickedByThemselvesAndByTheLegend() {
    JsonNode chart = interactive("draw bar: x region, y sum of sales, color product", "");
    JsonNode params = view(chart, 0).path("params");
    assertEquals("legend", params.at("/1/bind").asText());
    assertEquals(List.of("product"), texts(params.at("/1/select/fields")));
    assertEquals(List.of("region", "product", "product rank"),
        texts(params.at("/2/select/fields")));
    assertEquals("{\"and\":[{\"param\":\"legend_1\"},{\"param\":\"picked_1\"}]}",
        encoding(chart, 0).at("/opacity/condition/test").toString());
    assertFalse(interactive("draw bar: x region", "{\"selection\": \"none\"}").toString()
        .contains("picked"));
  }

  @Test
  void aRangeCanBeDrawnInsteadOfPicking() {
    JsonNode params = view(
        interactive("draw point: x month, y sales", "{\"selection\": \"interval\"}"), 0)
        .path("params");
    assertTrue(params.at("/0/select/translate").asText().contains("event.shiftKey"));
    assertEquals("brush", params.at("/1/name").asText());
    assertTrue(params.at("/1/select/on").asText().contains("!event.shiftKey"));
  }

  @Test
  void rowsCanBeInAFileOfTheirOwn() {
    VegaLiteChart chart = VegaLiteChart.interactive(
        Documents.chart("draw bar: x month, y sum of sales, color product", Documents.CSV),
        InteractiveOptions.DEFAULT, List.of(), "rows.json", "canvas");
    JsonNode document = Documents.written(chart);
    assertEquals("{\"url\":\"rows.json\",\"format\":{\"type\":\"json\","
        + "\"parse\":{\"month\":\"date\"}}}", document.path("data").toString());
    assertFalse(encoding(document, 0).at("/y/scale").has("domain"), "the rows may change");
    assertFalse(encoding(document, 0).at("/color/scale").has("domain"));
  }

  @Test
  void mapsLieUnderTheMarks() {
    JsonNode chart = map("draw point: x lon, y lat, size n", PLACES, "");
    assertEquals("geoshape", chart.at("/layer/0/mark/type").asText());
    assertEquals("Feature", chart.at("/layer/0/data/values/0/type").asText());
    assertEquals("lon", encoding(chart, 1).at("/longitude/field").asText());
    assertEquals("lat", encoding(chart, 1).at("/latitude/field").asText());
    assertFalse(encoding(chart, 1).has("x"));
    assertEquals("mercator", chart.at("/projection/type").asText());
    assertEquals("[-map_longitude, 0, 0]", chart.at("/projection/rotate/expr").asText());
    assertEquals(175, chart.at("/params/1/value").asDouble(), "165 to 185 degrees");
    assertEquals("map_zoom", chart.at("/params/0/name").asText());
    assertEquals("range", chart.at("/params/0/bind/input").asText());
  }

  @Test
  void linesOnAMapFollowTheRows() {
    JsonNode chart = map("draw line: x lon, y lat", PLACES, "");
    assertEquals("row", encoding(chart, 1).at("/order/field").asText());
  }

  @Test
  void mapsLookAsTheOptionsSay() {
    JsonNode chart = map("draw point: x lon, y lat", PLACES, """
        {"zoom": false, "map": {"projection": "equirectangular", "fill": "#112233",
         "stroke": "#445566", "label": "name"}}""");
    assertFalse(chart.has("params"));
    assertEquals("[-175,0,0]", chart.at("/projection/rotate").toString());
    assertTrue(chart.at("/layer/0/mark/fill/expr").asText().contains("'#112233'"));
    assertTrue(chart.at("/layer/0/mark/stroke/expr").asText().contains("'#445566'"));
    assertEquals("name", chart.at("/layer/0/encoding/tooltip/0/title").asText());
    assertEquals("datum.properties['name']",
        steps(chart.at("/layer/0"), "calculate").get(0).path("calculate").asText());
    JsonNode fitted =
        map("draw point: x lon, y lat", PLACES, "{\"map\": {\"projection\": \"equalEarth\"}}");
    assertFalse(fitted.path("projection").has("scale"), "Vega fits it");
    assertFalse(fitted.has("params"));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "draw bar: x lon, y lat|line 1, column 1: Element 1 (bar) has no place on a map, "
          + "which shows points and lines",
      "draw pie: x lon, y n|line 1, column 1: Element 1 (pie) has no place on a map",
      "draw point: x lon, y lat / panels by n|line 2, column 11: Facet: a map has no panels",
      "draw point: x lon, y lat / axis x: category|line 1, column 15: "
          + "Element 1 (point), x: on a map it shows",
      "draw point: x n, y count|line 1, column 20: "
          + "Element 1 (point), y: on a map it shows latitudes",
      "column lat: category / draw point: x lon, y lat|line 2, column 22: "
          + "Element 1 (point), y: on a map it shows",
  })
  void whatHasNoPlaceOnAMapIsNamed(String text, String message) {
    String found = refused(text.replace(" / ", "\n"), PLACES);
    assertTrue(found.startsWith(message), found);
  }

  @Test
  void valuesThatAreNoDegreesAreNamed() {
    assertTrue(refused("draw point: x lon, y lat", "lon,lat\n5,91\n").startsWith(
        "line 1, column 22: Element 1 (point), y: the value 91 of column \"lat\" is no latitude"));
    assertTrue(refused("draw point: x lon, y lat", "lon,lat\n500,9\n").startsWith(
        "line 1, column 15: Element 1 (point), x: the value 500 of column \"lon\" is no "
            + "longitude"));
  }
}
