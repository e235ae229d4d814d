// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import java.util.TreeSet;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Words;
import org.chartbridge.format.ChartReader;
import org.chartbridge.format.DocumentedBlocks;
import org.junit.jupiter.api.Test;

/** What is written about client templates holds. */
class ClientTemplateDocumentTest {
  private static final Path SOURCE = Path.of(System.getProperty("chartbridge.source"));

  @Test
  void everyExampleOfTheDocumentIsATemplate() throws IOException {
    List<String> examples = DocumentedBlocks.of("client-template.md", "json");
    assertEquals(2, examples.size());
    for (String example : examples) {
      ChartReader.read(ClientTemplate.toXml(example.getBytes(UTF_8)));
    }
  }

  @Test
  void everyExampleFileIsATemplate() throws IOException {
    Path folder = SOURCE.resolve("examples/client-templates");
    try (var files = Files.newDirectoryStream(folder, "*.json")) {
      int count = 0;
      for (Path file : files) {
        String text = Files.readString(file);
        String values = text.contains("\"category\"")
            ? "{\"category\":\"a\",\"measure\":\"b\"}" : "{\"measure\":\"b\"}";
        ChartReader.read(ClientTemplate.toXml((text + values).getBytes(UTF_8)));
        count++;
      }
      assertEquals(2, count);
    }
  }

  /** The members that the schema allows are those that the reader names when it finds another. */
  @Test
  void theSchemaKnowsTheMembersThatTheReaderKnows() throws IOException {
    JsonNode schema = new ObjectMapper()
        .readTree(SOURCE.resolve("docs/client-template.schema.json").toFile());
    assertEquals(expected("{\"version\":1,\"chart\":{},\"?\":1}"), names(schema.at("/properties")));
    JsonNode kinds = schema.at("/definitions/slot/properties/kind/enum");
    Set<String> words = new TreeSet<>();
    kinds.forEach(kind -> words.add(kind.asText()));
    assertEquals(new TreeSet<>(Words.all(SlotKind.class)), words);
    for (JsonNode variant : schema.at("/definitions/slot/oneOf")) {
      JsonNode kind = variant.at("/properties/kind");
      List<String> of = new ArrayList<>();
      kind.at("/enum").forEach(word -> of.add(word.asText()));
      if (of.isEmpty()) {
        of.add(kind.at("/const").asText());
      }
      for (String word : of) {
        String slot = "{\"version\":1,\"chart\":{},\"slots\":[{\"name\":\"s\",\"kind\":\"" + word
            + "\"," + (word.equals("choice") ? "\"choices\":[\"a\"]," : "") + "\"?\":1}]}";
        assertEquals(expected(slot), names(variant.at("/properties")), word);
      }
    }
    String chart = "{\"version\":1,\"chart\":{\"elements\":"
        + "[{\"bar\":{\"x\":{\"column\":\"a\"}}}],%s}}";
    Set<String> parts = expected(chart.formatted("\"?\":{}"));
    parts.addAll(expected(chart.formatted("\"?\":1")));
    assertEquals(parts, names(schema.at("/definitions/chart/properties")));
    assertEquals(expected(chart.formatted("\"titles\":{\"?\":1}")),
        names(schema.at("/definitions/chart/properties/titles/properties")));
    assertEquals(expected(chart.formatted("\"axes\":{\"x\":{\"?\":1}}")),
        names(schema.at("/definitions/axis/properties")));
    assertEquals(expected(chart.formatted("\"legend\":{\"?\":1}")),
        names(schema.at("/definitions/chart/properties/legend/properties")));
    assertEquals(expected(chart.formatted("\"facet\":{\"column\":\"a\",\"?\":1}")),
        names(schema.at("/definitions/chart/properties/facet/properties")));
    assertEquals(
        expected("{\"version\":1,\"chart\":{\"elements\":[{\"?\":{}}]}}"),
        names(schema.at("/definitions/element/properties")));
  }

  private static Set<String> names(JsonNode properties) {
    Set<String> names = new TreeSet<>();
    properties.fieldNames().forEachRemaining(names::add);
    assertTrue(!names.isEmpty(), properties.toString());
    return names;
  }

  /** What the reader would have expected in the place of the member "?". */
  private static Set<String> expected(String json) {
    String message = assertThrows(ChartException.class,
        () -> ClientTemplate.toXml(json.getBytes(UTF_8))).getMessage();
    String list = message.substring(message.indexOf("expected one of ") + 16);
    return new TreeSet<>(List.of(list.split(", ")));
  }
}
