// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.Locale;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartSource;

/** The kinds of images that can be read, told by their first bytes. */
enum InputFormat {
  PNG(0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'),
  JPEG(0xFF, 0xD8, 0xFF),
  GIF('G', 'I', 'F', '8'),
  BMP('B', 'M'),
  /** Any XML, in whatever encoding; reading it tells whether it is SVG. */
  SVG;

  private static final int SHOWN = 4;

  private final int[] signature;

  InputFormat(int... signature) {
    this.signature = signature;
  }

  /**
   * @throws ChartException when the bytes are no such image
   */
  static InputFormat of(byte[] bytes) {
    if (bytes == null || bytes.length == 0) {
      throw new ChartException("The image is empty.");
    }
    for (InputFormat format : values()) {
      if (format == SVG ? ChartSource.isXml(bytes) : format.begins(bytes)) {
        return format;
      }
    }
    StringBuilder start = new StringBuilder();
    for (int i = 0; i < Math.min(SHOWN, bytes.length); i++) {
      start.append(String.format(Locale.ROOT, " %02X", bytes[i] & 0xFF));
    }
    throw new ChartException("The image is none of PNG, JPEG, BMP, GIF and SVG; it begins with the"
        + " bytes" + start + ".");
  }

  private boolean begins(byte[] bytes) {
    if (bytes.length < signature.length) {
      return false;
    }
    for (int i = 0; i < signature.length; i++) {
      if ((bytes[i] & 0xFF) != signature[i]) {
        return false;
      }
    }
    return true;
  }
}
