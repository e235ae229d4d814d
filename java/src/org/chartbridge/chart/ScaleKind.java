// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** How an axis maps values to positions. */
public enum ScaleKind {
  /** Chosen by the kind of the column that is shown: linear, time or category. */
  AUTO, LINEAR, LOG, TIME, CATEGORY
}
