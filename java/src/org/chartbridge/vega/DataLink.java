// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.net.URI;
import java.net.URISyntaxException;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;

/** How a document refers to its data: by a URL relative to itself, so that both can be moved. */
public final class DataLink {
  private DataLink() {}

  /**
   * @param document the file of the document
   * @param data the file of its data
   * @throws ChartException when both are one
   */
  public static String between(Path document, Path data) {
    Path from = document.toAbsolutePath().normalize();
    Path to = data.toAbsolutePath().normalize();
    if (from.equals(to)) {
      throw new ChartException("The JSON path \"" + data
          + "\" is the chart's own file; its data need a file of their own.");
    }
    Path folder = from.getParent();
    String path = (folder == null ? to : folder.relativize(to)).toString();
    try {
      // A colon in the first part would be taken for the end of a scheme.
      boolean colon = path.split("/", 2)[0].indexOf(':') >= 0;
      return new URI(null, null, colon ? "./" + path : path, null).toASCIIString();
    } catch (URISyntaxException e) {
      throw new ChartException(
          "The JSON path \"" + data + "\" has no form as a URL: " + e.getReason() + ".", e);
    }
  }
}
