// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import com.tesk.charteditor.template.ApplyTemplate;
import java.nio.charset.StandardCharsets;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartReader;
import org.chartbridge.format.ChartSource;
import org.chartbridge.format.ChartUpgrade;
import org.chartbridge.format.GraphConversion;
import org.chartbridge.xml.XmlEncoding;

/** Reads charts together with the templates that they name. */
public final class TemplatedChart {
  private TemplatedChart() {}

  /**
   * Reads a chart. When it names a template, the template of that name is looked up in the folders
   * of the system property {@code chartbridge.templates}, checked, and applied by native code.
   *
   * @param bytes chart XML of any known version and encoding, or graph-language text in UTF-8
   * @return the chart, which names no template any more
   * @throws ChartException when the chart or the template cannot be read or do not go together, the
   *     template is not there, or the process has no native code to apply it
   */
  public static Chart read(byte[] bytes) {
    Chart chart = ChartSource.read(bytes);
    if (chart.template() == null) {
      return chart;
    }
    String name = chart.template();
    byte[] template = template(chart);
    try {
      TemplateCheck.check(template);
    } catch (ChartException e) {
      throw new ChartException("The template \"" + name + "\": " + e.getMessage(), e);
    }
    Chart merged = merged(apply(name, xml(bytes), XmlEncoding.decode(template)), name);
    return merged.withPlaces(chart.places().only(TemplatedChart::isOfChartAlone));
  }

  private static byte[] template(Chart chart) {
    try {
      return TemplateFolders.read(chart.template());
    } catch (ChartException e) {
      throw chart.error("template", e.getMessage(), e);
    }
  }

  /** What no template can give, so that it stands in the chart's own text. */
  private static boolean isOfChartAlone(String path) {
    return path.startsWith("elements") || path.startsWith("columns") || path.startsWith("facet");
  }

  /**
   * The chart as it is written: what it says counts, even when it says what would hold anyway, and
   * a chart that has been read no longer tells the two apart.
   */
  private static String xml(byte[] bytes) {
    return XmlEncoding.decode(
        ChartSource.isXml(bytes) ? ChartUpgrade.upgrade(bytes) : GraphConversion.toXml(bytes));
  }

  private static String apply(String name, String chart, String template) {
    String merged;
    try {
      merged = ApplyTemplate.apply(chart, template);
    } catch (UnsatisfiedLinkError e) {
      throw new ChartException("The template \"" + name
          + "\" cannot be applied: the host has not bound the native method of "
          + ApplyTemplate.class.getName() + ".", e);
    }
    if (merged == null || merged.isEmpty()) {
      throw new ChartException("The template \"" + name
          + "\" cannot be applied: the host's native code did not give back a chart.");
    }
    return merged;
  }

  /** Chart and template are right each by itself, so what is wrong now lies between them. */
  private static Chart merged(String xml, String name) {
    try {
      return ChartReader.read(xml.getBytes(StandardCharsets.UTF_8));
    } catch (ChartException e) {
      String reason = e.getMessage().replaceFirst("^line [0-9]+, column [0-9]+: ", "");
      throw new ChartException(
          "The chart does not go together with the template \"" + name + "\": " + reason, e);
    }
  }
}
