// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * A chart that cannot be read or drawn. The message is for the person who wrote the chart: it names the element, the column or
 * the line, and what would be right.
 */
public class ChartException extends RuntimeException {
  private static final long serialVersionUID = 1L;

  public ChartException(String message) {
    super(message);
  }

  public ChartException(String message, Throwable cause) {
    super(message, cause);
  }
}
