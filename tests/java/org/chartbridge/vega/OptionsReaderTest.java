// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.vega.InteractiveOptions.Selection;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class OptionsReaderTest {
  @Test
  void nothingStandsForTheDefaults() {
    for (String text : new String[] {null, "", "  ", "{}"}) {
      assertEquals(InteractiveOptions.DEFAULT, OptionsReader.read(text));
    }
    assertTrue(InteractiveOptions.DEFAULT.separateData());
    assertEquals(Selection.POINT, InteractiveOptions.DEFAULT.selection());
  }

  @Test
  void everyOptionIsRead() {
    InteractiveOptions options = OptionsReader.read("""
        {"tooltips": false, "zoom": false, "selection": "interval", "data": "inline",
         "map": {"projection": "equalEarth", "fill": "#112233", "stroke": "#abcdef", "label": "n"}}
        """);
    assertFalse(options.tooltips());
    assertFalse(options.zoom());
    assertEquals(Selection.INTERVAL, options.selection());
    assertFalse(options.separateData());
    assertEquals(
        new InteractiveOptions.MapOptions("equalEarth", "#112233", "#abcdef", "n"), options.map());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "{\"zom\": true}|Options: there is no option \"zom\"; expected one of tooltips, zoom,"
          + " selection, data, map; did you mean \"zoom\"?.",
      "{\"map\": {\"fil\": 1}}|Options: there is no option \"map.fil\"; expected one of"
          + " projection, fill, stroke, label; did you mean \"fill\"?.",
      "{\"zoom\": 1}|Options: \"zoom\" is 1; expected true or false.",
      "{\"selection\": \"all\"}|Options: \"selection\" is \"all\"; expected one of point,"
          + " interval, none.",
      "{\"data\": null}|Options: \"data\" is null; expected one of separate, inline.",
      "{\"map\": []}|Options: \"map\" is a list; expected a JSON object such as"
          + " {\"projection\": \"equirectangular\"}.",
      "{\"map\": {\"fill\": \"red\"}}|Options: \"map.fill\" is \"red\"; expected a colour such"
          + " as \"#e4e4e4\".",
      "{\"map\": {\"label\": \" \"}}|Options: \"map.label\" is \" \"; expected a text.",
      "[]|Options: found a list, expected a JSON object such as {\"zoom\": false}.",
  })
  void mistakesAreNamed(String text, String message) {
    ChartException e = assertThrows(ChartException.class, () -> OptionsReader.read(text));
    assertEquals(message, e.getMessage());
  }

  @Test
  void whatIsNoJsonIsToldWithItsPlace() {
    for (String text : List.of("{\"zoom\": tru}", "{\"zoom\": true} {}", "{\"a\": 1, \"a\": 2}")) {
      ChartException e = assertThrows(ChartException.class, () -> OptionsReader.read(text));
      assertTrue(e.getMessage().matches("Options: line 1, column \\d+: no JSON: .*"),
          e.getMessage());
    }
  }

  @Test
  void schemaAndReaderKnowTheSame() throws Exception {
    Path file =
        Path.of(System.getProperty("chartbridge.source"), "docs/chart-json-options.schema.json");
    JsonNode schema = new ObjectMapper().readTree(file.toFile());
    JsonNode map = schema.path("properties").path("map").path("properties");
    assertEquals(OptionsReader.PROJECTIONS,
        Documents.texts(map.path("projection").path("enum")));
    List<String> keys = new ArrayList<>();
    schema.path("properties").fieldNames().forEachRemaining(keys::add);
    map.fieldNames().forEachRemaining(key -> keys.add("map." + key));
    for (String key : keys) {
      String text = key.startsWith("map.") ? "{\"map\": {\"" + key.substring(4) + "\": {}}}"
                                           : "{\"" + key + "\": []}";
      String message =
          assertThrows(ChartException.class, () -> OptionsReader.read(text)).getMessage();
      assertTrue(message.startsWith("Options: \"" + key + "\" is "), message);
    }
  }
}
