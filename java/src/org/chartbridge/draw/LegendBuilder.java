// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;

/** Collects what the legend has to explain. */
final class LegendBuilder {
  private final Plan plan;
  private final Inks inks;
  private final List<ElementPlan> elements;
  private final Map<ElementPlan, PointLayer.SizeScale> sizes;

  LegendBuilder(Plan plan, Inks inks, List<ElementPlan> elements,
      Map<ElementPlan, PointLayer.SizeScale> sizes) {
    this.plan = plan;
    this.inks = inks;
    this.elements = elements;
    this.sizes = sizes;
  }

  LegendBox build() {
    List<LegendBox.Block> blocks = new ArrayList<>();
    Map<ColorAssignment, List<ElementPlan>> byColors = new LinkedHashMap<>();
    for (ElementPlan element : elements) {
      boolean shows = element.colors != null && element.fill == null && !repeatsAxis(element);
      if (shows) {
        byColors.computeIfAbsent(element.colors, key -> new ArrayList<>()).add(element);
      }
    }
    byColors.forEach((colors, users) -> {
      String title = title(colors.title);
      if (colors.continuous) {
        blocks.add(new LegendBox.Block(title, List.of(), colors, null));
      } else if (colors.labels.size() > 1) {
        blocks.add(new LegendBox.Block(title, entries(colors, users), null, null));
      }
    });
    List<LegendBox.Entry> series = series();
    if (series.size() > 1 || series.size() == 1 && !byColors.isEmpty()) {
      String heading = byColors.isEmpty() ? title(null) : null;
      blocks.add(new LegendBox.Block(heading, series, null, null));
    }
    sizes.forEach((element, scale) -> blocks.add(sizeBlock(element, scale)));
    return new LegendBox(plan, inks, blocks);
  }

  private String title(String otherwise) {
    String given = plan.chart.legend().title();
    return given == null ? otherwise : plan.text(given);
  }

  /** Whether the axis names the colours already, and no legend was asked for. */
  private boolean repeatsAxis(ElementPlan element) {
    Column color = element.colorColumn;
    boolean same = color != null && !element.colors.continuous
        && (color == element.xColumn || color == element.yColumn);
    return same && plan.chart.legend().position() == null && element.kind != ElementKind.PIE
        && (element.kind == ElementKind.BAR || element.kind == ElementKind.BOX);
  }

  private List<LegendBox.Entry> entries(ColorAssignment colors, List<ElementPlan> users) {
    List<LegendBox.Entry> entries = new ArrayList<>();
    for (int i = 0; i < colors.labels.size(); i++) {
      entries.add(entry(colors.labels.get(i), inks.color(i), i, users));
    }
    return entries;
  }

  private LegendBox.Entry entry(String text, Color full, int ink, List<ElementPlan> users) {
    boolean boxes = users.stream().allMatch(e -> e.kind == ElementKind.BOX);
    Color color = boxes ? BoxLayer.surface(full, plan.style) : full;
    boolean line = users.stream().anyMatch(e -> e.kind == ElementKind.LINE);
    boolean point = users.stream().anyMatch(e -> e.kind == ElementKind.POINT);
    boolean surface =
        users.stream().anyMatch(e -> e.kind != ElementKind.LINE && e.kind != ElementKind.POINT);
    return new LegendBox.Entry(text, color, ink, surface, line, point);
  }

  /** Elements without a colour column, by what they measure. */
  private List<LegendBox.Entry> series() {
    Map<String, List<ElementPlan>> byLabel = new LinkedHashMap<>();
    for (ElementPlan element : elements) {
      if (element.colors == null && element.kind != ElementKind.PIE) {
        byLabel.computeIfAbsent(seriesKey(plan, element), key -> new ArrayList<>()).add(element);
      }
    }
    List<LegendBox.Entry> entries = new ArrayList<>();
    byLabel.forEach((label, users) -> {
      ElementPlan first = users.get(0);
      Color color = first.fill != null ? first.fill : inks.color(first.seriesIndex);
      entries.add(entry(label, color, first.fill != null ? -1 : first.seriesIndex, users));
    });
    return entries;
  }

  static String seriesKey(Plan plan, ElementPlan element) {
    if (element.element.hasOwnBins()) {
      return plan.text("Histogram");
    }
    return element.measure() == null ? element.kindName() : plan.label(element.measure());
  }

  private LegendBox.Block sizeBlock(ElementPlan element, PointLayer.SizeScale scale) {
    List<Double> values = new ArrayList<>();
    List<String> texts = new ArrayList<>();
    double span = scale.largest() - scale.smallest();
    if (span > 0) {
      values.addAll(Ticks.multiples(scale.smallest(), scale.largest(), Ticks.step(span / 4)));
    }
    if (values.size() < 2) {
      values.clear();
      values.add(scale.largest());
      if (span > 0) {
        values.add(0, scale.smallest());
      }
    }
    java.util.Collections.reverse(values);
    for (double value : values) {
      texts.add(plan.formatShort(element.element.size(), element.sizeColumn, value));
    }
    return new LegendBox.Block(plan.label(element.element.size()), List.of(), null,
        new LegendBox.Sizes(scale, values, texts));
  }
}
