// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.XmlElement;

/** The versions of the chart XML. The namespace says which one a document is. */
enum ChartVersion {
  V1("urn:chartbridge:chart:1", "chart-format-1.xsd"),
  V2("urn:chartbridge:chart:2", "chart-format.xsd");

  static final ChartVersion CURRENT = V2;

  private static final Pattern NAMESPACE = Pattern.compile("urn:chartbridge:chart:([0-9]+)");

  final String namespace;
  final SchemaCheck schema;

  ChartVersion(String namespace, String schemaFile) {
    this.namespace = namespace;
    this.schema = new SchemaCheck(schemaFile);
  }

  /**
   * The version of a document.
   *
   * @throws ChartException when it is no chart, or of a version that is not known here
   */
  static ChartVersion of(XmlElement root) {
    String expected = "expected <chart xmlns=\"" + CURRENT.namespace + "\">";
    if (!root.name().equals("chart")) {
      throw root.error("found <" + root.name() + ">, which is not a chart; " + expected);
    }
    for (ChartVersion version : values()) {
      if (version.namespace.equals(root.namespace())) {
        return version;
      }
    }
    Matcher other = NAMESPACE.matcher(root.namespace());
    if (other.matches()) {
      throw root.error(
          "the chart is of version " + other.group(1) + "; versions 1 and 2 are known here");
    }
    if (root.namespace().isEmpty()) {
      throw root.error("<chart> has no namespace; " + expected);
    }
    throw root.error("<chart> has the namespace \"" + root.namespace() + "\"; " + expected);
  }
}
