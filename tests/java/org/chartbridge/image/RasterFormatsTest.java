// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.RenderingHints;
import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.util.Iterator;
import java.util.Locale;
import javax.imageio.ImageIO;
import javax.imageio.ImageReader;
import javax.imageio.stream.ImageInputStream;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

class RasterFormatsTest {
  private static byte[] encode(ImageType type, double percent) {
    return PictureEncoder.encode(Pictures.of(Pictures::squares, percent), type);
  }

  @ParameterizedTest
  @EnumSource(names = {"JPEG", "PNG", "BMP", "GIF", "IMAGE_MAP"})
  void isReadBackAsItsFormatWithItsColours(ImageType type) throws IOException {
    byte[] bytes = encode(type, 200);
    try (ImageInputStream in =
             ImageIO.createImageInputStream(new ByteArrayInputStream(bytes))) {
      Iterator<ImageReader> readers = ImageIO.getImageReaders(in);
      String format = type == ImageType.IMAGE_MAP ? "PNG" : type.name();
      assertEquals(format, readers.next().getFormatName().toUpperCase(Locale.ROOT));
    }
    BufferedImage image = Pictures.decode(bytes);
    assertEquals(160, image.getWidth());
    assertEquals(80, image.getHeight());
    int tolerance = type == ImageType.JPEG ? 6 : 0;
    assertNear(Pictures.BLUE, image.getRGB(40, 40), tolerance);
    assertNear(Pictures.ORANGE, image.getRGB(100, 40), tolerance);
    assertNear(Color.WHITE, image.getRGB(2, 2), tolerance);
    assertEquals(255, image.getRGB(2, 2) >>> 24);
  }

  private static void assertNear(Color expected, int rgb, int tolerance) {
    Color found = new Color(rgb);
    boolean near = Math.abs(expected.getRed() - found.getRed()) <= tolerance
        && Math.abs(expected.getGreen() - found.getGreen()) <= tolerance
        && Math.abs(expected.getBlue() - found.getBlue()) <= tolerance;
    assertTrue(near, () -> "expected " + expected + ", found " + found);
  }

  @Test
  void gifKeepsUpTo256ColoursAndComesCloseWithMore() throws IOException {
    Picture many = Pictures.of(Pictures::gradient, 100);
    BufferedImage drawn = Raster.draw(many);
    BufferedImage read = Pictures.decode(PictureEncoder.encode(many, ImageType.GIF));
    long difference = 0;
    for (int y = 0; y < 40; y++) {
      for (int x = 0; x < 80; x++) {
        Color a = new Color(drawn.getRGB(x, y));
        Color b = new Color(read.getRGB(x, y));
        difference += Math.abs(a.getRed() - b.getRed()) + Math.abs(a.getGreen() - b.getGreen())
            + Math.abs(a.getBlue() - b.getBlue());
      }
    }
    assertTrue(difference / (3.0 * 80 * 40) < 6, "mean difference too large");
    assertEvenAreasStayExact();
    BufferedImage few = Raster.draw(Pictures.of(Pictures.text("Ag", "Liberation Sans"), 100));
    BufferedImage exact = Pictures.decode(
        PictureEncoder.encode(Pictures.of(Pictures.text("Ag", "Liberation Sans"), 100),
            ImageType.GIF));
    assertArrayEquals(
        few.getRGB(0, 0, 80, 40, null, 0, 80), exact.getRGB(0, 0, 80, 40, null, 0, 80));
  }

  /** A gradient of 200 x 16 colours beside even areas. */
  private static void assertEvenAreasStayExact() throws IOException {
    Picture picture = Picture.ofPercent(400, 100, 100, graphics -> {
      for (int x = 0; x < 200; x++) {
        for (int y = 0; y < 16; y++) {
          graphics.setColor(new Color(x, 255 - x, 16 * y));
          graphics.fillRect(x, 84 + y, 1, 1);
        }
      }
      graphics.setColor(Pictures.BLUE);
      graphics.fillRect(210, 10, 40, 60);
      graphics.setColor(new Color(0x0073B3));
      graphics.fillRect(260, 10, 40, 60);
      graphics.setColor(new Color(0xE4E4E4));
      graphics.fillRect(0, 50, 200, 1);
    });
    BufferedImage read = Pictures.decode(PictureEncoder.encode(picture, ImageType.GIF));
    assertEquals(0xFFFFFF, Pictures.rgb(read, 5, 5));
    assertEquals(0x0072B2, Pictures.rgb(read, 230, 40));
    assertEquals(0x0073B3, Pictures.rgb(read, 280, 40));
    assertEquals(0xE4E4E4, Pictures.rgb(read, 100, 50));
    BufferedImage drawn = Raster.draw(picture);
    long squares = 0;
    for (int x = 0; x < 200; x++) {
      for (int y = 84; y < 100; y++) {
        int difference = (read.getRGB(x, y) >> 16 & 0xFF) - (drawn.getRGB(x, y) >> 16 & 0xFF);
        squares += (long) difference * difference;
      }
    }
    assertTrue(Math.sqrt(squares / 3200.0) < 10, "the gradient is " + Math.sqrt(squares / 3200.0));
  }

  @Test
  void jpegTellsItsResolutionAndKeepsTheResolutionOfColours() {
    ByteBuffer jpeg = ByteBuffer.wrap(encode(ImageType.JPEG, 150));
    assertEquals((short) 0xFFD8, jpeg.getShort());
    boolean frame = false;
    boolean header = false;
    while (!frame) {
      int marker = jpeg.getShort() & 0xFFFF;
      int next = jpeg.position() + (jpeg.getShort(jpeg.position()) & 0xFFFF);
      int start = jpeg.position();
      if (marker == 0xFFE0) {
        header = true;
        assertEquals(1, jpeg.get(start + 9), "units: dots per inch");
        assertEquals(144, jpeg.getShort(start + 10));
        assertEquals(144, jpeg.getShort(start + 12));
      }
      if (marker == 0xFFC0) {
        frame = true;
        assertEquals(3, jpeg.get(start + 7));
        for (int component = 0; component < 3; component++) {
          assertEquals(0x11, jpeg.get(start + 9 + 3 * component), "sampling");
        }
      }
      jpeg.position(next);
    }
    assertTrue(header);
  }

  @Test
  void bmpHasThreeBytesForAPixel() {
    ByteBuffer bmp = ByteBuffer.wrap(encode(ImageType.BMP, 100));
    assertEquals('B', bmp.get(0));
    assertEquals('M', bmp.get(1));
    assertEquals(24, bmp.get(28));
  }

  @Test
  void drawingsFindSmoothEdgesAndAWhiteGround() {
    Picture picture = Pictures.of(graphics -> {
      assertEquals(RenderingHints.VALUE_ANTIALIAS_ON,
          graphics.getRenderingHint(RenderingHints.KEY_ANTIALIASING));
      assertEquals(RenderingHints.VALUE_FRACTIONALMETRICS_ON,
          graphics.getRenderingHint(RenderingHints.KEY_FRACTIONALMETRICS));
      assertEquals(2, graphics.getTransform().getScaleX());
      graphics.setColor(Color.BLACK);
      graphics.drawLine(0, 0, 79, 30);
    }, 200);
    BufferedImage image = Raster.draw(picture);
    long greys = 0;
    for (int pixel : Raster.pixels(image)) {
      greys += pixel != 0xFFFFFF && pixel != 0 ? 1 : 0;
    }
    assertTrue(greys > 50);
    assertEquals(0xFFFFFF, Pictures.rgb(image, 0, 79));
  }

  @Test
  void anOddSizeIsFilledToItsEdges() {
    Picture picture = Picture.ofPercent(81, 41, 37, graphics -> {
      graphics.setColor(Pictures.BLUE);
      graphics.fillRect(0, 0, 81, 41);
    });
    BufferedImage image = Raster.draw(picture);
    assertEquals(0x0072B2, Pictures.rgb(image, image.getWidth() - 1, image.getHeight() - 1));
    assertEquals(0x0072B2, Pictures.rgb(image, 0, 0));
  }

  @Test
  void whatTheDrawingThrowsComesThrough() {
    ChartException error = new ChartException("no");
    Picture picture = Pictures.of(graphics -> {
      throw error;
    }, 100);
    for (ImageType type : ImageType.values()) {
      ChartException caught = assertThrows(
          ChartException.class, () -> PictureEncoder.encode(picture, type));
      assertEquals(error, caught);
    }
  }
}
