// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.lang.invoke.MethodType;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class ChartImagerTest {
  private static final byte[] CHART =
      bytes("title \"Sales by region\"\nsize 400 by 300\ndraw bar: x region, y sum of sales\n");
  private static final byte[] DATA =
      bytes("region,sales,remark\nNorth,1200.5,a\nSouth,800,b\nNorth,99.5,c\n");

  private final ChartImager imager = new ChartImager();

  @TempDir Path folder;

  private static byte[] bytes(String text) {
    return text.getBytes(UTF_8);
  }

  private static ByteBuffer direct(byte[] bytes) {
    return ByteBuffer.allocateDirect(bytes.length).put(bytes).flip();
  }

  private byte[] render(int type, double size) {
    return imager.RenderToMem(CHART, direct(DATA), type, size, "", null, "", null);
  }

  private boolean renderToFile(byte[] chart, byte[] data, Path path, int type) {
    return imager.RenderToFile(chart, direct(data), path.toString(), type, 100, "", null, "", null);
  }

  private String error(byte[] chart, byte[] data) {
    return assertThrows(ChartException.class,
        () -> imager.RenderToMem(chart, direct(data), 2, 100, "", null, "", null))
        .getMessage();
  }

  private static BufferedImage image(byte[] bytes) throws IOException {
    return ImageIO.read(new ByteArrayInputStream(bytes));
  }

  private List<String> files() throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return files.map(file -> file.getFileName().toString()).sorted().collect(Collectors.toList());
    }
  }

  private static List<byte[]> blocks(byte[] joined) {
    ByteBuffer in = ByteBuffer.wrap(joined);
    List<byte[]> blocks = new ArrayList<>();
    while (in.hasRemaining()) {
      byte[] block = new byte[in.getInt()];
      in.get(block);
      blocks.add(block);
    }
    return blocks;
  }

  // ---- what native code looks up ----

  @Test
  void hasTheMethodsByNameAndSignature() throws NoSuchMethodException {
    Map<String, String> found = new TreeMap<>();
    for (Method method : ChartImager.class.getDeclaredMethods()) {
      if (Modifier.isPublic(method.getModifiers())) {
        assertFalse(Modifier.isStatic(method.getModifiers()), method.getName());
        String signature = MethodType.methodType(method.getReturnType(), method.getParameterTypes())
                               .toMethodDescriptorString();
        found.put(method.getName() + signature, "");
      }
    }
    for (String expected :
        List.of("RenderToFile([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[B"
                + "Ljava/lang/String;[B)Z",
            "RenderImageMapToFile([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[B"
                + "Ljava/lang/String;[B)Z",
            "RenderToFile([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z",
            "RenderToMem([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B",
            "RenderImageMapToMemory([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[B"
                + "Ljava/lang/String;[B)[B",
            "EmbedHistogramInGraph([B[BLjava/nio/ByteBuffer;I)[B",
            "ConvertImage([BLjava/lang/String;I)Z", "ApplyStyleSheet([B[B)[B")) {
      assertTrue(found.containsKey(expected), expected + " is missing among " + found.keySet());
    }
    assertNotNull(ChartImager.class.getConstructor());
    assertEquals("com/tesk/charteditor/ChartImager", ChartImager.class.getName().replace('.', '/'));
  }

  // ---- pictures ----

  @Test
  void rendersEveryTypeToMemory() throws IOException {
    assertArrayEquals(new byte[] {(byte) 0xFF, (byte) 0xD8}, Arrays.copyOf(render(1, 100), 2));
    assertArrayEquals(new byte[] {(byte) 0x89, 'P', 'N', 'G'}, Arrays.copyOf(render(2, 100), 4));
    assertArrayEquals(new byte[] {'B', 'M'}, Arrays.copyOf(render(3, 100), 2));
    assertArrayEquals(new byte[] {'G', 'I', 'F', '8'}, Arrays.copyOf(render(4, 100), 4));
    for (int type = 1; type <= 4; type++) {
      BufferedImage image = image(render(type, 150));
      assertEquals(600, image.getWidth());
      assertEquals(450, image.getHeight());
    }
    String svg = new String(render(5, 100), UTF_8);
    assertTrue(svg.contains("<svg") && svg.contains(">North<") && svg.contains("Sales by region"));
    assertTrue(new String(render(6, 100), ISO_8859_1).startsWith("%PDF-"));
  }

  @Test
  void rendersEveryTypeToAFile() throws IOException {
    for (int type = 1; type <= 6; type++) {
      Path file = folder.resolve("chart" + type);
      assertTrue(renderToFile(CHART, DATA, file, type));
      if (type != 6) { // a PDF holds the time of its making
        assertArrayEquals(render(type, 100), Files.readAllBytes(file), "type " + type);
      }
    }
    assertEquals(6, files().size());
  }

  @Test
  void theDataMayComeAsAnArrayOrAsAnyBuffer() throws IOException {
    byte[] expected = render(2, 100);
    Path file = folder.resolve("array.png");
    assertTrue(imager.RenderToFile(CHART, DATA, file.toString(), 2, 100, "", null, "", null));
    assertArrayEquals(expected, Files.readAllBytes(file));
    ByteBuffer heap = ByteBuffer.wrap(DATA);
    assertArrayEquals(expected, imager.RenderToMem(CHART, heap, 2, 100, "", null, "", null));
    assertEquals(0, heap.position());
    assertArrayEquals(
        expected, imager.RenderToMem(CHART, heap.asReadOnlyBuffer(), 2, 100, "", null, "", null));
    byte[] padded = new byte[DATA.length + 20];
    System.arraycopy(DATA, 0, padded, 10, DATA.length);
    ByteBuffer slice = ByteBuffer.wrap(padded, 10, DATA.length).slice();
    assertArrayEquals(expected, imager.RenderToMem(CHART, slice, 2, 100, "", null, "", null));
  }

  @Test
  void chartXmlWillDoToo() throws IOException {
    byte[] xml = bytes("<chart xmlns=\"urn:chartbridge:chart:2\" width=\"400\" height=\"300\">"
        + "<titles title=\"Sales by region\"/><elements><bar><x column=\"region\"/>"
        + "<y column=\"sales\" aggregate=\"sum\"/></bar></elements></chart>");
    assertArrayEquals(
        render(2, 100), imager.RenderToMem(xml, direct(DATA), 2, 100, "", null, "", null));
  }

  @Test
  void anEmptyAuxiliaryIsNoAuxiliary() {
    byte[] expected = render(2, 100);
    assertArrayEquals(
        expected, imager.RenderToMem(CHART, direct(DATA), 2, 100, null, null, null, null));
    assertArrayEquals(expected,
        imager.RenderToMem(CHART, direct(DATA), 2, 100, "", new byte[0], " ", new byte[0]));
  }

  // ---- language and style ----

  private String svg(String language, String texts, String style) {
    return new String(imager.RenderToMem(CHART, direct(DATA), 5, 100, language,
                          texts == null ? null : bytes(texts), style, null),
        UTF_8);
  }

  @Test
  void theLanguageDecidesHowNumbersAreWritten() {
    assertTrue(svg("en-US", null, "").contains(">1,000<"), svg("en-US", null, ""));
    assertTrue(svg("de", null, "").contains(">1.000<"), svg("de", null, ""));
    assertEquals(svg("de-CH", null, ""), svg("de_CH", null, ""));
  }

  @Test
  void aLanguageThatIsNone() {
    ChartException e = assertThrows(ChartException.class, () -> svg("not a tag!", null, ""));
    assertEquals("The language \"not a tag!\" is no BCP 47 tag; expected one such as de or pt-BR.",
        e.getMessage());
  }

  @Test
  void textsOfTheChartAreReplaced() {
    String texts =
        "\uFEFF# Deutsch\nSales\\ by\\ region = Ums\u00e4tze nach Region\nregion=Gebiet\n";
    String svg = svg("de", texts, "");
    assertTrue(svg.contains("Ums\u00e4tze nach Region"), svg);
    assertFalse(svg.contains("Sales by region"));
  }

  @Test
  void textsThatAreNone() {
    ChartException e = assertThrows(ChartException.class,
        ()
            -> imager.RenderToMem(
                CHART, direct(DATA), 2, 100, "", "a=\u00e4".getBytes(ISO_8859_1), "", null));
    assertEquals("The chart texts (properties) are not UTF-8.", e.getMessage());
    e = assertThrows(ChartException.class, () -> svg("", "a=\\u12", ""));
    assertEquals(
        "The chart texts are no properties file: Malformed \\uxxxx encoding.", e.getMessage());
  }

  @Test
  void theStyleIsNamedOrGiven() {
    assertFalse(Arrays.equals(
        render(2, 100), imager.RenderToMem(CHART, direct(DATA), 2, 100, "", null, "dark", null)));
    assertThrows(ChartException.class, () -> svg("", null, "no such style"));
    assertThrows(ChartException.class,
        () -> imager.RenderToMem(CHART, direct(DATA), 2, 100, "", null, "", bytes("<oops")));
  }

  // ---- image maps ----

  @Test
  void anImageMapInMemoryHasThreeBlocks() throws IOException {
    byte[] joined =
        imager.RenderImageMapToMemory(CHART, direct(DATA), 7, 200, true, "", null, "", null);
    List<byte[]> blocks = blocks(joined);
    assertEquals(3, blocks.size());
    assertArrayEquals(render(2, 200), blocks.get(0));
    String html = new String(blocks.get(1), UTF_8);
    assertTrue(html.startsWith("<map name=\"") && html.endsWith("</map>\n"), html);
    assertTrue(html.contains("title=") && html.contains("North"), html);
    JsonNode json = new ObjectMapper().readTree(blocks.get(2));
    assertEquals(800, json.get("width").asInt());
    assertEquals(2, json.get("areas").size());
    assertArrayEquals(joined, render(7, 200));
  }

  /** The area of a bar must lie where the picture has the bar. */
  @Test
  void areasLieOnTheirMarks() throws IOException {
    for (double size : new double[] {50, 100, 170}) {
      List<byte[]> blocks = blocks(
          imager.RenderImageMapToMemory(CHART, direct(DATA), 7, size, true, "", null, "", null));
      BufferedImage picture = image(blocks.get(0));
      JsonNode areas = new ObjectMapper().readTree(blocks.get(2)).get("areas");
      int[] first = centre(areas.get(0));
      int[] second = centre(areas.get(1));
      int color = picture.getRGB(first[0], first[1]);
      assertEquals(color, picture.getRGB(second[0], second[1]));
      assertFalse(color == picture.getRGB(1, 1));
      JsonNode coords = areas.get(0).get("coords");
      int outside = Math.min(coords.get(0).asInt(), coords.get(2).asInt()) - 3;
      assertFalse(color == picture.getRGB(outside, first[1]), "left of the bar");
    }
  }

  private static int[] centre(JsonNode area) {
    assertEquals("rect", area.get("shape").asText());
    JsonNode c = area.get("coords");
    return new int[] {
        (c.get(0).asInt() + c.get(2).asInt()) / 2, (c.get(1).asInt() + c.get(3).asInt()) / 2};
  }

  @Test
  void withoutTooltipsAnImageMapIsSilent() {
    List<byte[]> blocks = blocks(
        imager.RenderImageMapToMemory(CHART, direct(DATA), 7, 100, false, "", null, "", null));
    assertFalse(new String(blocks.get(1), UTF_8).contains("title="));
    assertFalse(new String(blocks.get(2), UTF_8).contains("tooltip"));
  }

  @ParameterizedTest
  @ValueSource(ints = {1, 2, 3, 4, 5})
  void otherTypesHaveOneBlock(int type) {
    List<byte[]> blocks = blocks(
        imager.RenderImageMapToMemory(CHART, direct(DATA), type, 100, true, "", null, "", null));
    assertEquals(1, blocks.size());
    assertArrayEquals(render(type, 100), blocks.get(0));
  }

  @Test
  void anImageMapOnFileIsAPictureAPageAndJson() throws IOException {
    Path file = folder.resolve("sales.v1.png");
    assertTrue(imager.RenderImageMapToFile(
        CHART, direct(DATA), file.toString(), 7, 100, true, "", null, "", null));
    assertEquals(List.of("sales.v1.html", "sales.v1.json", "sales.v1.png"), files());
    List<byte[]> blocks = blocks(render(7, 100));
    assertArrayEquals(blocks.get(0), Files.readAllBytes(file));
    String page = Files.readString(folder.resolve("sales.v1.html"));
    assertTrue(page.contains(new String(blocks.get(1), UTF_8)));
    assertTrue(page.contains("src=\"./sales.v1.png\"") && page.contains("<title>Sales by region"));
    assertArrayEquals(blocks.get(2), Files.readAllBytes(folder.resolve("sales.v1.json")));

    Path other = folder.resolve("noending");
    assertTrue(renderToFile(CHART, DATA, other, 7));
    assertTrue(files().containsAll(List.of("noending", "noending.html", "noending.json")));
  }

  @Test
  void anImageMapNeedsItsEndingsForItself() {
    Path file = folder.resolve("sales.HTML");
    ChartException e = assertThrows(ChartException.class, () -> renderToFile(CHART, DATA, file, 7));
    assertEquals("Cannot write \"" + file + "\": the picture of an image map needs a name such as "
            + "chart.png; its map gets the endings .html and .json.",
        e.getMessage());
    e = assertThrows(ChartException.class,
        ()
            -> imager.RenderImageMapToFile(
                CHART, direct(DATA), file.toString(), 2, 100, true, "", null, "", null));
    assertEquals("An image map is image type 7, not 2 (PNG).", e.getMessage());
  }

  // ---- what can be wrong ----

  @Test
  void nothingIsLeftAfterAFailure() throws IOException {
    Files.createDirectory(folder.resolve("sales.json"));
    ChartException e = assertThrows(
        ChartException.class, () -> renderToFile(CHART, DATA, folder.resolve("sales.png"), 7));
    assertEquals(
        "Cannot write \"" + folder.resolve("sales.json") + "\": it is a folder.", e.getMessage());
    assertEquals(List.of("sales.json"), files());
    assertThrows(ChartException.class,
        ()
            -> renderToFile(
                bytes("draw bar: x nothing, y sales"), DATA, folder.resolve("a.png"), 2));
    assertEquals(List.of("sales.json"), files());
  }

  @Test
  void aFolderThatDoesNotExist() {
    ChartException e = assertThrows(
        ChartException.class, () -> renderToFile(CHART, DATA, folder.resolve("none/a.png"), 2));
    assertEquals("Cannot write \"" + folder.resolve("none/a.png") + "\": the folder \""
            + folder.resolve("none") + "\" does not exist.",
        e.getMessage());
    e = assertThrows(ChartException.class,
        () -> imager.RenderToFile(CHART, DATA, "", 2, 100, "", null, "", null));
    assertEquals("The output path is empty.", e.getMessage());
  }

  @Test
  void requestsThatMakeNoSense() {
    ChartException e = assertThrows(ChartException.class, () -> render(9, 100));
    assertEquals("There is no image type 9; the types are 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, "
            + "6 PDF, 7 image map.",
        e.getMessage());
    e = assertThrows(ChartException.class, () -> render(2, 0));
    assertEquals(
        "The size is 0 percent; it must be greater than 0 and at most 10000.", e.getMessage());
    e = assertThrows(ChartException.class, () -> render(5, 10_000));
    assertEquals(
        "At 10000 percent the picture would have 40000 x 30000 pixels; at most 100 million "
            + "are drawn. Choose a smaller size.",
        e.getMessage());
  }

  @ParameterizedTest
  @CsvSource({"''", "'draw'", "'<chart'", "'\u0000\u0001'"})
  void aChartThatIsNone(String chart) {
    assertFalse(error(bytes(chart), DATA).isBlank());
  }

  @Test
  void nothingAtAll() {
    assertEquals("The chart is empty; chart XML or graph language is expected.",
        assertThrows(ChartException.class,
            () -> imager.RenderToMem(null, direct(DATA), 2, 100, "", null, "", null))
            .getMessage());
    assertEquals("The data are empty; the first line must name the columns.",
        assertThrows(
            ChartException.class, () -> imager.RenderToMem(CHART, null, 2, 100, "", null, "", null))
            .getMessage());
  }

  @Test
  void dataThatDoNotFitTheChart() {
    assertEquals("line 3, column 23: The data has no column \"sales\"; its columns are region, "
            + "salse. Did you mean \"salse\"?",
        error(CHART, bytes("region,salse\nx,1\n")));
    assertEquals("CSV line 3 has 1 field where the header names 2 columns; the field of column "
            + "\"sales\" is missing.",
        error(CHART, bytes("region,sales\nx,1\ny\n")));
  }

  // ---- load ----

  @Test
  void severalThreadsMayShareOneImager() throws Exception {
    byte[] expected = render(2, 100);
    ExecutorService threads = Executors.newFixedThreadPool(4);
    try {
      List<Callable<byte[]>> work = new ArrayList<>();
      for (int i = 0; i < 40; i++) {
        work.add(() -> render(2, 100));
      }
      for (Future<byte[]> result : threads.invokeAll(work)) {
        assertArrayEquals(expected, result.get());
      }
    } finally {
      threads.shutdown();
    }
  }

  @Test
  void aMillionRowsBecomeAPicture() throws IOException {
    int rows = 1_000_000;
    ByteBuffer data = ByteBuffer.allocateDirect(20 * rows);
    data.put(bytes("region,sales\n"));
    for (int i = 0; i < rows; i++) {
      data.put(bytes((i % 2 == 0 ? "North," : "South,") + (i % 1000) + "\n"));
    }
    List<byte[]> blocks =
        blocks(imager.RenderImageMapToMemory(CHART, data.flip(), 7, 100, true, "", null, "", null));
    JsonNode areas = new ObjectMapper().readTree(blocks.get(2)).get("areas");
    assertEquals(2, areas.size());
    String values = areas.toString();
    assertTrue(values.contains("249,500,000") && values.contains("250,000,000"), values);
    assertNotNull(image(blocks.get(0)));
  }

  @Test
  void rendersWithoutADisplay() {
    assertEquals("true", System.getProperty("java.awt.headless"));
  }
}
