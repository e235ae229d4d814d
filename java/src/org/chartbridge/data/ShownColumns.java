// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.util.LinkedHashMap;
import java.util.Map;
import java.util.Set;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.Element;

/** The columns that a chart shows, and where it first names them. */
final class ShownColumns {
  private final Map<String, String> paths = new LinkedHashMap<>();

  ShownColumns(Chart chart) {
    for (int i = 0; i < chart.elements().size(); i++) {
      Element element = chart.elements().get(i);
      String path = "elements[" + i + "].";
      add(path + "x", element.x());
      add(path + "y", element.y());
      add(path + "color", element.color());
      add(path + "size", element.size());
      add(path + "label", element.label());
    }
    if (chart.facet() != null) {
      paths.putIfAbsent(chart.facet().column(), "facet.column");
    }
  }

  private void add(String path, Channel channel) {
    if (channel != null && channel.column() != null) {
      paths.putIfAbsent(channel.column(), path);
    }
  }

  /** Their names, in the order of the chart. */
  Set<String> names() {
    return paths.keySet();
  }

  /** The part of the chart that first names a shown column. */
  String path(String name) {
    return paths.get(name);
  }
}
