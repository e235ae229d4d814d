// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.image.BufferedImage;
import java.awt.image.DataBufferInt;
import org.chartbridge.chart.ChartException;

/** Pictures as pixels, always opaque on white. */
final class Raster {
  /** Pixels per inch of a picture at 100 percent. */
  static final int DPI = 96;

  private Raster() {}

  /**
   * Draws a picture.
   *
   * @return an image of {@link BufferedImage#TYPE_INT_RGB}
   */
  static BufferedImage draw(Picture picture) {
    int width = picture.pixelWidth();
    int height = picture.pixelHeight();
    BufferedImage image = allocate(width, height);
    Graphics2D graphics = image.createGraphics();
    try {
      graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
      graphics.setRenderingHint(
          RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
      // Letters as wide as in the vector formats, whatever the scale.
      graphics.setRenderingHint(
          RenderingHints.KEY_FRACTIONALMETRICS, RenderingHints.VALUE_FRACTIONALMETRICS_ON);
      graphics.setColor(Color.WHITE);
      graphics.fillRect(0, 0, width, height);
      graphics.scale((double) width / picture.width(), (double) height / picture.height());
      picture.drawing().accept(graphics);
    } finally {
      graphics.dispose();
    }
    return image;
  }

  private static BufferedImage allocate(int width, int height) {
    try {
      return new BufferedImage(width, height, BufferedImage.TYPE_INT_RGB);
    } catch (OutOfMemoryError e) {
      throw new ChartException("The Java heap has no room for a picture of " + width + " x "
              + height + " pixels; choose a smaller size or give the JVM more memory (-Xmx).",
          e);
    }
  }

  /** The pixels as 0x00RRGGBB, row by row. */
  static int[] pixels(BufferedImage image) {
    return ((DataBufferInt) image.getRaster().getDataBuffer()).getData();
  }

  /**
   * Pixels as they look on white.
   *
   * @return an image of {@link BufferedImage#TYPE_INT_RGB}
   */
  static BufferedImage onWhite(BufferedImage image) {
    BufferedImage copy = allocate(image.getWidth(), image.getHeight());
    Graphics2D graphics = copy.createGraphics();
    try {
      graphics.drawImage(image, 0, 0, Color.WHITE, null);
    } finally {
      graphics.dispose();
    }
    return copy;
  }

  /** The same picture with three bytes for a pixel. */
  static BufferedImage toBgr(BufferedImage image) {
    BufferedImage copy =
        new BufferedImage(image.getWidth(), image.getHeight(), BufferedImage.TYPE_3BYTE_BGR);
    Graphics2D graphics = copy.createGraphics();
    try {
      graphics.drawImage(image, 0, 0, null);
    } finally {
      graphics.dispose();
    }
    return copy;
  }
}
