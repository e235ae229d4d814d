// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.US_ASCII;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.image.BufferedImage;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.function.Consumer;
import java.util.zip.CRC32;
import org.junit.jupiter.api.Test;

class PngFormatTest {
  private static byte[] encode(Consumer<Graphics2D> drawing, double percent) {
    return PictureEncoder.encode(Pictures.of(drawing, percent), ImageType.PNG);
  }

  /** The chunks in their order, the first of each name; every checksum must be right. */
  private static Map<String, byte[]> chunks(byte[] png) {
    Map<String, byte[]> chunks = new LinkedHashMap<>();
    ByteBuffer in = ByteBuffer.wrap(png);
    assertEquals(0x89504E470D0A1A0AL, in.getLong());
    while (in.hasRemaining()) {
      byte[] data = new byte[in.getInt()];
      byte[] name = new byte[4];
      in.get(name).get(data);
      CRC32 crc = new CRC32();
      crc.update(name);
      crc.update(data);
      assertEquals((int) crc.getValue(), in.getInt());
      chunks.putIfAbsent(new String(name, US_ASCII), data);
    }
    return chunks;
  }

  private static void assertSamePixels(Consumer<Graphics2D> drawing, double percent)
      throws IOException {
    BufferedImage drawn = Raster.draw(Pictures.of(drawing, percent));
    BufferedImage read = Pictures.decode(encode(drawing, percent));
    int width = drawn.getWidth();
    int height = drawn.getHeight();
    assertEquals(width, read.getWidth());
    assertEquals(height, read.getHeight());
    assertArrayEquals(drawn.getRGB(0, 0, width, height, null, 0, width),
        read.getRGB(0, 0, width, height, null, 0, width));
  }

  @Test
  void readsBackPixelByPixel() throws IOException {
    for (double percent : new double[] {1, 100, 137, 2000}) {
      assertSamePixels(Pictures::squares, percent);
      assertSamePixels(Pictures::gradient, percent);
      assertSamePixels(Pictures.text("AaBb", "Liberation Sans"), percent);
    }
  }

  @Test
  void hasOneChunkOfEachKindInOrder() {
    assertArrayEquals(new String[] {"IHDR", "sRGB", "pHYs", "PLTE", "IDAT", "IEND"},
        chunks(encode(Pictures::squares, 100)).keySet().toArray());
    assertArrayEquals(new String[] {"IHDR", "sRGB", "pHYs", "IDAT", "IEND"},
        chunks(encode(Pictures::gradient, 100)).keySet().toArray());
  }

  @Test
  void upTo256ColoursAreIndexed() throws IOException {
    for (int colors : new int[] {1, 2, 255, 256, 257}) {
      Consumer<Graphics2D> drawing = g -> {
        g.setColor(new Color(0, 0, 7));
        g.fillRect(0, 0, 80, 40);
        for (int i = 1; i < colors; i++) {
          g.setColor(new Color(i % 256, 255, 9 + i / 256));
          g.fillRect(i % 80, i / 80, 1, 1);
        }
      };
      Map<String, byte[]> chunks = chunks(encode(drawing, 100));
      assertEquals(colors <= 256, chunks.containsKey("PLTE"), colors + " colours");
      assertEquals(colors <= 256 ? 3 : 2, chunks.get("IHDR")[9]);
      if (colors <= 256) {
        assertEquals(3 * colors, chunks.get("PLTE").length);
      }
      assertSamePixels(drawing, 100);
    }
  }

  @Test
  void tellsItsResolution() {
    ByteBuffer at100 = ByteBuffer.wrap(chunks(encode(Pictures::squares, 100)).get("pHYs"));
    assertEquals(3780, at100.getInt());
    assertEquals(3780, at100.getInt());
    assertEquals(1, at100.get());
    ByteBuffer at200 = ByteBuffer.wrap(chunks(encode(Pictures::squares, 200)).get("pHYs"));
    assertEquals(7559, at200.getInt());
  }

  @Test
  void equalPicturesGiveEqualBytes() {
    assertArrayEquals(encode(Pictures::gradient, 150), encode(Pictures::gradient, 150));
  }

  /** A row longer than the batches in which rows are packed. */
  @Test
  void wideAndHighPictures() throws IOException {
    for (int[] size : new int[][] {{50_000, 3}, {3, 50_000}, {1, 1}}) {
      Picture picture = Picture.ofPercent(size[0], size[1], 100, g -> {
        g.setColor(Pictures.BLUE);
        g.fillRect(size[0] - 1, size[1] - 1, 1, 1);
      });
      BufferedImage read = Pictures.decode(PictureEncoder.encode(picture, ImageType.PNG));
      assertEquals(size[0], read.getWidth());
      assertEquals(size[1], read.getHeight());
      assertEquals(0x0072B2, Pictures.rgb(read, size[0] - 1, size[1] - 1));
    }
  }

  @Test
  void evenAreasTakeLittleRoom() {
    Picture picture = Picture.ofPercent(800, 600, 100, Pictures::squares);
    assertTrue(PictureEncoder.encode(picture, ImageType.PNG).length < 4000);
    assertFalse(chunks(encode(Pictures::squares, 100)).get("IDAT").length > 200);
  }
}
