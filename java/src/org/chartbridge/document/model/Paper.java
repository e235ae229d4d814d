// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** Page sizes, in millimetres. */
public enum Paper {
  A4(210, 297),
  LETTER(215.9, 279.4);

  /** Left and right of the text. */
  public static final double SIDE_MARGIN = 25;

  /** Above and below the text, with the running lines in it. */
  public static final double TOP_MARGIN = 25;

  private static final double PIXELS_PER_MILLIMETRE = 96 / 25.4;

  private final double width;
  private final double height;

  Paper(double width, double height) {
    this.width = width;
    this.height = height;
  }

  public double width() {
    return width;
  }

  public double height() {
    return height;
  }

  /** The width of a line of text, in pixels of which 96 make an inch. */
  public double textWidth() {
    return (width - 2 * SIDE_MARGIN) * PIXELS_PER_MILLIMETRE;
  }

  /** The height of the text of a page, in such pixels. */
  public double textHeight() {
    return (height - 2 * TOP_MARGIN) * PIXELS_PER_MILLIMETRE;
  }
}
