// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.nio.charset.StandardCharsets;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.language.GraphLanguage;
import org.chartbridge.xml.XmlEncoding;

/**
 * Reads charts of either notation: chart XML or the graph language, told apart by what they start
 * with.
 */
public final class ChartSource {
  private ChartSource() {}

  /**
   * Reads a chart.
   *
   * @param bytes chart XML of any known version and encoding, or graph-language text in UTF-8
   * @throws ChartException when it is neither, or makes no sense; the message says where and what
   *     is expected
   */
  public static Chart read(byte[] bytes) {
    if (bytes.length == 0) {
      throw new ChartException("the chart is empty");
    }
    return isXml(bytes) ? ChartReader.read(bytes) : GraphLanguage.read(bytes);
  }

  /**
   * Whether the first character that is no space is {@code <}, which no graph-language text can
   * start with.
   */
  public static boolean isXml(byte[] bytes) {
    if (isUtf16(bytes)) {
      return true;
    }
    int start = XmlEncoding.byteOrderMark(bytes) == StandardCharsets.UTF_8 ? 3 : 0;
    for (int i = start; i < bytes.length; i++) {
      if (!Character.isWhitespace(bytes[i])) {
        return bytes[i] == '<';
      }
    }
    return false;
  }

  /** The graph language is always UTF-8, so text in UTF-16 can only be XML. */
  private static boolean isUtf16(byte[] bytes) {
    boolean marked = XmlEncoding.byteOrderMark(bytes) != null
        && XmlEncoding.byteOrderMark(bytes) != StandardCharsets.UTF_8;
    return marked || XmlEncoding.wideWithoutMark(bytes) != null;
  }
}
