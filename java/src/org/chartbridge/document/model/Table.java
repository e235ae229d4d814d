// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/**
 * A table. Every place of its grid belongs to exactly one cell.
 *
 * @param caption the caption, or null
 * @param columns its columns, at least one
 * @param headerRows how many of the rows are the header
 * @param rows the cells that begin in each row, from left to right
 */
public record Table(String caption, List<Column> columns, int headerRows, List<List<Cell>> rows)
    implements Block {
  /**
   * A column.
   *
   * @param alignment of its cells, unless they have one of their own
   * @param width its share of the table's width in percent; 0 for what its texts need
   */
  public record Column(Alignment alignment, double width) {}

  /**
   * A cell.
   *
   * @param row the row that it begins in, from 0
   * @param column the column that it begins in, from 0
   * @param header whether it names what stands beside or below it
   */
  public record Cell(int row, int column, int rowSpan, int columnSpan, Alignment alignment,
      boolean header, List<Inline> text) {
    public Cell {
      text = List.copyOf(text);
    }
  }

  public Table {
    columns = List.copyOf(columns);
    rows = rows.stream().map(List::copyOf).toList();
  }

  @Override
  public void accept(BlockVisitor visitor) {
    visitor.table(this);
  }
}
