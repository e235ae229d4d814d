// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.figure;

import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.Paper;

/** How large a figure is shown, in pixels of which 96 make an inch. */
public record FigureSize(double width, double height) {
  /** So much of a page's height is left to the caption and the heading above. */
  private static final double ROOM = 0.88;

  /** The width that the document asks for, or the figure's own. */
  public static FigureSize of(Figure figure, Illustration illustration) {
    double width = figure.width() > 0 ? figure.width() : illustration.width();
    return new FigureSize(width, width * illustration.height() / illustration.width());
  }

  /** The same, smaller where the text of a page is. */
  public FigureSize within(Paper paper) {
    double scale = Math.min(1,
        Math.min(paper.textWidth() / width, ROOM * paper.textHeight() / height));
    return new FigureSize(width * scale, height * scale);
  }
}
