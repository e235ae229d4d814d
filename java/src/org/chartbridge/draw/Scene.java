// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;

/** Everything that a picture shows, summed up from the data but not yet placed. */
final class Scene {
  final Plan plan;
  final List<ElementPlan> elements = new ArrayList<>();
  final AxisData x;
  final AxisData y;
  final Panels panels;
  final Inks inks;
  /** For each panel its layers, the first at the bottom. */
  final List<List<Layer>> layers = new ArrayList<>();
  /** The pie; null when the chart has axes. */
  final PieDrawing pie;
  final LegendBox legend;

  Scene(Plan plan) {
    this.plan = plan;
    if (plan.chart.elements().isEmpty()) {
      throw new ChartException("The chart has no element; add one, for example a bar.");
    }
    if (plan.table.rowCount() == 0 && plan.chart.showsData()) {
      throw plan.chart.error("elements[0]", "Element 1 ("
          + plan.chart.elements().get(0).kind().name().toLowerCase(java.util.Locale.ROOT)
          + ") has nothing to draw: the data has no rows.");
    }
    for (Element element : plan.chart.elements()) {
      elements.add(new ElementPlan(plan, elements.size(), element));
    }
    checkPie();
    assignColors();
    x = new AxisData(plan, elements, true);
    y = new AxisData(plan, elements, false);
    panels = Panels.of(plan);
    inks = new Inks(plan);
    for (int panel = 0; panel < panels.count(); panel++) {
      layers.add(new ArrayList<>());
    }
    Map<ElementPlan, PointLayer.SizeScale> sizes = new LinkedHashMap<>();
    PieDrawing slices = null;
    for (ElementPlan element : elements) {
      LayerSource source = new LayerSource(plan, element, x, y, panels, inks);
      if (element.kind == ElementKind.PIE) {
        slices = new PieDrawing(source);
        continue;
      }
      LayerFactory factory = new LayerFactory(source);
      List<Layer> made = factory.layers();
      for (int panel = 0; panel < made.size(); panel++) {
        layers.get(panel).add(made.get(panel));
      }
      collectBarColors(element, made);
      if (factory.sizes() != null) {
        sizes.put(element, factory.sizes());
      }
    }
    pie = slices;
    legend = new LegendBuilder(plan, inks, elements, sizes).build();
  }

  private static void collectBarColors(ElementPlan element, List<Layer> made) {
    if (element.kind != ElementKind.BAR || element.colors == null || !element.colors.continuous) {
      return;
    }
    for (Layer layer : made) {
      if (layer instanceof BarLayer bars) {
        bars.bars().forEach(bar -> element.colors.extent.add(bar.group().colorValue));
      }
    }
  }

  private void checkPie() {
    for (ElementPlan element : elements) {
      if (element.kind == ElementKind.PIE && elements.size() > 1) {
        throw element.error(
            " cannot share a plot with other elements; give it a chart of its own.");
      }
    }
  }

  /**
   * Elements that colour by the same column share its colours; those without colours differ by
   * what they measure.
   */
  private void assignColors() {
    Map<Object, ColorAssignment> known = new LinkedHashMap<>();
    int taken = 0;
    for (ElementPlan element : elements) {
      Channel color = element.element.color();
      if (color == null) {
        continue;
      }
      Object key =
          List.of(Objects.toString(color.column()), color.aggregate(), element.continuousColor());
      boolean isNew = !known.containsKey(key);
      element.colors = known.computeIfAbsent(key, k -> new ColorAssignment(plan, element));
      taken += isNew ? element.colors.labels.size() : 0;
    }
    Map<String, Integer> series = new LinkedHashMap<>();
    for (ElementPlan element : elements) {
      if (element.colors == null && element.fill == null) {
        String key = LegendBuilder.seriesKey(plan, element);
        series.putIfAbsent(key, taken + series.size());
        element.seriesIndex = series.get(key);
      }
    }
  }
}
