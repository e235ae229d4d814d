// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import org.chartbridge.chart.ChartException;

/** The kinds of output, with the numbers by which a host asks for them. */
public enum ImageType {
  JPEG(1),
  PNG(2),
  BMP(3),
  GIF(4),
  SVG(5),
  PDF(6),
  /** A PNG with its HTML map and the same map as JSON. */
  IMAGE_MAP(7);

  private final int number;

  ImageType(int number) {
    this.number = number;
  }

  public int number() {
    return number;
  }

  /**
   * @throws ChartException when no type has this number
   */
  public static ImageType of(int number) {
    for (ImageType type : values()) {
      if (type.number == number) {
        return type;
      }
    }
    throw new ChartException("There is no image type " + number
        + "; the types are 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6 PDF, 7 image map.");
  }
}
