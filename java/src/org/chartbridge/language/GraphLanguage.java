// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;

/** Reads the graph language. */
public final class GraphLanguage {
  private GraphLanguage() {}

  public static Chart read(byte[] source) {
    throw new ChartException("the graph language cannot be read yet");
  }
}
