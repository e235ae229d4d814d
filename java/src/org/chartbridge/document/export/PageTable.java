// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.awt.Font;
import java.awt.font.FontRenderContext;
import java.util.Arrays;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;

/** The measures of a table on a page, in points. */
public final class PageTable {
  /** The family that tables are set in. */
  public static final String FAMILY = "Liberation Sans";

  /** The size that tables are set in. */
  public static final double SIZE = 9;

  /** Left and right of the text of a cell. */
  public static final double PADDING = 5;

  private static final FontRenderContext METRICS = new FontRenderContext(null, true, true);
  private static final Font BOLD = new Font(FAMILY, Font.BOLD, 1).deriveFont((float) SIZE);
  private static final double POINTS_PER_PIXEL = 0.75;
  /** A line that fits exactly by Java's metrics might not by those of others. */
  private static final double TOLERANCE = 1.5;

  private static final int SHORT = 12;

  private final double[] texts;

  public PageTable(Table table, Paper paper) {
    double padding = 2 * PADDING;
    double room = paper.textWidth() * POINTS_PER_PIXEL - padding * table.columns().size();
    texts = ColumnWidths.of(table,
        cell -> Arrays.asList(PlainText.of(cell.text(), '\n').split("\n")), PageTable::width,
        padding, Math.max(room, 1));
  }

  /** As wide as in bold letters, so that whatever part of a text is bold, it fits. */
  private static double width(String text) {
    return text.isEmpty() ? 0 : BOLD.getStringBounds(text, METRICS).getWidth() + TOLERANCE;
  }

  /** Whether the table is not split between pages, if it fits on one. */
  public static boolean isShort(Table table) {
    return table.rows().size() <= SHORT;
  }

  /** The width of a column, with the padding of its cells. */
  public double column(int index) {
    return texts[index] + 2 * PADDING;
  }

  public double width() {
    double sum = 0;
    for (int i = 0; i < texts.length; i++) {
      sum += column(i);
    }
    return sum;
  }

  /** So many characters fit into a cell without a break; words that are longer may be broken. */
  public int longestWord(Table.Cell cell) {
    double room = 2 * PADDING * (cell.columnSpan() - 1);
    for (int i = 0; i < cell.columnSpan(); i++) {
      room += texts[cell.column() + i];
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
