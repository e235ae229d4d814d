// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.model.Table;

/** Writes a table as OpenDocument. */
final class OdtTable {
  private static final String STRONG = "1pt solid #1f1f1f";
  private static final String MIDDLE = "0.6pt solid #8a8a8a";
  private static final String LIGHT = "0.5pt solid #e0e0e0";

  /** The styles that cells of all tables share. */
  static final String CELL_STYLES = cellStyle("CellTop", STRONG, null, "bottom")
      + cellStyle("CellTopSpan", STRONG, MIDDLE, "bottom")
      + cellStyle("CellTopOnly", STRONG, MIDDLE, "bottom")
      + cellStyle("CellHeader", null, null, "bottom")
      + cellStyle("CellHeaderSpan", null, MIDDLE, "bottom")
      + cellStyle("CellHeaderLast", null, MIDDLE, "bottom")
      + cellStyle("CellFirst", null, null, "top")
      + cellStyle("CellFirstNoHeader", STRONG, null, "top")
      + cellStyle("CellBody", LIGHT, null, "top")
      + cellStyle("CellFirstLast", null, STRONG, "top")
      + cellStyle("CellFirstLastNoHeader", STRONG, STRONG, "top")
      + cellStyle("CellLast", LIGHT, STRONG, "top");

  private final Table table;
  private final String name;
  private final PageTable measures;
  private final OdtText text;
  private final Markup out;
  private final Map<Long, Table.Cell> places = new HashMap<>();

  OdtTable(PageTable measures, String name, OdtText text, Markup out) {
    this.measures = measures;
    this.name = name;
    this.text = text;
    this.out = out;
    table = measures.table();
    table.rows().forEach(row -> row.forEach(
        cell -> places.put(place(cell.row(), cell.column()), cell)));
  }

  private static String cellStyle(String name, String top, String bottom, String align) {
    return new Markup().open("style:style", "style:name", name, "style:family", "table-cell")
        .empty("style:table-cell-properties", "fo:padding-left", PageTable.PADDING + "pt",
            "fo:padding-right", PageTable.PADDING + "pt", "fo:padding-top", "2.5pt",
            "fo:padding-bottom", "2.5pt", "fo:border-left", "none", "fo:border-right", "none",
            "fo:border-top", top == null ? "none" : top, "fo:border-bottom",
            bottom == null ? "none" : bottom, "style:vertical-align", align)
        .close("style:style").line().toString();
  }

  private static long place(int row, int column) {
    return (long) row << 32 | column;
  }

  void write(Markup styles) {
    styles.open("style:style", "style:name", name, "style:family", "table");
    styles.empty("style:table-properties", "style:width", points(measures.width()), "table:align",
        text.isRightToLeft() ? "right" : "left", "style:writing-mode",
        text.isRightToLeft() ? "rl-tb" : null, "fo:margin-bottom", "12pt", "table:border-model",
        "collapsing",
        "style:may-break-between-rows", PageTable.isShort(table) ? "false" : null);
    styles.close("style:style").line();
    out.open("table:table", "table:name", name, "table:style-name", name).line();
    for (int i = 0; i < table.columns().size(); i++) {
      String column = name + ".C" + (i + 1);
      styles.open("style:style", "style:name", column, "style:family", "table-column");
      styles.empty("style:table-column-properties", "style:column-width",
          points(measures.column(i))).close("style:style").line();
      out.empty("table:table-column", "table:style-name", column);
    }
    out.line();
    if (table.headerRows() > 0) {
      out.open("table:table-header-rows").line();
      rows(0, table.headerRows());
      out.close("table:table-header-rows").line();
    }
    rows(table.headerRows(), table.rows().size());
    out.close("table:table").line();
  }

  private static String points(double length) {
    return String.format(Locale.ROOT, "%.2fpt", length);
  }

  private void rows(int from, int to) {
    for (int row = from; row < to; row++) {
      out.open("table:table-row");
      for (int column = 0; column < table.columns().size(); column++) {
        Table.Cell cell = places.get(place(row, column));
        if (cell == null) {
          out.empty("table:covered-table-cell");
        } else {
          cell(cell, from, to);
        }
      }
      out.close("table:table-row").line();
    }
  }

  private void cell(Table.Cell cell, int from, int to) {
    out.open("table:table-cell", "table:style-name", style(cell, from, to), "office:value-type",
        "string", "table:number-columns-spanned", span(cell.columnSpan()),
        "table:number-rows-spanned", span(cell.rowSpan()));
    String style = OdtBlocks.aligned("Table_20_", cell.alignment(), "text");
    out.open("text:p", "text:style-name", text.style(style, cell, measures.size()));
    if (cell.header()) {
      out.open("text:span", "text:style-name", "Strong");
    }
    OdtInline.write(cell.text(), text, out);
    if (cell.header()) {
      out.close("text:span");
    }
    out.close("text:p").close("table:table-cell");
  }

  private String style(Table.Cell cell, int from, int to) {
    boolean first = cell.row() == from;
    boolean last = cell.row() + cell.rowSpan() == to;
    if (cell.row() < table.headerRows()) {
      String kind = last ? "Last" : cell.columnSpan() > 1 ? "Span" : "";
      return first ? "CellTop" + (last ? "Only" : kind) : "CellHeader" + kind;
    }
    if (!first) {
      return last ? "CellLast" : "CellBody";
    }
    return "CellFirst" + (last ? "Last" : "") + (table.headerRows() == 0 ? "NoHeader" : "");
  }

  private static String span(int span) {
    return span == 1 ? null : Integer.toString(span);
  }
}
