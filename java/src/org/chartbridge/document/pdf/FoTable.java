// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.awt.Font;
import java.awt.font.FontRenderContext;
import java.util.Arrays;
import org.chartbridge.chart.Words;
import org.chartbridge.document.export.ColumnWidths;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;

/** Writes a table as formatting objects; its header comes again on every page that it takes. */
final class FoTable {
  private static final FontRenderContext METRICS = new FontRenderContext(null, true, true);
  /** Tables of so many rows are not split between pages, if they fit on one. */
  private static final int SHORT = 12;
  /** A line that fits exactly by Java's metrics might not by the formatter's. */
  private static final double TOLERANCE = 1.5;

  private final Table table;
  private final FoEvents out;
  private final double[] widths;
  private final Font font;

  FoTable(Table table, Paper paper, FoEvents out) {
    this.table = table;
    this.out = out;
    font = new Font(PdfStyle.FAMILY, Font.BOLD, 1).deriveFont((float) PdfStyle.TABLE_SIZE);
    double padding = 2 * PdfStyle.CELL_PADDING;
    double room = PdfStyle.pointsOfPixels(paper.textWidth()) - padding * table.columns().size();
    widths = ColumnWidths.of(table,
        cell -> Arrays.asList(PlainText.of(cell.text(), '\n').split("\n")), this::width, padding,
        Math.max(room, 1));
  }

  /** As wide as in bold letters, so that whatever part of a text is bold, it fits. */
  private double width(String text) {
    return text.isEmpty() ? 0 : font.getStringBounds(text, METRICS).getWidth() + TOLERANCE;
  }

  void write() {
    double sum = 0;
    for (double width : widths) {
      sum += width + 2 * PdfStyle.CELL_PADDING;
    }
    out.open("block", "space-before", "8pt", "space-after", "14pt", "keep-together.within-page",
        table.rows().size() <= SHORT ? PdfStyle.KEEP : null);
    if (table.caption() != null) {
      out.open("block", "font-weight", "bold", "font-size", "9.5pt", "space-after", "4pt",
          "keep-with-next.within-page", "always");
      out.text(table.caption()).close("block");
    }
    out.open("table", "table-layout", "fixed", "width", PdfStyle.points(sum), "font-size",
        PdfStyle.points(PdfStyle.TABLE_SIZE), "line-height", "1.35", "border-collapse", "separate",
        "border-spacing", "0pt");
    for (double width : widths) {
      out.empty("table-column", "column-width",
          PdfStyle.points(width + 2 * PdfStyle.CELL_PADDING));
    }
    rows("table-header", 0, table.headerRows());
    rows("table-body", table.headerRows(), table.rows().size());
    out.close("table").close("block");
  }

  private void rows(String section, int from, int to) {
    if (from == to) {
      return;
    }
    out.open(section);
    for (int row = from; row < to; row++) {
      // Neither the first row of a part nor its last stands alone on a page.
      boolean edge = to - from > 2 && (row == from || row == to - 2);
      out.open("table-row", "keep-together.within-page", PdfStyle.KEEP,
          "keep-with-next.within-page", edge ? PdfStyle.KEEP : null);
      for (Table.Cell cell : table.rows().get(row)) {
        cell(cell, from, to);
      }
      out.close("table-row");
    }
    out.close(section);
  }

  private void cell(Table.Cell cell, int from, int to) {
    boolean first = cell.row() == from;
    boolean inHeader = cell.row() < table.headerRows();
    boolean last = cell.row() + cell.rowSpan() == to;
    String above = null;
    if (first && (inHeader || table.headerRows() == 0)) {
      above = "1pt solid " + PdfStyle.STRONG_RULE;
    } else if (!first && !inHeader) {
      above = "0.4pt solid " + PdfStyle.LIGHT_RULE;
    }
    String below = null;
    if (last) {
      below = inHeader ? "0.6pt solid #8a8a8a" : "1pt solid " + PdfStyle.STRONG_RULE;
    } else if (inHeader && cell.columnSpan() > 1) {
      below = "0.4pt solid #8a8a8a";
    }
    out.open("table-cell", "number-columns-spanned", span(cell.columnSpan()), "number-rows-spanned",
        span(cell.rowSpan()), "padding", "2.5pt " + PdfStyle.points(PdfStyle.CELL_PADDING),
        "border-top", above, "border-bottom", below, "text-align", Words.of(cell.alignment()),
        "display-align", inHeader ? "after" : "before", "font-weight",
        cell.header() ? "bold" : null, "role", cell.header() ? "TH" : null,
        "start-indent", "0pt");
    out.open("block");
    InlineFo.write(cell.text(), out, longestWord(cell));
    out.close("block").close("table-cell");
  }

  private static String span(int span) {
    return span == 1 ? null : Integer.toString(span);
  }

  /** Words that are wider than the cell can be broken. */
  private int longestWord(Table.Cell cell) {
    double room = 2 * PdfStyle.CELL_PADDING * (cell.columnSpan() - 1);
    for (int i = 0; i < cell.columnSpan(); i++) {
      room += widths[cell.column() + i];
    }
    int longest = Integer.MAX_VALUE;
    for (String word : PlainText.of(cell.text()).split(" ")) {
      if (width(word) > room + TOLERANCE) {
        longest = Math.min(longest, word.length() - 1);
      }
    }
    return longest;
  }

}
