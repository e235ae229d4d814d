// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.Comparator;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ScaleKind;

/** Places bars: side by side, on top of each other, or over each other. */
final class BarBuilder {
  private static final double SLOT = 0.8;
  private static final double SINGLE_SLOT = 0.7;
  private static final double TIME_UNIT = 86_400_000;

  private final LayerSource source;
  private final ElementPlan element;
  private final boolean horizontal;
  private final boolean log;

  BarBuilder(LayerSource source) {
    this.source = source;
    element = source.element();
    horizontal = element.horizontal;
    log = source.measureAxis().kind == ScaleKind.LOG;
  }

  private record Place(int panel, double position) {}

  /** @param bins the bins of a histogram, or null for bars */
  List<Layer> layers(List<Group> groups, Bins bins) {
    double unit = bins != null ? bins.width() : unit(groups);
    groups.sort(Comparator.comparingInt((Group group) -> group.color));
    checkLog(groups);
    List<BarLayer.Bar> bars = switch (element.arrangement()) {
      case GROUPED -> grouped(groups, unit, bins != null);
      case STACKED -> stacked(groups, unit, bins != null, false);
      case FILLED -> stacked(groups, unit, bins != null, true);
      case OVERLAID -> overlaid(groups, unit, bins != null);
    };
    List<Layer> layers = new ArrayList<>();
    List<List<BarLayer.Bar>> perPanel = BarLayer.byPanel(source.panels().count(), bars);
    for (int panel = 0; panel < perPanel.size(); panel++) {
      layers.add(new BarLayer(source, panel, perPanel.get(panel), bins));
    }
    return layers;
  }

  /** The distance of neighbouring bars, in the units of the axis. */
  private double unit(List<Group> groups) {
    if (source.positionAxis().kind == ScaleKind.CATEGORY) {
      return 1;
    }
    TreeSet<Double> positions = new TreeSet<>();
    groups.forEach(group -> positions.add(group.position(horizontal)));
    double gap = Double.POSITIVE_INFINITY;
    Double before = null;
    for (double position : positions) {
      if (before != null) {
        gap = Math.min(gap, position - before);
      }
      before = position;
    }
    if (gap < Double.POSITIVE_INFINITY) {
      return gap;
    }
    return source.positionAxis().kind == ScaleKind.TIME ? TIME_UNIT : 1;
  }

  private void checkLog(List<Group> groups) {
    if (!log) {
      return;
    }
    Arrangement arrangement = element.arrangement();
    boolean several = groups.stream().mapToInt(group -> group.color).distinct().count() > 1;
    if (several && (arrangement == Arrangement.STACKED || arrangement == Arrangement.FILLED)) {
      throw element.error(element.measureName(), "stacked bars cannot be read on a log scale; use "
          + "arrangement grouped, or scale linear.");
    }
  }

  private List<BarLayer.Bar> grouped(List<Group> groups, double unit, boolean touching) {
    Dodge dodge = new Dodge(groups, horizontal, true);
    double width = touching ? unit : unit * (dodge.count() > 1 ? SLOT : SINGLE_SLOT);
    Map<Object, List<Group>> shares = new HashMap<>();
    for (Group group : groups) {
      Object key = List.of(group.panel, group.position(horizontal), group.color);
      shares.computeIfAbsent(key, k -> new ArrayList<>(1)).add(group);
    }
    List<BarLayer.Bar> bars = new ArrayList<>(groups.size());
    for (List<Group> same : shares.values()) {
      double part = width / dodge.count() / same.size();
      for (int i = 0; i < same.size(); i++) {
        Group group = same.get(i);
        double from = group.position(horizontal) + dodge.from(group.color, width) + i * part;
        bars.add(bar(group, from, from + part, 0, group.measure(horizontal), Double.NaN));
      }
    }
    bars.sort(Comparator.comparingInt((BarLayer.Bar bar) -> bar.group().panel)
        .thenComparingDouble(BarLayer.Bar::p0));
    return bars;
  }

  private List<BarLayer.Bar> stacked(
      List<Group> groups, double unit, boolean touching, boolean filled) {
    double width = touching ? unit : unit * SINGLE_SLOT;
    Map<Place, double[]> totals = new HashMap<>();
    if (filled) {
      total(groups, totals);
    }
    Map<Place, double[]> ends = new HashMap<>();
    List<BarLayer.Bar> bars = new ArrayList<>(groups.size());
    for (Group group : groups) {
      double position = group.position(horizontal);
      Place place = new Place(group.panel, position);
      double whole = filled ? totals.get(place)[0] : 1;
      double value = whole == 0 ? 0 : group.measure(horizontal) / whole;
      double[] end = ends.computeIfAbsent(place, key -> new double[2]);
      int side = value < 0 ? 1 : 0;
      double from = end[side];
      end[side] += value;
      bars.add(bar(group, position - width / 2, position + width / 2, from, end[side],
          filled ? value : Double.NaN));
    }
    return bars;
  }

  private void total(List<Group> groups, Map<Place, double[]> totals) {
    for (Group group : groups) {
      double value = group.measure(horizontal);
      if (value < 0) {
        throw element.error(element.measureName(), "the value " + Formats.plain(value)
            + " has no share of a whole; arrangement filled needs values that are not negative.");
      }
      Place place = new Place(group.panel, group.position(horizontal));
      totals.computeIfAbsent(place, key -> new double[1])[0] += value;
    }
  }

  private List<BarLayer.Bar> overlaid(List<Group> groups, double unit, boolean touching) {
    double width = touching ? unit : unit * SINGLE_SLOT;
    List<Group> order = new ArrayList<>(groups);
    if (!touching) {
      order.sort(Comparator.comparingDouble(group -> -Math.abs(group.measure(horizontal))));
    }
    List<BarLayer.Bar> bars = new ArrayList<>(groups.size());
    for (Group group : order) {
      double position = group.position(horizontal);
      bars.add(bar(group, position - width / 2, position + width / 2, 0,
          group.measure(horizontal), Double.NaN));
    }
    return bars;
  }

  private BarLayer.Bar bar(Group group, double p0, double p1, double v0, double v1, double share) {
    return new BarLayer.Bar(group, p0, p1, v0, v1, share);
  }
}
