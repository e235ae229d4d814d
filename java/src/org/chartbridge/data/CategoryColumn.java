// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.List;
import org.chartbridge.chart.ColumnKind;

/** Labels as indices into their distinct texts; -1 where one is missing. */
final class CategoryColumn implements Column {
  private final String name;
  private final int[] codes;
  private final List<String> categories;

  CategoryColumn(String name, int[] codes, List<String> categories) {
    this.name = name;
    this.codes = codes;
    this.categories = categories;
  }

  @Override
  public String name() {
    return name;
  }

  @Override
  public ColumnKind kind() {
    return ColumnKind.CATEGORY;
  }

  @Override
  public int size() {
    return codes.length;
  }

  @Override
  public boolean isMissing(int row) {
    return codes[row] < 0;
  }

  @Override
  public double number(int row) {
    throw new UnsupportedOperationException("column \"" + name + "\" holds labels");
  }

  @Override
  public int category(int row) {
    return codes[row];
  }

  @Override
  public List<String> categories() {
    return categories;
  }

  @Override
  public String text(int row) {
    return codes[row] < 0 ? "" : categories.get(codes[row]);
  }
}
