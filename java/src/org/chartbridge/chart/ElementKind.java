// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** The marks that a chart can be built from. */
public enum ElementKind {
  BAR, LINE, AREA, POINT, HISTOGRAM, BOX, PIE, HEATMAP
}
