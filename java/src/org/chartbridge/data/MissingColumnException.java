// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import org.chartbridge.chart.ChartException;

/** Data that lack a column. */
final class MissingColumnException extends ChartException {
  private static final long serialVersionUID = 1L;

  private final String column;

  MissingColumnException(String column, String message) {
    super(message);
    this.column = column;
  }

  /** The name of the column that is not there. */
  String column() {
    return column;
  }
}
