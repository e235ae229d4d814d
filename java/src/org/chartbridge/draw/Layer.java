// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.Shape;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Channel;

/** The marks of one element in one panel. */
abstract class Layer {
  final Plan plan;
  final ElementPlan element;
  final Panels panels;
  final int panel;
  final Inks inks;
  private final AxisData x;
  private final AxisData y;

  Layer(LayerSource source, int panel) {
    plan = source.plan();
    element = source.element();
    panels = source.panels();
    inks = source.inks();
    x = source.x();
    y = source.y();
    this.panel = panel;
  }

  /** Tells the axes what the marks take. */
  abstract void extend(Extent xExtent, Extent yExtent);

  abstract void draw(Graphics2D g, Frame frame);

  /** How far marks within the panel may reach beyond its ends, in pixels. */
  double reach() {
    return 0;
  }

  /** The texts of the label channel, to be placed when all layers are drawn. */
  void labels(Frame frame, LabelPlacer placer) {}

  abstract void marks(Frame frame, List<Mark> marks);

  Color color(Group group) {
    double opacity = element.element.opacity();
    if (element.fill != null) {
      return Inks.alpha(element.fill, opacity);
    }
    if (element.colors == null) {
      return Inks.alpha(inks.color(element.seriesIndex), opacity);
    }
    Color color = element.colors.continuous
        ? element.colors.color(plan.style, group.colorValue) : inks.color(group.color);
    return Inks.alpha(color, opacity);
  }

  /** The index that decides pattern, dash and shape; -1 when the colour alone does. */
  int ink(Group group) {
    if (element.fill != null || element.colors != null && element.colors.continuous) {
      return -1;
    }
    return element.colors == null ? element.seriesIndex : group.color;
  }

  AxisData xData() {
    return x;
  }

  AxisData yData() {
    return y;
  }

  String positionText(Group group) {
    AxisData axis = element.horizontal ? y : x;
    return axis.text(
        element.position(), element.positionColumn(), group.position(element.horizontal));
  }

  String measureText(Group group) {
    AxisData axis = element.horizontal ? x : y;
    return axis.text(element.measure(), element.measureColumn(), group.measure(element.horizontal));
  }

  /** Panel, x, y, colour, size and label of a mark, in this order. */
  Map<String, String> values(Group group) {
    Map<String, String> values = new LinkedHashMap<>();
    putPanel(values);
    put(values, element.x, x, element.xColumn, group.x);
    put(values, element.y, y, element.yColumn, group.y);
    putColor(values, group);
    if (element.element.size() != null) {
      values.put(plan.label(element.element.size()),
          plan.format(element.element.size(), element.sizeColumn, group.size));
    }
    if (element.element.label() != null && group.label != null) {
      values.putIfAbsent(plan.label(element.element.label()), group.label);
    }
    return values;
  }

  void putPanel(Map<String, String> values) {
    if (panels.label() != null) {
      values.put(panels.label(), panels.name(panel));
    }
  }

  void putColor(Map<String, String> values, Group group) {
    ColorAssignment colors = element.colors;
    if (colors == null) {
      return;
    }
    String text = colors.continuous ? plan.format(colors.channel, colors.column, group.colorValue)
                                    : colors.labels.get(group.color);
    values.putIfAbsent(colors.title, text);
  }

  private void put(Map<String, String> values, Channel channel, AxisData axis,
      org.chartbridge.data.Column column, double value) {
    if (channel != null && !Double.isNaN(value)) {
      values.put(plan.label(channel), axis.text(channel, column, value));
    }
  }

  Mark mark(Shape area, Map<String, String> values) {
    return new Mark(area, values, element.index, panels.name(panel));
  }
}
