// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Objects;

/** Tables made by hand, of the columns that the reader of CSV makes. */
public final class Data {
  private final List<Column> columns = new ArrayList<>();

  /** Numbers; NaN for a missing one. */
  public Data numbers(String name, double... values) {
    columns.add(new NumberColumn(name, values.clone()));
    return this;
  }

  /** Times as ISO date-times such as 2024-01-31T00:00; null for a missing one. */
  public Data times(String name, String... values) {
    double[] millis = Arrays.stream(values).mapToDouble(text -> text == null ? Double.NaN
        : LocalDateTime.parse(text).toInstant(ZoneOffset.UTC).toEpochMilli()).toArray();
    return millis(name, millis);
  }

  public Data millis(String name, double... values) {
    columns.add(new TimeColumn(name, values.clone()));
    return this;
  }

  /** Categories; null for a missing one. */
  public Data texts(String name, String... values) {
    List<String> categories = Arrays.stream(values).filter(Objects::nonNull).distinct().toList();
    int[] codes =
        Arrays.stream(values).mapToInt(v -> v == null ? -1 : categories.indexOf(v)).toArray();
    columns.add(new CategoryColumn(name, codes, categories));
    return this;
  }

  public Table table() {
    return new Table(columns, columns.isEmpty() ? 0 : columns.get(0).size());
  }
}
