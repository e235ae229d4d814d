// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertDoesNotThrow;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.zip.GZIPInputStream;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.draw.TreeDisplay;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The editor as far as it needs no window. */
class TreeEditorTest {
  private static final byte[] NONE = new byte[0];
  private static final byte[] IRIS = Models.example("iris");

  @TempDir Path folder;

  private final TreeEditor editor = new TreeEditor();

  @Test
  void hasExactlyTheMethodsThatTheNativeSideCalls() throws Exception {
    Class<?> bytes = byte[].class;
    Class<?> number = int.class;
    Class<?> type = TreeEditor.class;
    assertEquals(void.class,
        type.getMethod("setNeedsRerendering", boolean.class).getReturnType());
    assertEquals(void.class, type.getMethod("setThreadId", number).getReturnType());
    assertEquals(void.class, type.getMethod("deActivate").getReturnType());
    assertEquals(void.class, type.getMethod("setDPI", number).getReturnType());
    assertEquals(void.class, type.getMethod("close").getReturnType());
    assertEquals(boolean.class, type.getMethod("needsRerendering").getReturnType());
    assertEquals(void.class, type.getMethod("setSchemaPath", String.class).getReturnType());
    assertEquals(void.class, type.getMethod("renderPMMLToScreen", number, number, number, number,
        bytes, bytes).getReturnType());
    assertEquals(boolean.class, type.getMethod("renderToFile", bytes, bytes, String.class, number,
        boolean.class).getReturnType());
    assertEquals(long[].class, type.getMethod("calculateSizeArray", bytes, bytes).getReturnType());
    assertEquals(long[].class, type.getMethod("getSizeArray").getReturnType());
    assertEquals(bytes, type.getMethod("extractDisplayData").getReturnType());
    assertEquals(bytes, type.getMethod("extractCompressedPMML").getReturnType());
    assertEquals(13, Arrays.stream(type.getDeclaredMethods())
        .filter(method -> Modifier.isPublic(method.getModifiers())).count());
    assertEquals(0, type.getConstructor().getParameterCount());
  }

  @Test
  void beforeTheFirstRenderingThereIsNothing() {
    assertTrue(editor.needsRerendering());
    assertArrayEquals(new long[] {0, 0}, editor.getSizeArray());
    assertNull(editor.extractDisplayData());
    assertEquals(0, editor.extractCompressedPMML().length);
    assertDoesNotThrow(() -> {
      editor.deActivate();
      editor.close();
      editor.setThreadId(-7);
      editor.setNeedsRerendering(false);
      editor.setSchemaPath("");
    });
    assertFalse(editor.needsRerendering());
  }

  @Test
  void aRenderedTreeHasItsSizeAndItsDocuments() throws IOException {
    byte[] display = Models.utf8(
        "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" depth=\"1\"/>");
    editor.renderPMMLToScreen(10, 20, 300, 200, IRIS, display);
    assertFalse(editor.needsRerendering());
    assertArrayEquals(
        new TreeImager().calculateSizeArray(IRIS, display), editor.getSizeArray());
    assertEquals(TreeDisplay.parse(display), TreeDisplay.parse(editor.extractDisplayData()));
    try (GZIPInputStream in =
        new GZIPInputStream(new ByteArrayInputStream(editor.extractCompressedPMML()))) {
      assertArrayEquals(IRIS, in.readAllBytes());
    }
    editor.deActivate();
    assertTrue(editor.getSizeArray()[0] > 0);
    editor.close();
    assertArrayEquals(new long[] {0, 0}, editor.getSizeArray());
    assertEquals(TreeDisplay.parse(display), TreeDisplay.parse(editor.extractDisplayData()));
    editor.renderPMMLToScreen(10, 20, 300, 200, IRIS, display);
    assertTrue(editor.getSizeArray()[0] > 0);
  }

  @Test
  void aCompressedModelIsTakenAndGivenBack() throws IOException {
    editor.renderPMMLToScreen(0, 0, 10, 10, IRIS, null);
    byte[] zipped = editor.extractCompressedPMML();
    TreeEditor other = new TreeEditor();
    other.renderPMMLToScreen(0, 0, 10, 10, zipped, NONE);
    assertArrayEquals(zipped, other.extractCompressedPMML());
  }

  @Test
  void theResolutionScalesSizesAndFiles() throws IOException {
    editor.renderPMMLToScreen(0, 0, 300, 200, IRIS, NONE);
    long[] normal = editor.getSizeArray();
    assertFalse(editor.needsRerendering());
    editor.setDPI(144);
    assertTrue(editor.needsRerendering());
    long[] expected = {Math.round(normal[0] * 1.5), Math.round(normal[1] * 1.5)};
    assertArrayEquals(expected, editor.getSizeArray());
    assertArrayEquals(expected, editor.calculateSizeArray(IRIS, NONE));
    Path target = folder.resolve("iris.png");
    assertTrue(editor.renderToFile(IRIS, NONE, target.toString(), 2, false));
    BufferedImage image = ImageIO.read(target.toFile());
    assertArrayEquals(expected, new long[] {image.getWidth(), image.getHeight()});
    editor.setDPI(72);
    assertArrayEquals(new long[] {Math.round(normal[0] * 0.75), Math.round(normal[1] * 0.75)},
        editor.calculateSizeArray(IRIS, NONE));
    for (int dpi : new int[] {0, -96, 23, 2401}) {
      assertEquals("The resolution is " + dpi + " pixels per inch; it must be from 24 to 2400.",
          assertThrows(ChartException.class, () -> editor.setDPI(dpi)).getMessage());
    }
  }

  @Test
  void renderToFileTurnsTheTreeWhenAsked() throws IOException {
    Path target = folder.resolve("iris.svg");
    editor.renderToFile(IRIS, NONE, target.toString(), 5, true);
    byte[] turned = Files.readAllBytes(target);
    assertArrayEquals(new TreeImager().renderToMemory(IRIS, Models.utf8("<tree-display"
        + " xmlns=\"urn:chartbridge:tree-display:1\" orientation=\"left-to-right\"/>"), 5, 100),
        turned);
  }

  @Test
  void whatCannotBeRenderedLeavesTheEditorAsItWas() {
    editor.renderPMMLToScreen(0, 0, 300, 200, IRIS, NONE);
    long[] size = editor.getSizeArray();
    assertThrows(ChartException.class,
        () -> editor.renderPMMLToScreen(0, 0, 300, 200, Models.utf8("<x/>"), NONE));
    assertThrows(ChartException.class,
        () -> editor.renderPMMLToScreen(0, 0, 300, 200, IRIS, Models.utf8("<x/>")));
    assertThrows(ChartException.class,
        () -> editor.renderPMMLToScreen(0, 0, 300, 200, null, null));
    assertEquals("The extent of the window is 0 x 200; both must be greater than 0.",
        assertThrows(ChartException.class,
            () -> editor.renderPMMLToScreen(0, 0, 0, 200, IRIS, NONE)).getMessage());
    assertArrayEquals(size, editor.getSizeArray());
    assertFalse(editor.needsRerendering());
  }

  @Test
  void manyThreadsMayCallAtOnce() throws Exception {
    Thread[] threads = new Thread[4];
    java.util.concurrent.atomic.AtomicReference<Throwable> wrong =
        new java.util.concurrent.atomic.AtomicReference<>();
    for (int i = 0; i < threads.length; i++) {
      int number = i;
      threads[i] = new Thread(() -> {
        try {
          for (int n = 0; n < 20; n++) {
            editor.renderPMMLToScreen(n, number, 100 + n, 100, IRIS, NONE);
            editor.setDPI(96 + n);
            editor.deActivate();
            editor.getSizeArray();
            editor.extractDisplayData();
            editor.setThreadId(n);
          }
        } catch (RuntimeException | Error e) {
          wrong.set(e);
        }
      });
      threads[i].start();
    }
    for (Thread thread : threads) {
      thread.join(30_000);
      assertFalse(thread.isAlive());
    }
    assertNull(wrong.get());
  }
}
