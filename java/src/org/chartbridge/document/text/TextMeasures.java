// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.ColumnWidths;
import org.chartbridge.document.export.LineBreaks;
import org.chartbridge.document.model.Table;

/**
 * How wide the texts of cells are in columns of a terminal.
 *
 * @param detail where they may be broken
 */
record TextMeasures(Locale language, LineBreaks.Detail detail) implements ColumnWidths.Needs {
  /** A border and a blank on either side. */
  static final int BORDER = 3;

  @Override
  public double piece(Table.Cell cell) {
    return widest(cell, detail);
  }

  @Override
  public double word(Table.Cell cell) {
    return widest(cell, LineBreaks.Detail.WORDS);
  }

  @Override
  public double line(Table.Cell cell) {
    int widest = 0;
    for (String line : MarkedText.plain(cell.text()).split("\n")) {
      widest = Math.max(widest, TextWidth.of(line));
    }
    return widest;
  }

  private int widest(Table.Cell cell, LineBreaks.Detail pieces) {
    int widest = 0;
    for (String line : MarkedText.plain(cell.text()).split("\n")) {
      for (String piece : new LineBreaks(line, language).pieces(pieces)) {
        widest = Math.max(widest, TextWidth.of(piece.stripTrailing()));
      }
    }
    return widest;
  }

  /** What each column needs at least, with its border. */
  double[] least(Table table) {
    return Arrays.stream(whole(ColumnWidths.columns(table, this::piece, BORDER)))
        .map(width -> width + BORDER).toArray();
  }

  /** Cells over several columns ask for parts of characters. */
  private static double[] whole(double[] widths) {
    return Arrays.stream(widths).map(width -> Math.max(1, Math.ceil(width))).toArray();
  }

  /** The columns of a table that is at most that wide if it can be, without borders. */
  int[] widths(Table table, int available) {
    int columns = table.columns().size();
    double room = Math.max(columns, available - BORDER * columns - 1);
    double[] exact = ColumnWidths.of(table, this, BORDER, room);
    double[] least = whole(ColumnWidths.columns(table, this::piece, BORDER));
    int[] widths = new int[columns];
    for (int i = 0; i < columns; i++) {
      widths[i] = (int) Math.max(least[i], Math.floor(exact[i]));
    }
    return widths;
  }

  /** The text of a cell in lines of a width. */
  List<String> lines(Table.Cell cell, int width) {
    return TextLines.wrap(MarkedText.plain(cell.text()), width, language, detail);
  }
}
