// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlEncoding;

/** Reads charts that are written in the graph language. */
public final class GraphLanguage {
  /** Charts are written by hand; a larger text is a mistake or an attack. */
  public static final int MAX_BYTES = 1 << 20;

  private GraphLanguage() {}

  /**
   * Reads a chart.
   *
   * @param source the text in UTF-8, with or without a byte order mark, with any kind of line ends
   * @throws GraphLanguageException when there are mistakes in it; the message has line, column,
   *     what was found and what was expected
   * @throws ChartException when it is no UTF-8 text, or larger than {@link #MAX_BYTES}
   */
  public static Chart read(byte[] source) {
    return parse(source).chart();
  }

  /** Reads a chart as {@link #read} does, together with what the text says. */
  public static GraphReading parse(byte[] source) {
    if (source.length > MAX_BYTES) {
      throw new ChartException("the chart has " + source.length + " bytes; at most "
          + MAX_BYTES + " are accepted");
    }
    return new GraphParser(XmlEncoding.decodeUtf8(source)).parse();
  }
}
