// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.io.UncheckedIOException;

/** Turns a picture into the bytes of an image type. */
public final class PictureEncoder {
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
