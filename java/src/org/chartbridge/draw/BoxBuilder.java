// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;
import org.chartbridge.chart.ScaleKind;

/** Makes the boxes of a box plot from the rows of each position and colour. */
final class BoxBuilder {
  private static final double SLOT = 0.75;
  private static final double SINGLE_SLOT = 0.55;
  private static final double GAP = 0.12;

  private final LayerSource source;
  private final ElementPlan element;
  private final boolean horizontal;

  BoxBuilder(LayerSource source) {
    this.source = source;
    element = source.element();
    horizontal = element.horizontal;
  }

  private record Key(int panel, double position, int color) {}

  List<Layer> layers(List<Group> rows) {
    Map<Key, List<Group>> groups = new LinkedHashMap<>();
    for (Group row : rows) {
      Key key = new Key(row.panel, row.position(horizontal), row.color);
      groups.computeIfAbsent(key, k -> new ArrayList<>()).add(row);
    }
    List<Group> firsts = groups.values().stream().map(list -> list.get(0)).toList();
    Dodge dodge = new Dodge(firsts, horizontal, true);
    double unit = unit(firsts);
    double width = unit * (dodge.count() > 1 ? SLOT : SINGLE_SLOT);
    double gap = dodge.count() > 1 ? width / dodge.count() * GAP / 2 : 0;
    List<List<BoxLayer.Box>> perPanel = new ArrayList<>();
    for (int panel = 0; panel < source.panels().count(); panel++) {
      perPanel.add(new ArrayList<>());
    }
    for (List<Group> group : groups.values()) {
      Group first = group.get(0);
      double position = first.position(horizontal);
      double[] values = group.stream().mapToDouble(row -> row.measure(horizontal)).toArray();
      perPanel.get(first.panel).add(new BoxLayer.Box(first,
          position + dodge.from(first.color, width) + gap,
          position + dodge.to(first.color, width) - gap, Quartiles.of(values)));
    }
    List<Layer> layers = new ArrayList<>();
    for (int panel = 0; panel < perPanel.size(); panel++) {
      layers.add(new BoxLayer(source, panel, perPanel.get(panel)));
    }
    return layers;
  }

  private double unit(List<Group> groups) {
    if (source.positionAxis().kind == ScaleKind.CATEGORY) {
      return 1;
    }
    TreeSet<Double> positions = new TreeSet<>();
    groups.forEach(group -> positions.add(group.position(horizontal)));
    double gap = Double.POSITIVE_INFINITY;
    for (double position : positions) {
      Double next = positions.higher(position);
      gap = next == null ? gap : Math.min(gap, next - position);
    }
    return gap < Double.POSITIVE_INFINITY ? gap : 1;
  }
}
