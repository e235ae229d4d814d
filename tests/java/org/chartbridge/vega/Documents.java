// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.junit.jupiter.api.Assertions.assertThrows;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartSource;

/** Exports charts of the graph language, and finds its way through the documents. */
final class Documents {
  static final String CSV = """
      region,product,month,sales,cost
      North,Tea,2024-01-01,10,4
      North,Coffee,2024-01-01,20,8.5
      South,Tea,2024-02-01,5,
      South,Coffee,2024-02-01,,3
      East,Tea,2024-03-01,7.25,-2
      """;

  private static final ObjectMapper JSON = new ObjectMapper();

  private Documents() {}

  static Chart chart(String text, String csv) {
    return ChartSource.read(text.getBytes(StandardCharsets.UTF_8)).withData(csv);
  }

  /** The document as a viewer reads it. */
  static JsonNode written(VegaLiteChart chart) {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    try {
      JsonText.in("").writeDocument(chart.json(), bytes);
      return JSON.readTree(bytes.toByteArray());
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
  }

  static JsonNode still(String text) {
    return still(text, CSV);
  }

  static JsonNode still(String text, String csv) {
    return written(VegaLiteChart.still(chart(text, csv), "canvas"));
  }

  static JsonNode template(String text) {
    return written(VegaLiteChart.template(chart(text, null), "canvas"));
  }

  static JsonNode interactive(String text, String options, String... geoJson) {
    return interactive(chart(text, CSV), options, geoJson);
  }

  static JsonNode interactive(Chart chart, String options, String... geoJson) {
    List<GeoJson> maps = new ArrayList<>();
    for (String document : geoJson) {
      maps.add(GeoJson.read(document.getBytes(StandardCharsets.UTF_8), maps.size() + 1));
    }
    return written(
        VegaLiteChart.interactive(chart, OptionsReader.read(options), maps, null, "svg"));
  }

  static String failure(String text, String csv) {
    return assertThrows(ChartException.class, () -> still(text, csv)).getMessage();
  }

  /** The first view of a layer: the layer itself, or the first one within it. */
  static JsonNode view(JsonNode document, int layer) {
    JsonNode found = document.path("layer").path(layer);
    return found.has("layer") ? found.path("layer").path(0) : found;
  }

  static JsonNode encoding(JsonNode document, int layer) {
    return view(document, layer).path("encoding");
  }

  static JsonNode mark(JsonNode document, int layer) {
    return view(document, layer).path("mark");
  }

  /** The steps of a layer of this kind. */
  static List<JsonNode> steps(JsonNode layer, String kind) {
    List<JsonNode> steps = new ArrayList<>();
    for (JsonNode step : layer.path("transform")) {
      if (step.has(kind)) {
        steps.add(step);
      }
    }
    return steps;
  }

  static List<String> texts(JsonNode array) {
    List<String> texts = new ArrayList<>();
    array.forEach(value -> texts.add(value.asText()));
    return texts;
  }
}
