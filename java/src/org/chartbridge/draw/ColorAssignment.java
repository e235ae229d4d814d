// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.util.ArrayList;
import java.util.List;
import java.util.TreeMap;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;

/** Which rows get which colour: one for each category of a column, or a scale over its numbers. */
final class ColorAssignment {
  private static final int MOST_COLORS = 100;

  final String title;
  final boolean continuous;
  /** The texts of the categories; empty for a scale. */
  final List<String> labels;
  /** The numbers of a scale. */
  final Extent extent = new Extent();
  final Channel channel;
  final Column column;
  private final int[] codes;
  private final TreeMap<Double, Integer> values = new TreeMap<>();

  ColorAssignment(Plan plan, ElementPlan element) {
    channel = element.element.color();
    column = element.colorColumn;
    continuous = element.continuousColor();
    title = plan.label(channel);
    if (continuous) {
      labels = List.of();
      codes = null;
    } else if (column.kind() == ColumnKind.CATEGORY) {
      codes = new int[column.categories().size()];
      labels = categories(plan);
    } else {
      codes = null;
      labels = numbers(plan);
    }
    if (labels.size() > MOST_COLORS) {
      throw element.error("color", "column \"" + column.name() + "\" has " + labels.size()
          + " different values, more than the " + MOST_COLORS
          + " colours that a legend can hold; choose a column with fewer.");
    }
  }

  private List<String> categories(Plan plan) {
    boolean[] used = new boolean[codes.length];
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        used[column.category(row)] = true;
      }
    }
    List<String> texts = new ArrayList<>();
    for (int i = 0; i < codes.length; i++) {
      codes[i] = used[i] ? texts.size() : -1;
      if (used[i]) {
        texts.add(plan.text(column.categories().get(i)));
      }
    }
    return List.copyOf(texts);
  }

  private List<String> numbers(Plan plan) {
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        values.put(column.number(row), 0);
      }
    }
    List<String> texts = new ArrayList<>();
    for (Double value : values.keySet()) {
      values.put(value, texts.size());
      texts.add(plan.format(channel, column, value));
    }
    return List.copyOf(texts);
  }

  /** The colour's index, or -1 when the row's value is missing. */
  int index(int row) {
    if (column.isMissing(row)) {
      return -1;
    }
    return codes != null ? codes[column.category(row)] : values.get(column.number(row));
  }

  /** The colour of a number on a scale. */
  Color color(Style style, double value) {
    double span = extent.max() - extent.min();
    return scale(style.sequential, span > 0 ? (value - extent.min()) / span : 0.5);
  }

  /** The colour at {@code share} of a row of colours, mixed between its two neighbours. */
  static Color scale(List<Color> colors, double share) {
    double place = Math.max(0, Math.min(1, share)) * (colors.size() - 1);
    int below = (int) Math.min(Math.floor(place), colors.size() - 2);
    double part = place - below;
    Color a = colors.get(below);
    Color b = colors.get(below + 1);
    return new Color(mix(a.getRed(), b.getRed(), part), mix(a.getGreen(), b.getGreen(), part),
        mix(a.getBlue(), b.getBlue(), part));
  }

  private static int mix(int a, int b, double part) {
    return (int) Math.round(a + (b - a) * part);
  }
}
