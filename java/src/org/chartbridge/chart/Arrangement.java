// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** Where bars or areas of several colours at one position go. */
public enum Arrangement {
  /** Side by side. */
  GROUPED,
  /** On top of each other. */
  STACKED,
  /** On top of each other, each position scaled to 100 percent. */
  FILLED,
  /** Over each other, from the same baseline. */
  OVERLAID
}
