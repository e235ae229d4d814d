// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.util.Iterator;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.zip.CRC32;
import javax.imageio.ImageIO;
import javax.imageio.stream.ImageInputStream;
import javax.imageio.stream.MemoryCacheImageInputStream;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.model.ImageData;
import org.chartbridge.format.ChartSource;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/** Finds out what kind of picture some bytes are, and how large it is. */
final class ImageReader {
  private static final long MAX_PIXELS = 100_000_000;
  private static final double MAX_LENGTH = 100_000;
  private static final double DEFAULT_WIDTH = 300;
  private static final double DEFAULT_HEIGHT = 150;

  private static final int PNG_SIGNATURE = 8;
  /** Length, type and checksum. */
  private static final int PNG_CHUNK = 12;
  /** The type IEND. */
  private static final int PNG_END = 0x49454E44;

  private static final Pattern LENGTH =
      Pattern.compile("\\+?([0-9]+\\.?[0-9]*|\\.[0-9]+)(px|pt|pc|mm|cm|in)?");

  private ImageReader() {}

  static ImageData read(byte[] bytes) {
    if (startsWith(bytes, 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n')) {
      checkPng(bytes);
      return raster(ImageData.Format.PNG, bytes);
    }
    if (startsWith(bytes, 0xFF, 0xD8, 0xFF)) {
      checkJpeg(bytes);
      return raster(ImageData.Format.JPEG, bytes);
    }
    if (ChartSource.isXml(bytes)) {
      return svg(bytes);
    }
    throw new ChartException("found neither a PNG nor a JPEG nor an SVG");
  }

  private static boolean startsWith(byte[] bytes, int... start) {
    if (bytes.length < start.length) {
      return false;
    }
    for (int i = 0; i < start.length; i++) {
      if ((bytes[i] & 0xFF) != start[i]) {
        return false;
      }
    }
    return true;
  }

  /** Pages take the compressed pixels over unread, so damage would show only there. */
  private static void checkPng(byte[] bytes) {
    ByteBuffer in = ByteBuffer.wrap(bytes, PNG_SIGNATURE, bytes.length - PNG_SIGNATURE);
    int type = 0;
    while (type != PNG_END) {
      int length = in.remaining() < PNG_CHUNK ? -1 : in.getInt();
      if (length < 0 || length > in.remaining() - 2 * Integer.BYTES) {
        throw new ChartException("the PNG is cut off");
      }
      CRC32 sum = new CRC32();
      sum.update(bytes, in.position(), Integer.BYTES + length);
      type = in.getInt();
      in.position(in.position() + length);
      if (in.getInt() != (int) sum.getValue()) {
        throw new ChartException("the PNG is damaged: a checksum is wrong");
      }
    }
  }

  private static void checkJpeg(byte[] bytes) {
    for (int i = bytes.length - 1; i > 1; i--) {
      if ((bytes[i] & 0xFF) == 0xD9 && (bytes[i - 1] & 0xFF) == 0xFF) {
        return;
      }
    }
    throw new ChartException("the JPEG is cut off");
  }

  private static ImageData raster(ImageData.Format format, byte[] bytes) {
    try (ImageInputStream in =
             new MemoryCacheImageInputStream(new ByteArrayInputStream(bytes))) {
      Iterator<javax.imageio.ImageReader> readers =
          ImageIO.getImageReadersByFormatName(format.name());
      javax.imageio.ImageReader reader = readers.next();
      try {
        reader.setInput(in, true, true);
        int width = reader.getWidth(0);
        int height = reader.getHeight(0);
        if ((long) width * height > MAX_PIXELS) {
          throw new ChartException("it has " + width + " x " + height
              + " pixels; at most 100 million are accepted");
        }
        return new ImageData(format, bytes, width, height);
      } finally {
        reader.dispose();
      }
    } catch (IOException | RuntimeException e) {
      if (e instanceof ChartException own) {
        throw own;
      }
      throw new ChartException("the " + format + " is damaged: " + e.getMessage(), e);
    }
  }

  /** The picture is written anew, without processing instructions, which could fetch something. */
  private static ImageData svg(byte[] bytes) {
    XmlElement root;
    try {
      root = SafeXml.parse(bytes);
    } catch (ChartException e) {
      throw new ChartException("SVG, " + e.getMessage(), e);
    }
    if (!root.name().equals("svg") || !root.namespace().equals(SvgCheck.NAMESPACE)) {
      throw new ChartException("SVG, " + root.position() + ": found <" + root.name()
          + ">, expected <svg xmlns=\"" + SvgCheck.NAMESPACE + "\">");
    }
    SvgCheck.check(root);
    double[] box = viewBox(root);
    double width = length(root.attribute("width"));
    double height = length(root.attribute("height"));
    if (width == 0 && height == 0) {
      width = box == null ? DEFAULT_WIDTH : box[0];
    }
    double ratio = box == null ? DEFAULT_HEIGHT / DEFAULT_WIDTH : box[1] / box[0];
    if (width == 0) {
      width = height / ratio;
    }
    if (height == 0) {
      height = width * ratio;
    }
    if (!(width <= MAX_LENGTH && height <= MAX_LENGTH)) {
      throw new ChartException("the SVG is " + width + " x " + height + " pixels large");
    }
    return new ImageData(
        ImageData.Format.SVG, PreservingXmlWriter.write(root), width, height);
  }

  /** Width and height, or null. */
  private static double[] viewBox(XmlElement root) {
    String text = root.attribute("viewBox");
    if (text == null) {
      return null;
    }
    String[] numbers = text.strip().split("[\\s,]+");
    try {
      double width = Double.parseDouble(numbers[2]);
      double height = Double.parseDouble(numbers[3]);
      return width > 0 && height > 0 ? new double[] {width, height} : null;
    } catch (NumberFormatException | ArrayIndexOutOfBoundsException e) {
      throw new ChartException("SVG, " + root.position("viewBox")
              + ": the viewBox is \"" + text + "\"; four numbers are expected",
          e);
    }
  }

  /** In pixels; 0 when it is not given or relative. */
  private static double length(String text) {
    Matcher length = text == null ? null : LENGTH.matcher(text.strip());
    if (length == null || !length.matches()) {
      return 0;
    }
    double number = Double.parseDouble(length.group(1));
    String unit = length.group(2) == null ? "px" : length.group(2);
    return switch (unit) {
      case "pt" -> number * 96 / 72;
      case "pc" -> number * 16;
      case "mm" -> number * 96 / 25.4;
      case "cm" -> number * 96 / 2.54;
      case "in" -> number * 96;
      default -> number;
    };
  }
}
