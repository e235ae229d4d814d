// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.List;
import org.chartbridge.chart.ChartException;

/** What a check found. Its message is the first finding. */
public final class FindingsException extends ChartException {
  private static final long serialVersionUID = 1L;

  private final String lines;

  FindingsException(List<String> findings) {
    super(findings.get(0));
    lines = String.join("\n", findings);
  }

  /** All findings, one a line. */
  public String lines() {
    return lines;
  }
}
