// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/** How the texts of a data column are read. */
public enum ColumnKind {
  /** Decimal numbers with a point; an exponent is allowed. */
  NUMBER,
  /** Labels; every distinct text is a category. */
  CATEGORY,
  /** Points in time: ISO 8601 dates and date-times, or texts of the column's own pattern. */
  TIME
}
