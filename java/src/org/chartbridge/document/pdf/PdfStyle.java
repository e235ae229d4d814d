// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.Locale;
import org.chartbridge.chart.Words;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.TextDirection;

/** Fonts, sizes and colours of pages; lengths in points. */
final class PdfStyle {
  static final String FAMILIES = "Liberation Sans,DejaVu Sans";
  static final String CODE_FAMILIES = "Liberation Mono,DejaVu Sans Mono";
  static final String TEXT = "#1f1f1f";
  static final String MUTED = "#555555";
  static final String LINK = "#005a9c";
  static final String RULE = "#c9c9c9";
  static final String STRONG_RULE = "#1f1f1f";
  static final String LIGHT_RULE = "#e0e0e0";
  /** Together where it is possible; what is longer than a page is split nevertheless. */
  static final String KEEP = "5";
  static final double SIZE = 10;

  private static final double[] HEADINGS = {15, 12.5, 11, 10, 10, 10};
  private static final double POINTS_PER_PIXEL = 0.75;

  private PdfStyle() {}

  static double heading(int level) {
    return HEADINGS[level - 1];
  }

  /** The name of a font family as formatting objects take it. */
  static String quoted(String family) {
    return "'" + family.replace("'", "") + "'";
  }

  /** The alignment of cells: those of a column stand below each other, whatever is in them. */
  static String alignment(Alignment alignment, TextDirection direction) {
    if (alignment != Alignment.START) {
      return Words.of(alignment);
    }
    return direction == TextDirection.RIGHT_TO_LEFT ? "right" : "left";
  }

  static String points(double length) {
    return String.format(Locale.ROOT, "%.3fpt", length);
  }

  static String pixels(double length) {
    return points(length * POINTS_PER_PIXEL);
  }
}
