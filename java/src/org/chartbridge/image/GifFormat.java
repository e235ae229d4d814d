// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.image.BufferedImage;
import java.awt.image.DataBufferByte;
import java.awt.image.IndexColorModel;
import java.io.IOException;
import java.io.OutputStream;

/** Writes GIF: exact where the picture has at most 256 colours, else with 256 chosen from it. */
final class GifFormat {
  private static final int BITS = 8;
  private static final int HALF_OPAQUE = 128;

  /** The index of the clear colour of an image that has none. */
  private static final int NONE = -1;

  private GifFormat() {}

  static void write(BufferedImage image, OutputStream out) throws IOException {
    int[] pixels = Raster.pixels(image);
    ColorTable colors = ColorTable.of(pixels);
    if (colors == null) {
      pixels = ColorReduction.reduce(pixels, ColorTable.MAX_COLORS);
      colors = ColorTable.of(pixels);
    }
    IndexColorModel model = model(colors, NONE);
    ImageIoFormat.write(indexed(image, pixels, colors, model), "gif", out);
  }

  /**
   * Writes pixels that can be seen through: those that are at least half so come out clear, the
   * others as they look on white.
   *
   * @param image of {@link BufferedImage#TYPE_INT_ARGB}
   */
  static void writeTransparent(BufferedImage image, OutputStream out) throws IOException {
    int[] seen = Raster.pixels(image);
    int[] pixels = Raster.pixels(Raster.onWhite(image));
    ColorTable colors = ColorTable.of(pixels);
    if (colors == null || colors.size() == ColorTable.MAX_COLORS) {
      pixels = ColorReduction.reduce(pixels, ColorTable.MAX_COLORS - 1);
      colors = ColorTable.of(pixels);
    }
    int clear = colors.size();
    BufferedImage copy = indexed(image, pixels, colors, model(colors, clear));
    byte[] indices = ((DataBufferByte) copy.getRaster().getDataBuffer()).getData();
    for (int i = 0; i < seen.length; i++) {
      if (seen[i] >>> 24 < HALF_OPAQUE) {
        indices[i] = (byte) clear;
      }
    }
    ImageIoFormat.write(copy, "gif", out);
  }

  private static IndexColorModel model(ColorTable colors, int clear) {
    int size = Math.max(colors.size(), clear + 1);
    byte[] red = new byte[size];
    byte[] green = new byte[size];
    byte[] blue = new byte[size];
    for (int i = 0; i < colors.size(); i++) {
      red[i] = (byte) (colors.color(i) >> 16);
      green[i] = (byte) (colors.color(i) >> 8);
      blue[i] = (byte) colors.color(i);
    }
    return new IndexColorModel(BITS, size, red, green, blue, clear);
  }

  private static BufferedImage indexed(
      BufferedImage image, int[] pixels, ColorTable colors, IndexColorModel model) {
    BufferedImage copy = new BufferedImage(
        image.getWidth(), image.getHeight(), BufferedImage.TYPE_BYTE_INDEXED, model);
    byte[] indices = ((DataBufferByte) copy.getRaster().getDataBuffer()).getData();
    for (int i = 0; i < pixels.length; i++) {
      indices[i] = colors.indexOf(pixels[i]);
    }
    return copy;
  }
}
