// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.util.List;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;

/** A column of one row with a harmless value, in place of data that a template has not got. */
record StandInColumn(String name, ColumnKind kind) implements Column {
  private static final String CATEGORY = "A";

  @Override
  public int size() {
    return 1;
  }

  @Override
  public boolean isMissing(int row) {
    return false;
  }

  @Override
  public double number(int row) {
    return kind == ColumnKind.NUMBER ? 1 : 0;
  }

  @Override
  public int category(int row) {
    return 0;
  }

  @Override
  public List<String> categories() {
    return List.of(CATEGORY);
  }

  @Override
  public String text(int row) {
    return kind == ColumnKind.CATEGORY ? CATEGORY : String.valueOf(number(row));
  }
}
