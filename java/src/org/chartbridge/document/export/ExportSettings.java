// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.nio.charset.Charset;
import java.util.IdentityHashMap;
import java.util.Map;
import org.chartbridge.document.figure.FigureRenderer;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;

/**
 * What an export is made with.
 *
 * @param figures the figures of the document, ready to be drawn
 * @param charset the encoding of CSV and text
 * @param table the number of the one table to write as CSV; 0 for all
 */
public record ExportSettings(Map<Figure, Illustration> figures, Charset charset, int table) {
  /** Lays all figures of a document out, so that their mistakes are found before anything is
   * written. */
  static Map<Figure, Illustration> figures(Document document, FigureRenderer renderer) {
    Map<Figure, Illustration> figures = new IdentityHashMap<>();
    for (Block block : document.blocks()) {
      if (block instanceof Figure figure) {
        figures.put(figure, renderer.render(figure));
      }
    }
    return figures;
  }

  /** What a figure shows, in words. */
  public String alternative(Figure figure) {
    if (figure.alternative() != null && !figure.alternative().isBlank()) {
      return figure.alternative().strip();
    }
    if (figure.caption() != null && !figure.caption().isBlank()) {
      return figure.caption().strip();
    }
    Illustration illustration = figures.get(figure);
    String title = illustration == null ? null : illustration.title();
    if (title != null && !title.isBlank()) {
      return title.strip();
    }
    return switch (figure.content().kind()) {
      case "chart" -> "Chart";
      case "tree" -> "Decision tree";
      default -> "Image";
    };
  }
}
