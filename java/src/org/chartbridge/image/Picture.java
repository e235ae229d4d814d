// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Graphics2D;
import java.util.Locale;
import java.util.function.Consumer;
import org.chartbridge.chart.ChartException;

/**
 * Something that can be drawn, and how large it is to come out.
 *
 * @param width its own width in pixels
 * @param height its own height in pixels
 * @param scale the factor by which it is enlarged
 * @param drawing draws it at its own size; the graphics it gets does the scaling
 * @param words what it shows, in words; null for nothing
 */
public record Picture(
    int width, int height, double scale, Consumer<Graphics2D> drawing, PictureWords words) {
  private static final double MAX_PERCENT = 10_000;
  private static final long MAX_PIXELS = 100_000_000;

  /** A picture without words. */
  public Picture(int width, int height, double scale, Consumer<Graphics2D> drawing) {
    this(width, height, scale, drawing, null);
  }

  /**
   * @param percent the size, 100 for the picture's own
   * @throws ChartException when the size is out of range or makes the picture too large
   */
  public static Picture ofPercent(
      int width, int height, double percent, Consumer<Graphics2D> drawing) {
    if (!(percent > 0 && percent <= MAX_PERCENT)) {
      throw new ChartException("The size is " + text(percent)
          + " percent; it must be greater than 0 and at most 10000.");
    }
    Picture picture = new Picture(width, height, percent / 100, drawing);
    if ((long) picture.pixelWidth() * picture.pixelHeight() > MAX_PIXELS) {
      throw new ChartException("At " + text(percent) + " percent the picture would have "
          + picture.pixelWidth() + " x " + picture.pixelHeight()
          + " pixels; at most 100 million are drawn. Choose a smaller size.");
    }
    return picture;
  }

  private static String text(double percent) {
    return percent == Math.rint(percent) && Math.abs(percent) < 1e9
        ? String.format(Locale.ROOT, "%.0f", percent)
        : Double.toString(percent);
  }

  public int pixelWidth() {
    return pixels(width);
  }

  public int pixelHeight() {
    return pixels(height);
  }

  private int pixels(int length) {
    return (int) Math.max(1, Math.min(Integer.MAX_VALUE, Math.round(length * scale)));
  }
}
