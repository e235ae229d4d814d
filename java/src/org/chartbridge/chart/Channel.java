// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * What one visual property of an element shows.
 *
 * @param column the data column; null only for {@link Aggregate#COUNT}, which needs none
 * @param aggregate how the rows of one mark are summed up
 */
public record Channel(String column, Aggregate aggregate) {
  public static Channel of(String column) {
    return new Channel(column, Aggregate.NONE);
  }

  public static Channel count() {
    return new Channel(null, Aggregate.COUNT);
  }
}
