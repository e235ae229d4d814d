// SPDX-License-Identifier: Apache-2.0
package com.tesk.java_client.core.documents.output.export;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.IOException;
import java.lang.reflect.Method;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.stream.Stream;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartSource;
import org.chartbridge.format.ChartWriter;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class JsonImagerTest {
  private static final String POINTS = "draw point: x lon, y lat, color \u00e4";
  private static final String ROWS = "lon,lat,\u00e4\n1,2,\u0394\n3,4,b\n";
  private static final byte[] LAND =
      bytes("{\"type\":\"Polygon\",\"coordinates\":[[[0,0],[9,0],[9,9],[0,0]]]}");

  @TempDir
  Path folder;

  private final JsonImager imager = new JsonImager();

  private static byte[] bytes(String text) {
    return text.getBytes(StandardCharsets.UTF_8);
  }

  private static byte[] chart(String text, String rows) {
    return ChartWriter.write(ChartSource.read(bytes(text)).withData(rows));
  }

  private static byte[] points() {
    return chart(POINTS, ROWS);
  }

  private String file(String name) {
    return folder.resolve(name).toString();
  }

  private JsonNode json(String name) throws IOException {
    return new ObjectMapper().readTree(folder.resolve(name).toFile());
  }

  private List<String> files() throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return new ArrayList<>(files.map(file -> file.getFileName().toString()).sorted().toList());
    }
  }

  private static String message(org.junit.jupiter.api.function.Executable export) {
    return assertThrows(ChartException.class, export).getMessage();
  }

  @Test
  void nativeCodeFindsItsMethods() throws Exception {
    assertNotNull(JsonImager.class.getConstructor());
    Method add = JsonImager.class.getMethod("addGeoJson", byte[].class);
    assertEquals(void.class, add.getReturnType());
    Method plain = JsonImager.class.getMethod("exportChartJsonToFile", String.class, byte[].class,
        boolean.class, String.class, int.class);
    assertEquals(boolean.class, plain.getReturnType());
    Method interactive = JsonImager.class.getMethod("exportInteractiveJsonToFile", String.class,
        byte[].class, String.class, String.class, String.class, int.class);
    assertEquals(boolean.class, interactive.getReturnType());
  }

  @Test
  void aPlainChartIsWrittenWithItsData() throws IOException {
    assertTrue(imager.exportChartJsonToFile("", points(), false, file("c.json"), 2));
    assertEquals(2, json("c.json").at("/data/values").size());
    assertEquals("\u0394", json("c.json").at("/data/values/0/\u00e4").asText());
    assertEquals("canvas", json("c.json").at("/usermeta/embedOptions/renderer").asText());
    assertEquals(List.of("c.json"), files());
  }

  @Test
  void aTemplateNeedsNoData() throws IOException {
    assertTrue(imager.exportChartJsonToFile(null, bytes(POINTS), true, file("t.json"), 5));
    assertEquals("data", json("t.json").at("/data/name").asText());
    assertEquals("svg", json("t.json").at("/usermeta/embedOptions/renderer").asText());
  }

  @Test
  void thePlainExportLeavesMapLayersAlone() throws IOException {
    imager.addGeoJson(LAND);
    imager.exportChartJsonToFile("", points(), false, file("c.json"), 2);
    assertFalse(json("c.json").toString().contains("geoshape"));
    imager.exportInteractiveJsonToFile("", points(), file("d.json"), "", file("c.json"), 2);
    assertTrue(json("c.json").toString().contains("geoshape"));
  }

  @Test
  void anInteractiveChartRefersToItsRows() throws IOException {
    Files.createDirectory(folder.resolve("data"));
    assertTrue(imager.exportInteractiveJsonToFile(
        "UTF-8", points(), file("data/rows 1.json"), "", file("c.json"), 2));
    assertEquals("data/rows%201.json", json("c.json").at("/data/url").asText());
    assertEquals("[{\"lon\":1,\"lat\":2,\"\u00e4\":\"\u0394\"},{\"lon\":3,\"lat\":4,"
        + "\"\u00e4\":\"b\"}]", json("data/rows 1.json").toString());
  }

  @Test
  void rowsInsideWriteNoSecondFile() throws IOException {
    imager.exportInteractiveJsonToFile(
        "", points(), "anything", "{\"data\": \"inline\"}", file("c.json"), 2);
    assertEquals(2, json("c.json").at("/data/values").size());
    assertEquals(List.of("c.json"), files());
  }

  @Test
  void mapLayersBelongToOneExport() throws IOException {
    imager.addGeoJson(LAND);
    imager.addGeoJson(LAND);
    imager.exportInteractiveJsonToFile("", points(), file("d.json"), "", file("c.json"), 2);
    assertEquals(3, json("c.json").path("layer").size());
    imager.exportInteractiveJsonToFile("", points(), file("d.json"), "", file("c.json"), 2);
    assertEquals(1, json("c.json").path("layer").size());
  }

  @Test
  void aFailedExportForgetsItsMapLayers() throws IOException {
    imager.addGeoJson(bytes("{}"));
    assertEquals("GeoJSON document 1: /type: there is no \"type\".",
        message(() -> imager.exportInteractiveJsonToFile(
            "", points(), file("d.json"), "", file("c.json"), 2)));
    assertTrue(imager.exportInteractiveJsonToFile(
        "", points(), file("d.json"), "", file("c.json"), 2));
    imager.addGeoJson(LAND);
    message(() -> imager.exportInteractiveJsonToFile(
        "", points(), file("d.json"), "{\"x\": 1}", file("c.json"), 2));
    imager.exportInteractiveJsonToFile("", points(), file("d.json"), "", file("c.json"), 2);
    assertEquals(1, json("c.json").path("layer").size());
  }

  @Test
  void theCallerMayReuseItsArray() throws IOException {
    byte[] land = LAND.clone();
    imager.addGeoJson(land);
    land[0] = 'x';
    assertTrue(imager.exportInteractiveJsonToFile(
        "", points(), file("d.json"), "", file("c.json"), 2));
  }

  @Test
  void missingDocumentsAreEmpty() {
    imager.addGeoJson(null);
    assertEquals("GeoJSON document 1: it is empty.", message(() -> imager
        .exportInteractiveJsonToFile("", points(), file("d.json"), "", file("c.json"), 2)));
  }

  @Test
  void bothFilesAppearOrNeither() throws IOException {
    message(() -> imager.exportInteractiveJsonToFile(
        "", points(), file("d.json"), "", file("missing/c.json"), 2));
    assertEquals(List.of(), files());
    message(() -> imager.exportInteractiveJsonToFile(
        "", points(), file("missing/d.json"), "", file("c.json"), 2));
    assertEquals(List.of(), files());
  }

  @Test
  void theCodepageIsTheCharsetOfTheFiles() throws IOException {
    imager.exportInteractiveJsonToFile(
        "ISO-8859-1", points(), file("d.json"), "", file("c.json"), 2);
    String text = Files.readString(folder.resolve("c.json"), StandardCharsets.ISO_8859_1);
    assertTrue(text.contains("\u00e4"));
    assertFalse(text.contains("\u0394"));
    assertEquals("\u0394", json("d.json").at("/0/\u00e4").asText(), "ASCII, so UTF-8 as well");
  }

  @ParameterizedTest
  @ValueSource(ints = {0, 1, 3, 4, 6, 7, -2})
  void otherImageFormatsAreRefused(int format) throws IOException {
    String message = "The image format " + format
        + " has no form in chart JSON, which is drawn as 2 (pixels) or 5 (SVG).";
    assertEquals(message, message(
        () -> imager.exportChartJsonToFile("", points(), false, file("c.json"), format)));
    assertEquals(message, message(() -> imager.exportInteractiveJsonToFile(
        "", points(), file("d.json"), "", file("c.json"), format)));
    assertEquals(List.of(), files());
  }

  @Test
  void whatIsMissingIsNamed() {
    assertTrue(message(() -> imager.exportChartJsonToFile("", null, false, file("c"), 2))
        .startsWith("The chart is empty"));
    assertTrue(message(() -> imager.exportChartJsonToFile("", bytes(POINTS), false, file("c"), 2))
        .startsWith("The chart has no data of its own"));
    assertEquals("The output path is empty.",
        message(() -> imager.exportChartJsonToFile("", points(), false, "", 2)));
    assertTrue(message(() -> imager.exportChartJsonToFile("cp0", points(), false, file("c"), 2))
        .startsWith("There is no codepage \"cp0\""));
    assertTrue(message(() -> imager.exportInteractiveJsonToFile(
        "", points(), "", "", file("c"), 2)).startsWith("The JSON path is empty"));
    assertTrue(message(() -> imager.exportInteractiveJsonToFile(
        "", points(), file("c"), "", file("c"), 2)).contains("is the chart's own file"));
  }

  @Test
  void theSameRequestGivesTheSameBytes() throws IOException {
    imager.exportChartJsonToFile("", points(), false, file("a.json"), 2);
    imager.exportChartJsonToFile("", points(), false, file("b.json"), 2);
    assertArrayEquals(Files.readAllBytes(folder.resolve("a.json")),
        Files.readAllBytes(folder.resolve("b.json")));
  }

  @Test
  void manyRowsAreWrittenOneByOne() throws IOException {
    StringBuilder csv = new StringBuilder("x,y\n");
    for (int i = 0; i < 200_000; i++) {
      csv.append(i).append(',').append(i % 7).append('\n');
    }
    imager.exportChartJsonToFile(
        "", chart("draw line: x x, y y", csv.toString()), false, file("c.json"), 2);
    assertEquals(200_000, json("c.json").at("/data/values").size());
  }
}
