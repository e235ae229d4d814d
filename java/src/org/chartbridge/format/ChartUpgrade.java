// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlWriter;

/** Brings chart XML of an older version to the current one. */
public final class ChartUpgrade {
  private ChartUpgrade() {}

  /**
   * Upgrades a document. Comments are kept.
   *
   * @param xml the document in the encoding of its byte order mark or XML declaration, else in
   *     UTF-8
   * @return the document of the current version in UTF-8; for a document of the current version
   *     {@code xml} itself
   * @throws ChartException when it is no valid chart of a known version; the message starts with
   *     line and column
   */
  public static byte[] upgrade(byte[] xml) {
    XmlElement root = SafeXml.parse(xml);
    ChartReader.read(root);
    if (ChartVersion.of(root) == ChartVersion.CURRENT) {
      return xml;
    }
    return XmlWriter.write(VersionOne.upgrade(root));
  }
}
