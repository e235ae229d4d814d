// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.TreeSet;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ScaleKind;

/** Places areas: over each other, or on top of each other. */
final class AreaBuilder {
  private final LayerSource source;
  private final ElementPlan element;

  AreaBuilder(LayerSource source) {
    this.source = source;
    element = source.element();
  }

  List<Layer> layers(List<Group> groups) {
    checkLog(groups);
    List<Layer> layers = new ArrayList<>();
    for (int panel = 0; panel < source.panels().count(); panel++) {
      TreeMap<Integer, List<Group>> byColor = new TreeMap<>();
      for (Group group : groups) {
        if (group.panel == panel) {
          byColor.computeIfAbsent(group.color, key -> new ArrayList<>()).add(group);
        }
      }
      byColor.values().forEach(area -> area.sort(Comparator.comparingDouble(group -> group.x)));
      Arrangement arrangement = element.arrangement();
      boolean stacks = arrangement == Arrangement.STACKED || arrangement == Arrangement.FILLED;
      layers.add(new AreaLayer(source, panel,
          stacks && byColor.size() > 0 && !single(byColor, arrangement)
              ? stacked(byColor, arrangement == Arrangement.FILLED)
              : overlaid(byColor)));
    }
    return layers;
  }

  private static boolean single(Map<Integer, List<Group>> byColor, Arrangement arrangement) {
    return byColor.size() == 1 && arrangement == Arrangement.STACKED;
  }

  private void checkLog(List<Group> groups) {
    boolean several = groups.stream().mapToInt(group -> group.color).distinct().count() > 1;
    Arrangement arrangement = element.arrangement();
    boolean stacks = arrangement == Arrangement.STACKED || arrangement == Arrangement.FILLED;
    if (several && stacks && source.y().kind == ScaleKind.LOG) {
      throw element.error("y",
          "stacked areas cannot be read on a log scale; use arrangement overlaid, "
              + "or scale linear.");
    }
  }

  private static List<List<AreaLayer.Corner>> overlaid(Map<Integer, List<Group>> byColor) {
    List<List<AreaLayer.Corner>> areas = new ArrayList<>();
    for (List<Group> groups : byColor.values()) {
      List<AreaLayer.Corner> run = new ArrayList<>();
      for (Group group : groups) {
        if (Double.isNaN(group.y)) {
          areas.add(run);
          run = new ArrayList<>();
        } else {
          run.add(new AreaLayer.Corner(group, group.x, 0, group.y, Double.NaN));
        }
      }
      areas.add(run);
    }
    areas.removeIf(List::isEmpty);
    return areas;
  }

  private List<List<AreaLayer.Corner>> stacked(Map<Integer, List<Group>> byColor, boolean filled) {
    TreeSet<Double> places = new TreeSet<>();
    for (List<Group> groups : byColor.values()) {
      groups.removeIf(group -> Double.isNaN(group.y));
      for (Group group : groups) {
        if (group.y < 0) {
          throw element.error("y",
              "the value " + Formats.plain(group.y) + " cannot be stacked on others; "
                  + "use arrangement overlaid, or drop the negative values.");
        }
        places.add(group.x);
      }
    }
    byColor.values().removeIf(List::isEmpty);
    double[] x = places.stream().mapToDouble(Double::doubleValue).toArray();
    double[] totals = new double[x.length];
    List<double[]> heights = new ArrayList<>();
    for (List<Group> groups : byColor.values()) {
      double[] height = heights(groups, x);
      heights.add(height);
      for (int i = 0; i < x.length; i++) {
        totals[i] += height[i];
      }
    }
    List<List<AreaLayer.Corner>> areas = new ArrayList<>();
    double[] ground = new double[x.length];
    int color = 0;
    for (List<Group> groups : byColor.values()) {
      areas.add(corners(groups, x, heights.get(color++), ground, filled ? totals : null));
    }
    return areas;
  }

  /**
   * The heights of one colour at every place: between two values of its own on the line between
   * them, beyond them zero.
   */
  private static double[] heights(List<Group> groups, double[] x) {
    double[] heights = new double[x.length];
    int next = 0;
    for (int i = 0; i < x.length; i++) {
      while (next < groups.size() && groups.get(next).x < x[i]) {
        next++;
      }
      if (next == groups.size()) {
        break;
      }
      Group right = groups.get(next);
      if (right.x == x[i]) {
        for (int k = next; k < groups.size() && groups.get(k).x == x[i]; k++) {
          heights[i] += groups.get(k).y;
        }
      } else if (next > 0) {
        Group left = groups.get(next - 1);
        heights[i] = left.y + (right.y - left.y) * (x[i] - left.x) / (right.x - left.x);
      }
    }
    return heights;
  }

  private static List<AreaLayer.Corner> corners(
      List<Group> groups, double[] x, double[] heights, double[] ground, double[] totals) {
    List<AreaLayer.Corner> corners = new ArrayList<>();
    int next = 0;
    for (int i = 0; i < x.length; i++) {
      double whole = totals == null ? 1 : totals[i];
      double height = whole == 0 ? 0 : heights[i] / whole;
      double from = ground[i];
      ground[i] += height;
      Group own = null;
      while (next < groups.size() && groups.get(next).x <= x[i]) {
        own = groups.get(next).x == x[i] ? groups.get(next) : own;
        next++;
      }
      corners.add(new AreaLayer.Corner(
          own, x[i], from, ground[i], totals == null ? Double.NaN : height));
    }
    return corners;
  }
}
