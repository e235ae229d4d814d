// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** How the rows that fall on one mark are summed up. */
public enum Aggregate {
  /** Every row is its own mark. */
  NONE, COUNT, SUM, MEAN, MEDIAN, MIN, MAX
}
