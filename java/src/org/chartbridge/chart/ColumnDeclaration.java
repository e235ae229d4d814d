// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.List;

/**
 * What the chart says about one column of its data. Columns that are not declared are read by what
 * they hold.
 *
 * @param name the name in the header line of the data
 * @param kind how its texts are read
 * @param label the name shown to readers, or null for {@code name}
 * @param pattern for {@link ColumnKind#TIME}, a {@link java.time.format.DateTimeFormatter} pattern,
 *     or null for ISO 8601
 * @param order for {@link ColumnKind#CATEGORY}, the categories that come first, in this order; the
 *     others follow in order of appearance
 */
public record ColumnDeclaration(
    String name, ColumnKind kind, String label, String pattern, List<String> order) {
  public ColumnDeclaration {
    order = List.copyOf(order);
  }
}
