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

  private GifFormat() {}

  static void write(BufferedImage image, OutputStream out) throws IOException {
    int[] pixels = Raster.pixels(image);
    ColorTable colors = ColorTable.of(pixels);
    if (colors == null) {
      pixels = ColorReduction.reduce(pixels);
      colors = ColorTable.of(pixels);
    }
    ImageIoFormat.write(indexed(image, pixels, colors), "gif", out);
  }

  private static BufferedImage indexed(BufferedImage image, int[] pixels, ColorTable colors) {
    byte[] red = new byte[colors.size()];
    byte[] green = new byte[colors.size()];
    byte[] blue = new byte[colors.size()];
    for (int i = 0; i < colors.size(); i++) {
      red[i] = (byte) (colors.color(i) >> 16);
      green[i] = (byte) (colors.color(i) >> 8);
      blue[i] = (byte) colors.color(i);
    }
    IndexColorModel model = new IndexColorModel(BITS, colors.size(), red, green, blue);
    BufferedImage copy = new BufferedImage(
        image.getWidth(), image.getHeight(), BufferedImage.TYPE_BYTE_INDEXED, model);
    byte[] indices = ((DataBufferByte) copy.getRaster().getDataBuffer()).getData();
    for (int i = 0; i < pixels.length; i++) {
      indices[i] = colors.indexOf(pixels[i]);
    }
    return copy;
  }
}
