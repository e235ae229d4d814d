// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;
import org.chartbridge.document.model.TextDirection;

/** Writes a table as formatting objects; its header comes again on every page that it takes. */
final class FoTable {
  private final PageTable measures;
  private final Table table;
  private final String caption;
  private final Paper paper;
  private final PdfText setting;
  private final FoEvents out;

  /**
   * @param caption what stands above it, or null
   */
  FoTable(PageTable measures, String caption, Paper paper, PdfText setting, FoEvents out) {
    this.measures = measures;
    this.caption = caption;
    this.paper = paper;
    this.setting = setting;
    this.out = out;
    table = measures.table();
  }

  void write() {
    out.open("block", "space-before", "8pt", "space-after", "14pt", "keep-together.within-page",
        PageTable.isShort(table) ? PdfStyle.KEEP : null);
    if (caption != null) {
      FoDirection turn = FoDirection.open(caption, setting, out, "keep-with-next.within-page",
          "always");
      out.open("block", "font-weight", "bold", "font-size", "9.5pt", "space-after", "4pt",
          "keep-with-next.within-page", "always", "text-align",
          turn.align(Alignment.START, setting));
      InlineFo.write(caption, setting, out);
      out.close("block");
      turn.close();
    }
    // The formatter puts tables on the left, whichever way the page runs: where that is from the
    // right, a last column without cells takes the rest of the page.
    boolean fromRight = setting.direction() == TextDirection.RIGHT_TO_LEFT;
    double room = measures.room(paper);
    out.open("table", "table-layout", "fixed", "width",
        PdfStyle.points(fromRight ? room : measures.width()), "font-size",
        PdfStyle.points(measures.size()), "line-height", "1.35", "border-collapse", "separate",
        "border-spacing", "0pt");
    for (int i = 0; i < table.columns().size(); i++) {
      out.empty("table-column", "column-width", PdfStyle.points(measures.column(i)));
    }
    if (fromRight && room > measures.width()) {
      out.empty("table-column", "column-width", PdfStyle.points(room - measures.width()));
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
        span(cell.rowSpan()), "padding", "2.5pt " + PdfStyle.points(measures.padding()),
        "border-top", above, "border-bottom", below, "text-align",
        PdfStyle.alignment(cell.alignment(), setting.direction()), "display-align",
        inHeader ? "after" : "before", "font-weight", cell.header() ? "bold" : null, "role",
        cell.header() ? "TH" : null,
        "start-indent", "0pt");
    FoDirection turn = FoDirection.open(PlainText.of(cell.text()), setting, out);
    out.open("block", "text-align", turn.align(cell.alignment(), setting));
    InlineFo.write(cell.text(), measures.detail(), setting, out);
    out.close("block");
    turn.close();
    out.close("table-cell");
  }

  private static String span(int span) {
    return span == 1 ? null : Integer.toString(span);
  }
}
