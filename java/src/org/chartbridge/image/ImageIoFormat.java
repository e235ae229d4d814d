// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.image.BufferedImage;
import java.io.IOException;
import java.io.OutputStream;
import javax.imageio.IIOImage;
import javax.imageio.ImageIO;
import javax.imageio.ImageWriteParam;
import javax.imageio.ImageWriter;
import javax.imageio.metadata.IIOMetadata;
import javax.imageio.stream.ImageOutputStream;
import javax.imageio.stream.MemoryCacheImageOutputStream;

/** Writes pictures with the JDK's own writers. */
final class ImageIoFormat {
  private ImageIoFormat() {}

  static ImageWriter writer(String format) {
    return ImageIO.getImageWritersByFormatName(format).next();
  }

  static void write(BufferedImage image, String format, OutputStream out) throws IOException {
    ImageWriter writer = writer(format);
    write(writer, writer.getDefaultWriteParam(), null, image, out);
  }

  /** Writes and disposes of the writer. Nothing goes through a cache file. */
  static void write(ImageWriter writer, ImageWriteParam parameters, IIOMetadata metadata,
      BufferedImage image, OutputStream out) throws IOException {
    try (ImageOutputStream stream = new MemoryCacheImageOutputStream(out)) {
      writer.setOutput(stream);
      writer.write(null, new IIOImage(image, null, metadata), parameters);
    } finally {
      writer.dispose();
    }
  }
}
