// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import java.util.zip.CRC32;
import java.util.zip.Deflater;

/**
 * Writes PNG (ISO/IEC 15948): 8 bits for a channel, indexed colours where the picture has few,
 * sRGB, with its resolution. The JDK's own writer tries five filters for every row and takes about
 * three times as long for the same picture; charts have large even areas and need none.
 */
final class PngFormat {
  private static final byte[] SIGNATURE = {(byte) 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  private static final int COLOR_RGB = 2;
  private static final int COLOR_INDEXED = 3;
  private static final int BITS = 8;
  private static final byte FILTER_NONE = 0;
  private static final int UNIT_METRE = 1;
  private static final double INCHES_PER_METRE = 1 / 0.0254;

  /**
   * The highest level before deflate becomes thorough: beyond it time grows by half for a few
   * percent.
   */
  private static final int DEFLATE_LEVEL = 3;

  /** Bytes handed to deflate at a time. */
  private static final int BATCH = 1 << 16;

  private final OutputStream out;

  private PngFormat(OutputStream out) {
    this.out = out;
  }

  static void write(BufferedImage image, double scale, OutputStream out) throws IOException {
    new PngFormat(out).write(image, scale);
  }

  private void write(BufferedImage image, double scale) throws IOException {
    int[] pixels = Raster.pixels(image);
    ColorTable colors = ColorTable.of(pixels);
    out.write(SIGNATURE);
    writeHeader(image.getWidth(), image.getHeight(), colors != null);
    chunk("sRGB", new byte[] {0});
    writeResolution(scale);
    if (colors != null) {
      writePalette(colors);
    }
    writePixels(pixels, image.getWidth(), image.getHeight(), colors);
    chunk("IEND", new byte[0]);
  }

  private void writeHeader(int width, int height, boolean indexed) throws IOException {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    DataOutputStream data = new DataOutputStream(bytes);
    data.writeInt(width);
    data.writeInt(height);
    data.writeByte(BITS);
    data.writeByte(indexed ? COLOR_INDEXED : COLOR_RGB);
    data.writeByte(0);
    data.writeByte(0);
    data.writeByte(0);
    chunk("IHDR", bytes.toByteArray());
  }

  private void writeResolution(double scale) throws IOException {
    int perMetre = (int) Math.max(1, Math.round(Raster.DPI * scale * INCHES_PER_METRE));
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    DataOutputStream data = new DataOutputStream(bytes);
    data.writeInt(perMetre);
    data.writeInt(perMetre);
    data.writeByte(UNIT_METRE);
    chunk("pHYs", bytes.toByteArray());
  }

  private void writePalette(ColorTable colors) throws IOException {
    byte[] palette = new byte[3 * colors.size()];
    for (int i = 0; i < colors.size(); i++) {
      putRgb(palette, 3 * i, colors.color(i));
    }
    chunk("PLTE", palette);
  }

  private void writePixels(int[] pixels, int width, int height, ColorTable colors)
      throws IOException {
    int rowLength = 1 + width * (colors == null ? 3 : 1);
    int batchRows = Math.max(1, Math.min(height, BATCH / rowLength));
    byte[] rows = new byte[batchRows * rowLength];
    byte[] packed = new byte[BATCH];
    Deflater deflater = new Deflater(DEFLATE_LEVEL);
    try {
      for (int y = 0; y < height; y += batchRows) {
        int count = Math.min(batchRows, height - y);
        for (int i = 0; i < count; i++) {
          fillRow(rows, i * rowLength, pixels, (y + i) * width, width, colors);
        }
        deflater.setInput(rows, 0, count * rowLength);
        if (y + count == height) {
          deflater.finish();
        }
        drain(deflater, packed);
      }
    } finally {
      deflater.end();
    }
  }

  private void drain(Deflater deflater, byte[] packed) throws IOException {
    int length = deflater.deflate(packed);
    while (length > 0) {
      chunk("IDAT", packed, length);
      length = deflater.deflate(packed);
    }
  }

  private static void fillRow(
      byte[] row, int start, int[] pixels, int offset, int width, ColorTable colors) {
    int at = start;
    row[at++] = FILTER_NONE;
    if (colors == null) {
      for (int x = 0; x < width; x++) {
        putRgb(row, at, pixels[offset + x]);
        at += 3;
      }
      return;
    }
    int lastPixel = pixels[offset];
    byte lastIndex = colors.indexOf(lastPixel);
    for (int x = 0; x < width; x++) {
      int pixel = pixels[offset + x];
      if (pixel != lastPixel) {
        lastPixel = pixel;
        lastIndex = colors.indexOf(pixel);
      }
      row[at++] = lastIndex;
    }
  }

  private static void putRgb(byte[] bytes, int at, int rgb) {
    bytes[at] = (byte) (rgb >> 16);
    bytes[at + 1] = (byte) (rgb >> 8);
    bytes[at + 2] = (byte) rgb;
  }

  private void chunk(String type, byte[] data) throws IOException {
    chunk(type, data, data.length);
  }

  private void chunk(String type, byte[] data, int length) throws IOException {
    byte[] name = type.getBytes(StandardCharsets.US_ASCII);
    CRC32 crc = new CRC32();
    crc.update(name);
    crc.update(data, 0, length);
    writeInt(length);
    out.write(name);
    out.write(data, 0, length);
    writeInt((int) crc.getValue());
  }

  private void writeInt(int value) throws IOException {
    out.write(
        new byte[] {(byte) (value >> 24), (byte) (value >> 16), (byte) (value >> 8), (byte) value});
  }
}
