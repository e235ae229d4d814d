// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.AlphaComposite;
import java.awt.Graphics2D;
import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.io.UncheckedIOException;

/** Turns a picture into the bytes of an image type. */
public final class PictureEncoder {
  private static final int OPAQUE = 255;

  private PictureEncoder() {}

  /**
   * Writes the picture; for {@link ImageType#IMAGE_MAP}, which has a PNG at its heart, that PNG.
   *
   * @param out is not closed
   */
  public static void write(Picture picture, ImageType type, OutputStream out) throws IOException {
    switch (type) {
      case JPEG -> JpegFormat.write(Raster.draw(picture), picture.scale(), out);
      case PNG, IMAGE_MAP -> PngFormat.write(Raster.draw(picture), picture.scale(), out);
      case BMP -> ImageIoFormat.write(Raster.toBgr(Raster.draw(picture)), "bmp", out);
      case GIF -> GifFormat.write(Raster.draw(picture), out);
      case SVG -> SvgFormat.write(picture, out);
      case PDF -> PdfFormat.write(picture, out);
      default -> throw new IllegalArgumentException(type.name());
    }
  }

  /**
   * Writes pixels. Where they can be seen through, PNG and GIF keep that, GIF without halves; in
   * JPEG and BMP they stand on white.
   *
   * @param type one of the types that hold pixels
   * @param out is not closed
   */
  public static void write(BufferedImage image, ImageType type, OutputStream out)
      throws IOException {
    boolean keeps = type == ImageType.PNG || type == ImageType.GIF;
    BufferedImage clear = keeps ? withClearPixels(image) : null;
    if (clear == null) {
      Picture opaque = new Picture(image.getWidth(), image.getHeight(), 1,
          graphics -> graphics.drawImage(image, 0, 0, null));
      write(opaque, type, out);
    } else if (type == ImageType.PNG) {
      ImageIoFormat.write(clear, "png", out);
    } else {
      GifFormat.writeTransparent(clear, out);
    }
  }

  /** The pixels with their opacity; null when all are opaque. */
  private static BufferedImage withClearPixels(BufferedImage image) {
    if (!image.getColorModel().hasAlpha()) {
      return null;
    }
    BufferedImage copy =
        new BufferedImage(image.getWidth(), image.getHeight(), BufferedImage.TYPE_INT_ARGB);
    Graphics2D graphics = copy.createGraphics();
    try {
      graphics.setComposite(AlphaComposite.Src);
      graphics.drawImage(image, 0, 0, null);
    } finally {
      graphics.dispose();
    }
    for (int pixel : Raster.pixels(copy)) {
      if (pixel >>> 24 != OPAQUE) {
        return copy;
      }
    }
    return null;
  }

  public static byte[] encode(Picture picture, ImageType type) {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream(1 << 16);
    try {
      write(picture, type, bytes);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return bytes.toByteArray();
  }
}
