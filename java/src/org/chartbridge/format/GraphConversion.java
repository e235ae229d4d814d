// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import org.chartbridge.chart.ChartException;
import org.chartbridge.language.GraphLanguage;
import org.chartbridge.language.GraphReading;

/** Turns the graph language into chart XML. */
public final class GraphConversion {
  private GraphConversion() {}

  /**
   * The chart XML of a text. It says what the text says and nothing else: a setting that the text
   * gives is there even when it is the default, and one that it leaves open stays open, so that a
   * chart template or a style sheet sees the same as the person who wrote the text.
   *
   * @param source the text in UTF-8
   * @return the document in UTF-8
   * @throws ChartException when there are mistakes in the text
   */
  public static byte[] toXml(byte[] source) {
    GraphReading text = GraphLanguage.parse(source);
    return new ChartWriter(text.said()::contains).document(text.chart());
  }
}
