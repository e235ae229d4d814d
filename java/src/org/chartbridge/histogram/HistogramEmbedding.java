// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.histogram;

import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.Problem;
import org.chartbridge.format.ChartSource;
import org.chartbridge.format.ChartWriter;
import org.chartbridge.format.HistogramLook;

/** Puts a histogram that was counted elsewhere behind the elements of a chart. */
public final class HistogramEmbedding {
  private HistogramEmbedding() {}

  /**
   * Embeds a histogram.
   *
   * @param chart chart XML of any known version, or graph language
   * @param look how the histogram looks, as {@link HistogramLook} reads it; empty for the defaults
   * @param numbers {@code count + 1} ascending edges of bins, then {@code count} heights, IEEE 754
   *     doubles in the machine's own byte order, from the buffer's position to its limit; direct or
   *     not, and left as it is
   * @param count how many bins
   * @return chart XML of the current version with the histogram as its bottom layer
   * @throws ChartException when one of them cannot be read, or the chart has no place for the
   *     histogram
   */
  public static byte[] embed(byte[] chart, byte[] look, ByteBuffer numbers, int count) {
    Chart read = ChartSource.read(chart);
    HistogramLook wanted = HistogramLook.read(look);
    Element histogram =
        Element.histogram(HistogramNumbers.read(numbers, count), wanted.fill(), wanted.opacity());
    List<Element> elements = new ArrayList<>();
    elements.add(histogram);
    elements.addAll(read.elements());
    Chart embedded = read.withElements(elements);
    for (Problem problem : ChartRules.check(embedded)) {
      throw new ChartException("The chart has no place for a histogram: " + problem.message());
    }
    return ChartWriter.write(embedded);
  }
}
