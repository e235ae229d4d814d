// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * The texts around the plot; each is null when the chart has none.
 *
 * @param title the main title
 * @param subtitle a second, quieter line below the title
 * @param caption a small line below the plot, for the source of the data
 */
public record Titles(String title, String subtitle, String caption) {
  public static final Titles NONE = new Titles(null, null, null);
}
