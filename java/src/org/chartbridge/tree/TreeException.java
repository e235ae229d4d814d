// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import org.chartbridge.chart.ChartException;

/**
 * A tree model, its display data or its sample records that cannot be used; the message says what
 * and where.
 */
public class TreeException extends ChartException {
  private static final long serialVersionUID = 1L;

  public TreeException(String message) {
    super(message);
  }

  public TreeException(String message, Throwable cause) {
    super(message, cause);
  }
}
