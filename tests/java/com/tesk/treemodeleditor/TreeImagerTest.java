// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.lang.reflect.Modifier;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.chartbridge.tree.Models;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class TreeImagerTest {
  private static final byte[] NONE = new byte[0];
  private static final byte[] IRIS = Models.example("iris");
  private static final byte[] FOREST = Models.example("titanic-forest");

  @TempDir Path folder;

  private final TreeImager imager = new TreeImager();

  private static byte[] display(String attributes) {
    return Models.utf8(
        "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" " + attributes + "/>");
  }

  private Set<String> files() throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return files.map(file -> file.getFileName().toString())
          .collect(Collectors.toCollection(TreeSet::new));
    }
  }

  private static String error(org.junit.jupiter.api.function.Executable work) {
    return assertThrows(ChartException.class, work).getMessage();
  }

  private static long[] sizeOf(byte[] bytes, int type) throws IOException {
    if (type == 5) {
      Matcher svg = Pattern.compile("width=\"(\\d+)\" height=\"(\\d+)\"")
          .matcher(new String(bytes, StandardCharsets.UTF_8));
      assertTrue(svg.find());
      return new long[] {Long.parseLong(svg.group(1)), Long.parseLong(svg.group(2))};
    }
    BufferedImage image = ImageIO.read(new ByteArrayInputStream(bytes));
    return new long[] {image.getWidth(), image.getHeight()};
  }

  @Test
  void hasExactlyTheMethodsThatTheNativeSideCalls() throws Exception {
    Class<?> bytes = byte[].class;
    Class<?> type = TreeImager.class;
    assertEquals(boolean.class,
        type.getMethod(
                "renderToFile", bytes, bytes, String.class, int.class, boolean.class, int.class)
            .getReturnType());
    assertEquals(long[].class, type.getMethod("calculateSizeArray", bytes, bytes).getReturnType());
    assertEquals(bytes,
        type.getMethod("renderToMemory", bytes, bytes, int.class, int.class).getReturnType());
    assertEquals(void.class, type.getMethod("setSchemaPath", String.class).getReturnType());
    assertEquals(HashMap.class, type.getMethod("renderModelToMemory", bytes, bytes, bytes, bytes,
        String.class, int.class, int.class).getReturnType());
    assertEquals(String[].class, type.getMethod("renderModelToFiles", bytes, bytes, bytes, bytes,
        String.class, String.class, int.class, int.class).getReturnType());
    assertEquals(6, Arrays.stream(type.getDeclaredMethods())
        .filter(method -> Modifier.isPublic(method.getModifiers())).count());
    assertEquals(0, type.getConstructor().getParameterCount());
  }

  @ParameterizedTest
  @ValueSource(ints = {1, 2, 3, 4, 5})
  void theSizeIsThatOfThePictureToThePixel(int type) throws IOException {
    for (byte[] model : List.of(IRIS, FOREST, Models.example("airquality"), Models.utf8(
        Models.document("<Node score=\"A\"><True/></Node>")))) {
      for (String attributes : List.of("", "orientation=\"left-to-right\" font-size=\"17\"",
          "depth=\"1\"", "tree=\"1\" style=\"dark\"")) {
        byte[] display = display(attributes);
        long[] size = imager.calculateSizeArray(model, display);
        assertTrue(size[0] > 0 && size[1] > 0);
        byte[] picture = imager.renderToMemory(model, display, type, 100);
        assertArrayEquals(size, sizeOf(picture, type), attributes);
      }
    }
  }

  @Test
  void thePercentageScalesThePicture() throws IOException {
    long[] size = imager.calculateSizeArray(IRIS, NONE);
    long[] half = sizeOf(imager.renderToMemory(IRIS, NONE, 2, 50), 2);
    assertArrayEquals(new long[] {Math.round(size[0] * 0.5), Math.round(size[1] * 0.5)}, half);
    assertEquals("The size is 0 percent; it must be greater than 0 and at most 10000.",
        error(() -> imager.renderToMemory(IRIS, NONE, 2, 0)));
    assertEquals("The size is -5 percent; it must be greater than 0 and at most 10000.",
        error(() -> imager.renderToMemory(IRIS, NONE, 5, -5)));
  }

  @ParameterizedTest
  @CsvSource({"1, FFD8FF", "2, 89504E47", "3, 424D", "4, 474946383961", "5, 3C3F786D6C",
      "6, 255044462D31"})
  void everyTypeHasItsSignature(int type, String hex) {
    byte[] bytes = imager.renderToMemory(IRIS, null, type, 100);
    String start = java.util.HexFormat.of().withUpperCase().formatHex(bytes, 0, hex.length() / 2);
    assertEquals(hex, start);
  }

  @Test
  void theFileHoldsWhatTheMemoryHolds() throws IOException {
    Path target = folder.resolve("iris.svg");
    assertTrue(imager.renderToFile(IRIS, NONE, target.toString(), 5, false, 100));
    assertArrayEquals(imager.renderToMemory(IRIS, NONE, 5, 100), Files.readAllBytes(target));
    assertEquals(Set.of("iris.svg"), files());
  }

  @Test
  void theFlagDrawsFromLeftToRight() throws IOException {
    Path target = folder.resolve("iris.png");
    imager.renderToFile(IRIS, NONE, target.toString(), 2, true, 100);
    byte[] turned = display("orientation=\"left-to-right\"");
    assertArrayEquals(
        imager.renderToMemory(IRIS, turned, 2, 100), Files.readAllBytes(target));
    imager.renderToFile(IRIS, turned, target.toString(), 2, false, 100);
    assertArrayEquals(
        imager.renderToMemory(IRIS, turned, 2, 100), Files.readAllBytes(target));
    assertFalse(Arrays.equals(
        imager.renderToMemory(IRIS, NONE, 2, 100), Files.readAllBytes(target)));
  }

  @Test
  void anImageMapIsThreeBlocksOrThreeFiles() throws IOException {
    ByteBuffer blocks = ByteBuffer.wrap(imager.renderToMemory(IRIS, NONE, 7, 100));
    byte[] picture = block(blocks);
    String map = new String(block(blocks), StandardCharsets.UTF_8);
    String json = new String(block(blocks), StandardCharsets.UTF_8);
    assertEquals(0, blocks.remaining());
    assertArrayEquals(imager.renderToMemory(IRIS, NONE, 2, 100), picture);
    assertEquals(5, map.split("<area ", -1).length - 1);
    assertTrue(map.contains("Prediction: versicolor&#10;Records: 54"), map);
    assertTrue(json.contains("\"Prediction\":\"virginica\""), json);
    imager.renderToFile(IRIS, NONE, folder.resolve("iris.png").toString(), 7, false, 100);
    assertEquals(Set.of("iris.png", "iris.html", "iris.json"), files());
    assertEquals(json, Files.readString(folder.resolve("iris.json")));
    assertTrue(Files.readString(folder.resolve("iris.html")).contains(map));
    assertTrue(error(() -> imager.renderToFile(
        IRIS, NONE, folder.resolve("x.json").toString(), 7, false, 100)).contains("tree.png"));
  }

  private static byte[] block(ByteBuffer blocks) {
    byte[] block = new byte[blocks.getInt()];
    blocks.get(block);
    return block;
  }

  @Test
  void theSetOfATreeIsItsOverviewAndItsBranches() throws IOException {
    HashMap<String, byte[]> set =
        imager.renderModelToMemory(IRIS, NONE, NONE, NONE, "Iris species", 5, 0);
    assertEquals(Set.of("Iris-species-overview.svg", "Iris-species-branch-1.svg",
        "Iris-species-branch-2.svg"), set.keySet());
    String overview = new String(set.get("Iris-species-overview.svg"), StandardCharsets.UTF_8);
    assertTrue(overview.contains(">Iris species<"), overview);
    assertFalse(overview.contains(">Species<"), overview);
    String branch = new String(set.get("Iris-species-branch-2.svg"), StandardCharsets.UTF_8);
    assertTrue(branch.contains("The branch of 3 nodes at node 1.2"), branch);
    HashMap<String, byte[]> unnamed =
        imager.renderModelToMemory(IRIS, null, null, null, null, 2, 0);
    assertEquals(Set.of("iris-overview.png", "iris-branch-1.png", "iris-branch-2.png"),
        unnamed.keySet());
    byte[] one = Models.utf8(Models.document("<Node score=\"A\"><True/></Node>"));
    assertEquals(Set.of("tree-overview.pdf"),
        imager.renderModelToMemory(one, NONE, NONE, NONE, "", 6, 0).keySet());
  }

  @Test
  void theSetOfAnEnsembleIsItsOverviewAndItsTrees() {
    HashMap<String, byte[]> set = imager.renderModelToMemory(
        Models.example("kyphosis-boosted"), NONE, NONE, NONE, "", 5, 0);
    assertEquals(13, set.size());
    assertTrue(set.containsKey("kyphosis-overview.svg"), set.keySet().toString());
    assertTrue(set.containsKey("kyphosis-tree-01.svg") && set.containsKey("kyphosis-tree-12.svg"),
        set.keySet().toString());
  }

  @Test
  void mapsInASetAreBlocksInMemoryAndFilesInAFolder() throws IOException {
    HashMap<String, byte[]> set = imager.renderModelToMemory(IRIS, NONE, NONE, NONE, "m", 7, 0);
    assertEquals(Set.of("m-overview.map", "m-branch-1.map", "m-branch-2.map"), set.keySet());
    assertArrayEquals(imager.renderModelToMemory(IRIS, NONE, NONE, NONE, "m", 2, 0)
        .get("m-branch-1.png"), block(ByteBuffer.wrap(set.get("m-branch-1.map"))));
    String[] paths = imager.renderModelToFiles(
        IRIS, NONE, NONE, NONE, "m", folder.toString(), 7, 0);
    assertEquals(9, paths.length);
    assertEquals(9, files().size());
    assertEquals(folder.resolve("m-overview.png").toString(), paths[0]);
  }

  @Test
  void depthStyleAndSamplesReachEveryPicture() {
    byte[] style = Models.utf8("<style xmlns=\"urn:chartbridge:style:1\"><colors"
        + " background=\"#fffff0\"/></style>");
    byte[] samples = Models.utf8("Class,Sex,Age\n1st,Female,Adult\n3rd,Male,Child\n");
    HashMap<String, byte[]> set =
        imager.renderModelToMemory(FOREST, NONE, style, samples, "f", 5, 1);
    set.forEach((name, bytes) -> {
      String svg = new String(bytes, StandardCharsets.UTF_8);
      assertTrue(svg.contains("rgb(255,255,240)"), name);
      assertTrue(svg.contains("ways of 2 sample records"), name);
      assertEquals(name.contains("tree"), svg.contains("hidden nodes"), name);
    });
    assertEquals("The depth limit is -1; it must be 0 (none) or more.",
        error(() -> imager.renderModelToMemory(FOREST, NONE, NONE, NONE, "f", 5, -1)));
    assertEquals("The data has no column \"Age\"; its columns are Class, Sex.",
        error(() -> imager.renderModelToMemory(
            FOREST, NONE, NONE, Models.utf8("Class,Sex\n1st,Male\n"), "f", 5, 0)));
  }

  @Test
  void aSetOfFilesIsWrittenIntoAFolderThatIsMade() throws IOException {
    Path target = folder.resolve("new/deep");
    String[] paths = imager.renderModelToFiles(
        IRIS, NONE, NONE, NONE, "iris", target.toString(), 2, 0);
    assertArrayEquals(new String[] {target.resolve("iris-overview.png").toString(),
        target.resolve("iris-branch-1.png").toString(),
        target.resolve("iris-branch-2.png").toString()}, paths);
    HashMap<String, byte[]> set = imager.renderModelToMemory(IRIS, NONE, NONE, NONE, "iris", 2, 0);
    for (String path : paths) {
      assertArrayEquals(set.get(Path.of(path).getFileName().toString()),
          Files.readAllBytes(Path.of(path)));
    }
  }

  @Test
  void aSetThatFailsLeavesNothing() throws IOException {
    // The second picture cannot be written: its name is taken by a folder.
    Files.createDirectory(folder.resolve("iris-branch-1.png"));
    assertTrue(error(() -> imager.renderModelToFiles(IRIS, NONE, NONE, NONE, "iris",
        folder.toString(), 2, 0)).endsWith("iris-branch-1.png\": it is a folder."));
    assertEquals(Set.of("iris-branch-1.png"), files());
    Path made = folder.resolve("a/b");
    String huge = Models.random(5, 4000);
    String message = error(() -> imager.renderModelToFiles(
        Models.utf8(huge), NONE, NONE, NONE, "t", made.toString(), 2, 0));
    assertTrue(message.matches("The picture would have \\d+ x \\d+ pixels; at most 100 million are"
        + " drawn\\. Show less of the tree \\(a depth limit, collapsed nodes, one branch\\), or"
        + " choose SVG or PDF\\."), message);
    assertEquals(Set.of("iris-branch-1.png"), files());
    Path file = Files.createFile(folder.resolve("file"));
    assertEquals("Cannot write into \"" + file + "\": \"" + file + "\" is no folder.",
        error(() -> imager.renderModelToFiles(
            IRIS, NONE, NONE, NONE, "t", file.toString(), 2, 0)));
    assertEquals("The output folder is empty.",
        error(() -> imager.renderModelToFiles(IRIS, NONE, NONE, NONE, "t", "", 2, 0)));
  }

  @Test
  void aVeryLargeTreeFitsIntoPdf() {
    byte[] pdf = imager.renderToMemory(Models.utf8(Models.random(5, 1500)), NONE, 6, 100);
    Matcher box = Pattern.compile("/MediaBox \\[\\s*0 0 (\\d+) (\\d+)").matcher(
        new String(pdf, StandardCharsets.ISO_8859_1));
    assertTrue(box.find());
    assertEquals(14400, Integer.parseInt(box.group(1)));
  }

  @Test
  void mistakesAreToldInWords() {
    assertEquals("The PMML document is empty.", error(() -> imager.calculateSizeArray(NONE, NONE)));
    assertEquals("The PMML document is empty.", error(() -> imager.calculateSizeArray(null, null)));
    assertEquals(
        "There is no image type 0; the types are 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6 PDF,"
            + " 7 image map.",
        error(() -> imager.renderToMemory(IRIS, NONE, 0, 100)));
    assertEquals("There is no tree 10; the model has 9 trees.",
        error(() -> imager.renderToMemory(FOREST, display("tree=\"10\""), 2, 100)));
    assertEquals("There is no tree 2; the model has 1 tree.",
        error(() -> imager.renderToMemory(IRIS, display("tree=\"2\""), 2, 100)));
    assertEquals("The output path is empty.",
        error(() -> imager.renderToFile(IRIS, NONE, "", 2, false, 100)));
    assertTrue(error(() -> imager.renderToFile(IRIS, NONE, folder.resolve("no/x.png").toString(), 2,
        false, 100)).startsWith("Cannot write \""));
  }

  @Test
  void manyThreadsMayUseOneImager() throws Exception {
    byte[] expected = imager.renderToMemory(FOREST, NONE, 2, 100);
    List<Thread> threads = new java.util.ArrayList<>();
    List<String> wrong = java.util.Collections.synchronizedList(new java.util.ArrayList<>());
    for (int i = 0; i < 4; i++) {
      Thread thread = new Thread(() -> {
        for (int n = 0; n < 5; n++) {
          if (!Arrays.equals(expected, imager.renderToMemory(FOREST, NONE, 2, 100))) {
            wrong.add("differs");
          }
        }
      });
      threads.add(thread);
      thread.start();
    }
    for (Thread thread : threads) {
      thread.join();
    }
    assertEquals(List.of(), wrong);
  }
}
