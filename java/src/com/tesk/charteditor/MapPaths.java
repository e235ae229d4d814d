// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import java.nio.file.Path;
import java.util.Locale;
import org.chartbridge.chart.ChartException;

/** The files of an image map that stand beside its picture. */
record MapPaths(Path html, Path json) {
  private static final String HTML = ".html";
  private static final String JSON = ".json";

  /**
   * @throws ChartException when the picture itself has one of the endings that its map needs
   */
  static MapPaths of(Path picture) {
    Path last = picture.getFileName();
    if (last == null) {
      throw new ChartException("Cannot write \"" + picture + "\": it is a folder.");
    }
    String name = last.toString();
    String lower = name.toLowerCase(Locale.ROOT);
    if (lower.endsWith(HTML) || lower.endsWith(JSON)) {
      throw new ChartException("Cannot write \"" + picture
          + "\": the picture of an image map needs a name such as chart.png;"
          + " its map gets the endings .html and .json.");
    }
    int dot = name.lastIndexOf('.');
    String stem = dot > 0 ? name.substring(0, dot) : name;
    return new MapPaths(picture.resolveSibling(stem + HTML), picture.resolveSibling(stem + JSON));
  }
}
