// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** The side of the plot on which the legend stands. */
public enum LegendPosition {
  RIGHT, BOTTOM, TOP, LEFT, NONE
}
