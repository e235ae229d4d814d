// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

/** The rows of one mark, summed up. Values that the element does not show are NaN. */
final class Group {
  int panel;
  double x;
  double y;
  /** Index of a categorical colour; 0 when there is none. */
  int color;
  /** Place on a colour scale. */
  double colorValue = Double.NaN;
  double size = Double.NaN;
  String label;
  int rows;
  int firstRow;

  double position(boolean horizontal) {
    return horizontal ? y : x;
  }

  double measure(boolean horizontal) {
    return horizontal ? x : y;
  }
}
