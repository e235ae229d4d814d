// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.EOFException;
import java.io.IOException;
import java.util.Locale;
import javax.imageio.ImageIO;
import javax.imageio.ImageReader;
import javax.imageio.event.IIOReadWarningListener;
import javax.imageio.stream.ImageInputStream;
import javax.imageio.stream.MemoryCacheImageInputStream;
import org.chartbridge.chart.ChartException;

/** Reads the pixels of PNG, JPEG, BMP and GIF; of a film the first picture. */
final class PixelReader {
  static final long MAX_PIXELS = 100_000_000;

  /** How the JDK's JPEG reader words it that it made up the rest of the picture. */
  private static final String CUT_OFF = "premature end";

  private final InputFormat format;
  private final byte[] bytes;
  private String cutOff;

  private PixelReader(InputFormat format, byte[] bytes) {
    this.format = format;
    this.bytes = bytes;
  }

  /**
   * Reads an image.
   *
   * @throws ChartException when it is damaged or has more than 100 million pixels, which its header
   *     tells before anything is decoded
   */
  static BufferedImage read(InputFormat format, byte[] bytes) {
    return new PixelReader(format, bytes).read(true);
  }

  /** Looks at the size only. */
  static void checkSize(InputFormat format, byte[] bytes) {
    new PixelReader(format, bytes).read(false);
  }

  private BufferedImage read(boolean decode) {
    ImageReader reader =
        ImageIO.getImageReadersByFormatName(format.name().toLowerCase(Locale.ROOT)).next();
    // Not ImageIO's own choice of a stream, which may keep the bytes in a file.
    try (ImageInputStream stream =
             new MemoryCacheImageInputStream(new ByteArrayInputStream(bytes))) {
      reader.setInput(stream, true);
      checkSize(reader.getWidth(0), reader.getHeight(0));
      return decode ? decoded(reader) : null;
    } catch (ChartException e) {
      throw e;
    } catch (IOException | RuntimeException e) {
      throw damaged(reason(e), e);
    } finally {
      reader.dispose();
    }
  }

  private static String reason(Exception e) {
    if (e instanceof EOFException) {
      return "it is cut off";
    }
    return e.getMessage() == null ? "its parts do not fit each other" : e.getMessage();
  }

  private void checkSize(int width, int height) {
    if (width < 1 || height < 1) {
      throw damaged("its header says " + width + " x " + height + " pixels", null);
    }
    if ((long) width * height > MAX_PIXELS) {
      throw new ChartException("The " + format + " image has " + width + " x " + height
          + " pixels; at most 100 million are read.");
    }
  }

  private BufferedImage decoded(ImageReader reader) throws IOException {
    IIOReadWarningListener listener = (source, warning) -> {
      if (warning.toLowerCase(Locale.ROOT).contains(CUT_OFF)) {
        cutOff = warning;
      }
    };
    reader.addIIOReadWarningListener(listener);
    BufferedImage image = reader.read(0);
    if (cutOff != null) {
      throw damaged(cutOff, null);
    }
    return image;
  }

  private ChartException damaged(String reason, Exception cause) {
    return new ChartException("The " + format + " image is damaged: "
        + reason.replaceAll("[.\\s]+$", "") + ".", cause);
  }
}
