// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.List;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.Problem;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/**
 * How a histogram looks that is put into a chart.
 *
 * @param fill its colour as {@code #rrggbb}
 * @param opacity from 0 (invisible) to 1
 */
public record HistogramLook(String fill, double opacity) {
  /** Quiet enough to stand behind anything, on white ground and on dark. */
  public static final HistogramLook DEFAULT = new HistogramLook("#999999", 0.5);

  /**
   * Reads a {@code <histogram>} element of the current namespace that has a {@code fill}, an {@code
   * opacity}, both or neither, and nothing inside.
   *
   * @param xml empty or null for the defaults, which also stand in for what is not given
   * @throws ChartException when it is anything else; the message names the look and says where
   */
  public static HistogramLook read(byte[] xml) {
    if (xml == null || xml.length == 0) {
      return DEFAULT;
    }
    try {
      return read(SafeXml.parse(xml));
    } catch (ChartException e) {
      throw new ChartException("The look of the histogram: " + e.getMessage(), e);
    }
  }

  private static HistogramLook read(XmlElement root) {
    String namespace = ChartVersion.CURRENT.namespace;
    if (!root.name().equals("histogram") || !root.namespace().equals(namespace)) {
      throw root.error(
          "found <" + root.name() + ">; expected <histogram xmlns=\"" + namespace + "\">");
    }
    AttributeReader in = new AttributeReader(root);
    String fill = in.text("fill");
    double opacity = in.number("opacity", DEFAULT.opacity);
    in.finish();
    in.children(List.of(), false);
    HistogramLook look = new HistogramLook(fill == null ? DEFAULT.fill : fill, opacity);
    look.check(root);
    return look;
  }

  private void check(XmlElement root) {
    Element sample = Element.histogram(List.of(new Bin(0, 1, 1)), fill, opacity);
    Chart chart = Chart.of(sample);
    for (Problem problem : ChartRules.check(chart)) {
      String attribute = problem.path().substring(problem.path().lastIndexOf('.') + 1);
      throw root.error(attribute, problem.message());
    }
  }
}
