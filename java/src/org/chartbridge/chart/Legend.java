// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * The legend.
 *
 * @param position where it stands; null for the right side when there is more than one colour, else
 *     none
 * @param title its title, or null for the label of the column
 */
public record Legend(LegendPosition position, String title) {
  public static final Legend DEFAULT = new Legend(null, null);
}
