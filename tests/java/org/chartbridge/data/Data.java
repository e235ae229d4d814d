// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashSet;
import java.util.List;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;

/** Tables made by hand. */
final class Data {
  private final List<Column> columns = new ArrayList<>();

  /** Numbers; NaN for a missing one. */
  Data numbers(String name, double... values) {
    columns.add(new Numeric(name, ColumnKind.NUMBER, values.clone()));
    return this;
  }

  /** Times as ISO date-times such as 2024-01-31T00:00; null for a missing one. */
  Data times(String name, String... values) {
    double[] millis = Arrays.stream(values).mapToDouble(text -> text == null ? Double.NaN
        : LocalDateTime.parse(text).toInstant(ZoneOffset.UTC).toEpochMilli()).toArray();
    return millis(name, millis);
  }

  Data millis(String name, double... values) {
    columns.add(new Numeric(name, ColumnKind.TIME, values.clone()));
    return this;
  }

  /** Categories; null for a missing one. */
  Data texts(String name, String... values) {
    columns.add(new Text(name, values.clone()));
    return this;
  }

  Table table() {
    return new Table(columns, columns.isEmpty() ? 0 : columns.get(0).size());
  }

  private record Numeric(String name, ColumnKind kind, double[] values) implements Column {
    @Override
    public int size() {
      return values.length;
    }

    @Override
    public boolean isMissing(int row) {
      return Double.isNaN(values[row]);
    }

    @Override
    public double number(int row) {
      return values[row];
    }

    @Override
    public int category(int row) {
      throw new IllegalStateException(name + " holds no categories");
    }

    @Override
    public List<String> categories() {
      throw new IllegalStateException(name + " holds no categories");
    }

    @Override
    public String text(int row) {
      return isMissing(row) ? "" : Formats.plain(values[row]);
    }
  }

  private static final class Text implements Column {
    private final String name;
    private final int[] codes;
    private final List<String> categories;

    Text(String name, String[] values) {
      this.name = name;
      LinkedHashSet<String> distinct = new LinkedHashSet<>();
      for (String value : values) {
        if (value != null) {
          distinct.add(value);
        }
      }
      categories = List.copyOf(distinct);
      java.util.Map<String, Integer> index = new java.util.HashMap<>();
      for (String category : categories) {
        index.put(category, index.size());
      }
      codes = Arrays.stream(values).mapToInt(v -> v == null ? -1 : index.get(v)).toArray();
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
      throw new IllegalStateException(name + " holds no numbers");
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
      return isMissing(row) ? "" : categories.get(codes[row]);
    }
  }
}
