// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.EnumMap;
import java.util.IdentityHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.document.model.Table;

/** How wide the texts of a table are in the weights that they are set in, for a size of 1. */
final class CellMeasures {
  /** A cell's widest pieces, by what may be broken, and its longest line. */
  private static final class Widths {
    private final Map<LineBreaks.Detail, Double> pieces = new EnumMap<>(LineBreaks.Detail.class);
    private double line;
  }

  private final Map<Table.Cell, Widths> cells = new IdentityHashMap<>();
  private final Locale language;

  CellMeasures(Table table, Locale language) {
    this.language = language;
    for (List<Table.Cell> row : table.rows()) {
      for (Table.Cell cell : row) {
        cells.put(cell, measured(cell));
      }
    }
  }

  private Widths measured(Table.Cell cell) {
    StyledText styled = new StyledText(cell.text(), cell.header() ? Typeface.BOLD : 0);
    String text = styled.text();
    Widths widths = new Widths();
    for (LineBreaks.Detail detail : LineBreaks.Detail.values()) {
      widths.pieces.put(detail, 0.0);
    }
    int start = 0;
    for (int i = 0; i <= text.length(); i++) {
      if (i == text.length() || text.charAt(i) == '\n') {
        line(styled, start, i, widths);
        start = i + 1;
      }
    }
    return widths;
  }

  private void line(StyledText styled, int from, int to, Widths widths) {
    widths.line = Math.max(widths.line, styled.width(from, to, language));
    LineBreaks breaks = new LineBreaks(styled.text().substring(from, to), language);
    double widestBefore = 0;
    for (LineBreaks.Detail detail : LineBreaks.Detail.values()) {
      if (detail != LineBreaks.Detail.WORDS && !breaks.hasParts()) {
        widths.pieces.merge(detail, widestBefore, Math::max);
        continue;
      }
      int start = from;
      double widest = 0;
      for (String piece : breaks.pieces(detail)) {
        int length = piece.stripTrailing().length();
        widest = Math.max(widest, styled.width(start, start + length, language));
        start += piece.length();
      }
      widths.pieces.merge(detail, widest, Math::max);
      widestBefore = widest;
    }
  }

  double piece(Table.Cell cell, LineBreaks.Detail detail) {
    return cells.get(cell).pieces.get(detail);
  }

  double line(Table.Cell cell) {
    return cells.get(cell).line;
  }
}
