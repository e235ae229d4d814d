// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.awt.image.BufferedImage;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;

/** Writes an image as another type. */
public final class ImageConversion {
  private ImageConversion() {}

  /**
   * Converts an image. Where pixels can be seen through, PNG and GIF keep that; the other types
   * show them on white.
   *
   * @param image PNG, JPEG, BMP, GIF or SVG, told by its first bytes
   * @param target appears whole or not at all
   * @param type JPEG, PNG, BMP or GIF; for SVG also PDF
   * @throws ChartException when the image cannot be read, the type does not fit it, or the file
   *     cannot be written
   */
  public static void convert(byte[] image, Path target, ImageType type) {
    InputFormat format = InputFormat.of(image);
    checkType(format, type);
    if (format == InputFormat.SVG) {
      convert(SvgPicture.read(image), target, type);
    } else {
      write(PixelReader.read(format, image), target, type);
    }
  }

  private static void convert(Picture picture, Path target, ImageType type) {
    if (type == ImageType.PDF) {
      OutputFiles.write(target, out -> PictureEncoder.write(picture, type, out));
    } else {
      write(SvgPicture.pixels(picture), target, type);
    }
  }

  private static void write(BufferedImage pixels, Path target, ImageType type) {
    OutputFiles.write(target, out -> PictureEncoder.write(pixels, type, out));
  }

  private static void checkType(InputFormat format, ImageType type) {
    if (type == ImageType.IMAGE_MAP) {
      throw new ChartException("An image has no marks to make an image map of; choose type 1 JPEG,"
          + " 2 PNG, 3 BMP or 4 GIF.");
    }
    if (type == ImageType.SVG) {
      throw new ChartException(format == InputFormat.SVG
              ? "The image is SVG already."
              : "The image is " + format + ", and pixels do not become SVG; choose type 1 JPEG,"
                  + " 2 PNG, 3 BMP or 4 GIF.");
    }
    if (type == ImageType.PDF && format != InputFormat.SVG) {
      throw new ChartException("The image is " + format + "; only SVG becomes PDF. Choose type"
          + " 1 JPEG, 2 PNG, 3 BMP or 4 GIF.");
    }
  }
}
