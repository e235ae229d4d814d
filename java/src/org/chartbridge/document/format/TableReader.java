// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.Table;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.xml.XmlElement;

/** Reads a table and gives every cell its place in the grid. */
final class TableReader {
  private static final int MAX_COLUMNS = 200;
  private static final int MAX_SPAN = 1000;

  private final List<XmlElement> links;
  private final List<Table.Column> columns = new ArrayList<>();
  private final List<List<Table.Cell>> rows = new ArrayList<>();
  /** For each column the first row that no cell from above reaches into. */
  private int[] free = new int[MAX_COLUMNS + 1];

  private int width;

  TableReader(List<XmlElement> links) {
    this.links = links;
  }

  Table read(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    String caption = in.text("caption");
    in.finish();
    int headerRows = 0;
    XmlElement header = null;
    List<XmlElement> body = new ArrayList<>();
    for (XmlElement child : in.children(List.of("column", "header", "row"), true)) {
      switch (child.name()) {
        case "column" -> column(child, header != null || !body.isEmpty());
        case "header" -> {
          if (header != null || !body.isEmpty()) {
            throw child.error("<header> comes once, in front of the rows");
          }
          header = child;
        }
        default -> body.add(child);
      }
    }
    width = columns.size();
    if (header != null) {
      AttributeReader headerIn = new AttributeReader(header);
      headerIn.finish();
      List<XmlElement> headerElements = headerIn.children(List.of("row"), true);
      headerRows = headerElements.size();
      section(headerElements, header, true);
    }
    if (body.isEmpty()) {
      throw element.error("<table> has no <row>");
    }
    section(body, element, false);
    while (columns.size() < width) {
      columns.add(new Table.Column(Alignment.START, 0));
    }
    return new Table(caption, columns, headerRows, rows);
  }

  private void column(XmlElement element, boolean late) {
    if (late) {
      throw element.error("<column> comes in front of the rows");
    }
    AttributeReader in = new AttributeReader(element);
    Alignment alignment = in.choice("align", Alignment.class, Alignment.START);
    double share = in.number("width", 0);
    if (in.text("width") != null && !(share > 0 && share <= 100)) {
      throw in.unexpected(
          "width", in.text("width"), "a number above 0 and at most 100, in percent");
    }
    in.finish();
    in.children(List.of(), false);
    if (columns.size() == MAX_COLUMNS) {
      throw element.error("the table has more than " + MAX_COLUMNS + " columns");
    }
    columns.add(new Table.Column(alignment, share));
  }

  private void section(List<XmlElement> elements, XmlElement section, boolean header) {
    if (elements.isEmpty()) {
      throw section.error("<" + section.name() + "> has no <row>");
    }
    int end = rows.size() + elements.size();
    for (XmlElement element : elements) {
      row(element, end, header);
    }
  }

  private void row(XmlElement element, int end, boolean header) {
    AttributeReader in = new AttributeReader(element);
    in.finish();
    int row = rows.size();
    List<Table.Cell> cells = new ArrayList<>();
    int column = nextFree(row, 0);
    for (XmlElement child : in.children(List.of("cell"), true)) {
      Table.Cell cell = cell(child, row, column, header);
      int columnEnd = column + cell.columnSpan();
      check(child, cell, columnEnd, end);
      for (int i = column; i < columnEnd; i++) {
        free[i] = row + cell.rowSpan();
      }
      cells.add(cell);
      column = nextFree(row, columnEnd);
    }
    if (width == 0) {
      width = column;
    }
    if (column < width || width == 0) {
      throw element.error("the row fills " + column + " of " + width + " columns");
    }
    rows.add(cells);
  }

  private int nextFree(int row, int from) {
    int column = from;
    while (column < MAX_COLUMNS && free[column] > row) {
      column++;
    }
    return column;
  }

  private void check(XmlElement element, Table.Cell cell, int columnEnd, int rowEnd) {
    int limit = width == 0 ? MAX_COLUMNS : width;
    if (columnEnd > limit) {
      throw element.error(width == 0
          ? "the table has more than " + MAX_COLUMNS + " columns"
          : "the cell reaches beyond the " + width + " columns of the table");
    }
    if (cell.row() + cell.rowSpan() > rowEnd) {
      throw element.error("the cell reaches beyond the last row of its part of the table");
    }
    for (int i = cell.column(); i < columnEnd; i++) {
      if (free[i] > cell.row()) {
        throw element.error("the cell overlaps one that reaches down from above");
      }
    }
  }

  private Table.Cell cell(XmlElement element, int row, int column, boolean header) {
    AttributeReader in = new AttributeReader(element);
    int columnSpan = span(in, "colspan");
    int rowSpan = span(in, "rowspan");
    Alignment standard =
        column < columns.size() ? columns.get(column).alignment() : Alignment.START;
    Alignment alignment = in.choice("align", Alignment.class, standard);
    boolean isHeader = in.flag("header", header);
    in.finish();
    List<Inline> text = new InlineReader(links, null).read(element);
    return new Table.Cell(row, column, rowSpan, columnSpan, alignment, isHeader || header, text);
  }

  private static int span(AttributeReader in, String name) {
    int span = in.whole(name, 1);
    if (span < 1 || span > MAX_SPAN) {
      throw in.unexpected(name, in.text(name), "a whole number from 1 to " + MAX_SPAN);
    }
    return span;
  }
}
