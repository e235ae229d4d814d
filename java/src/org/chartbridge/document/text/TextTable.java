// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.document.export.LineBreaks;
import org.chartbridge.document.export.TableParts;
import org.chartbridge.document.model.Table;

/**
 * Draws a table with the characters {@code + - = |}. Lines between all rows are drawn only where
 * they are needed to tell the rows apart: when a cell has several lines or covers several rows.
 */
final class TextTable {
  private static final char HEADER_LINE = '=';

  private final Table table;
  private final int[] widths;
  private final Map<Table.Cell, List<String>> texts = new HashMap<>();
  private boolean linedHeader;
  private boolean linedBody;
  /** Where the line above each row is, or would be. */
  private final int[] tops;

  private final int[] lefts;
  private final String[][] canvas;
  private final boolean[][] horizontal;
  private final boolean[][] vertical;

  private TextTable(Table table, TextMeasures measures, int available) {
    this.table = table;
    widths = measures.widths(table, available);
    for (List<Table.Cell> row : table.rows()) {
      for (Table.Cell cell : row) {
        List<String> lines = measures.lines(cell, inner(cell));
        texts.put(cell, lines);
        boolean several = lines.size() > 1 || cell.rowSpan() > 1;
        linedHeader |= several && cell.row() < table.headerRows();
        linedBody |= several && cell.row() >= table.headerRows();
      }
    }
    tops = tops(heights());
    lefts = new int[widths.length + 1];
    for (int i = 0; i < widths.length; i++) {
      lefts[i + 1] = lefts[i] + widths[i] + 3;
    }
    int height = tops[tops.length - 1] + 1;
    int width = lefts[widths.length] + 1;
    canvas = new String[height][width];
    horizontal = new boolean[height][width];
    vertical = new boolean[height][width];
  }

  /**
   * The table in lines of no more than {@code available} columns; in several parts, each with the
   * columns in front, where it is wider. Only a column that is too wide by itself sticks out.
   */
  static List<List<String>> draw(Table table, int available, Locale language) {
    for (LineBreaks.Detail detail : LineBreaks.Detail.values()) {
      TextMeasures measures = new TextMeasures(language, detail);
      if (Arrays.stream(measures.least(table)).sum() + 1 <= available) {
        return List.of(new TextTable(table, measures, available).drawn());
      }
      List<Table> parts = detail == LineBreaks.Detail.WORDS
          ? null : TableParts.of(table, measures::least, available - 1);
      if (parts != null) {
        return parts.stream().map(
            part -> new TextTable(part, measures, available).drawn()).toList();
      }
    }
    TextMeasures measures = new TextMeasures(language, LineBreaks.Detail.ANYWHERE);
    return List.of(new TextTable(table, measures, available).drawn());
  }

  private List<String> drawn() {
    for (List<Table.Cell> row : table.rows()) {
      row.forEach(this::draw);
    }
    return lines();
  }

  private int inner(Table.Cell cell) {
    int width = 3 * (cell.columnSpan() - 1);
    for (int i = 0; i < cell.columnSpan(); i++) {
      width += widths[cell.column() + i];
    }
    return width;
  }

  private int[] heights() {
    int[] heights = new int[table.rows().size()];
    Arrays.fill(heights, 1);
    for (Map.Entry<Table.Cell, List<String>> entry : texts.entrySet()) {
      Table.Cell cell = entry.getKey();
      if (cell.rowSpan() == 1) {
        heights[cell.row()] = Math.max(heights[cell.row()], entry.getValue().size());
      }
    }
    for (List<Table.Cell> row : table.rows()) {
      for (Table.Cell cell : row) {
        stretch(heights, cell);
      }
    }
    return heights;
  }

  /** Cells over several rows make their last row higher when they need it. */
  private void stretch(int[] heights, Table.Cell cell) {
    int height = cell.rowSpan() - 1;
    int last = cell.row() + cell.rowSpan() - 1;
    for (int row = cell.row(); row <= last; row++) {
      height += heights[row];
    }
    heights[last] += Math.max(0, texts.get(cell).size() - height);
  }

  private int[] tops(int[] heights) {
    int[] positions = new int[heights.length + 1];
    for (int row = 0; row < heights.length; row++) {
      positions[row + 1] = positions[row] + heights[row] + (hasLine(row) ? 1 : 0);
    }
    return positions;
  }

  /** Whether there is a line above a row. */
  private boolean hasLine(int row) {
    boolean lined = row < table.headerRows() ? linedHeader : linedBody;
    return lined || row == 0 || row == table.headerRows() || row == table.rows().size();
  }

  private void draw(Table.Cell cell) {
    int top = tops[cell.row()];
    int bottom = tops[cell.row() + cell.rowSpan()];
    int left = lefts[cell.column()];
    int right = lefts[cell.column() + cell.columnSpan()];
    for (int x = left; x <= right; x++) {
      horizontal[top][x] |= hasLine(cell.row());
      horizontal[bottom][x] |= hasLine(cell.row() + cell.rowSpan());
    }
    for (int y = top; y <= bottom; y++) {
      vertical[y][left] = true;
      vertical[y][right] = true;
    }
    int y = top + (hasLine(cell.row()) ? 1 : 0);
    for (String line : texts.get(cell)) {
      write(TextLines.aligned(line, inner(cell), cell.alignment()), y++, left + 2);
    }
  }

  private void write(String line, int y, int start) {
    int x = start;
    int last = start;
    for (int i = 0; i < line.length(); i += Character.charCount(line.codePointAt(i))) {
      int character = line.codePointAt(i);
      int width = TextWidth.of(character);
      if (width == 0) {
        // A mark on the letter before it.
        canvas[y][last] = (canvas[y][last] == null ? "" : canvas[y][last])
            + Character.toString(character);
        continue;
      }
      canvas[y][x] = Character.toString(character);
      if (width == 2) {
        canvas[y][x + 1] = "";
      }
      last = x;
      x += width;
    }
  }

  private List<String> lines() {
    List<String> lines = new ArrayList<>();
    int headerLine = table.headerRows() == 0 ? -1 : tops[table.headerRows()];
    for (int y = 0; y < canvas.length; y++) {
      StringBuilder line = new StringBuilder();
      for (int x = 0; x < canvas[y].length; x++) {
        line.append(at(x, y, y == headerLine));
      }
      lines.add(line.toString().stripTrailing());
    }
    return lines;
  }

  private String at(int x, int y, boolean headerLine) {
    if (horizontal[y][x]) {
      return vertical[y][x] ? "+" : Character.toString(headerLine ? HEADER_LINE : '-');
    }
    if (vertical[y][x]) {
      return "|";
    }
    return canvas[y][x] == null ? " " : canvas[y][x];
  }
}
