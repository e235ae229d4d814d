// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.Set;
import org.chartbridge.chart.Chart;

/**
 * A chart that was read from the graph language, and what its text says about it.
 *
 * @param chart the chart
 * @param said the paths of everything that the text gives a value, such as {@code
 *     elements[0].opacity}, also when it would hold anyway
 */
public record GraphReading(Chart chart, Set<String> said) {
  public GraphReading {
    said = Set.copyOf(said);
  }
}
