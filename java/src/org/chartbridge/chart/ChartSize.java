// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * The chart's own size.
 *
 * @param width width in pixels at 100 percent
 * @param height height in pixels at 100 percent
 */
public record ChartSize(int width, int height) {
  public static final ChartSize DEFAULT = new ChartSize(800, 600);
}
