// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.DoubleUnaryOperator;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;

/**
 * Sums up the rows of an element: those that agree in all plain channels make one mark, and its
 * other channels are aggregates over them. Without aggregates every row is a mark.
 */
final class Grouping {
  private final Plan plan;
  private final ElementPlan element;
  private final AxisData x;
  private final AxisData y;
  private final Panels panels;
  private final DoubleUnaryOperator xKey;
  private final DoubleUnaryOperator yKey;
  private final boolean keepGaps;

  /**
   * @param xKey what a row's x counts as, for example the middle of its bin
   * @param yKey what a row's y counts as
   */
  Grouping(LayerSource source, DoubleUnaryOperator xKey, DoubleUnaryOperator yKey) {
    plan = source.plan();
    element = source.element();
    x = source.x();
    y = source.y();
    panels = source.panels();
    this.xKey = xKey;
    this.yKey = yKey;
    keepGaps = element.kind == ElementKind.LINE || element.kind == ElementKind.AREA;
  }

  private record Key(int panel, double x, double y, int color, double colorValue, double size) {}

  private static final class Sums {
    final Group group;
    final Accumulator x;
    final Accumulator y;
    final Accumulator color;
    final Accumulator size;
    final Accumulator label;

    Sums(Group group, ElementPlan e) {
      this.group = group;
      x = accumulator(e.x);
      y = accumulator(e.y);
      color = accumulator(e.element.color());
      size = accumulator(e.element.size());
      label = accumulator(e.element.label());
    }

    private static Accumulator accumulator(Channel channel) {
      return ElementPlan.isAggregate(channel) ? new Accumulator(channel.aggregate()) : null;
    }
  }

  List<Group> groups() {
    boolean aggregates = element.aggregates();
    Map<Key, Sums> sums = new LinkedHashMap<>();
    List<Group> result = new ArrayList<>();
    for (int row = 0; row < plan.table.rowCount(); row++) {
      Group group = plain(row);
      if (group == null) {
        continue;
      }
      if (!aggregates) {
        label(group, row);
        result.add(group);
        continue;
      }
      Key key = new Key(
          group.panel, group.x, group.y, group.color, group.colorValue, group.size);
      Sums entry = sums.get(key);
      if (entry == null) {
        entry = new Sums(group, element);
        sums.put(key, entry);
        label(group, row);
      }
      add(entry, row);
    }
    sums.values().forEach(entry -> finish(entry, result));
    return result;
  }

  /** The row's plain values; null when one that decides about the mark is missing. */
  private Group plain(int row) {
    Group group = new Group();
    group.firstRow = row;
    group.rows = 1;
    group.panel = panels.of(row);
    group.x = ElementPlan.isAggregate(element.x) ? 0
        : xKey.applyAsDouble(x.position(element.xColumn, row));
    group.y = ElementPlan.isAggregate(element.y) ? 0
        : yKey.applyAsDouble(y.position(element.yColumn, row));
    boolean gap = keepGaps && Double.isNaN(group.measure(element.horizontal));
    if (group.panel < 0 || Double.isNaN(group.x) || Double.isNaN(group.y) && !gap) {
      return null;
    }
    Channel color = element.element.color();
    if (color != null && !ElementPlan.isAggregate(color)) {
      if (element.colorColumn.isMissing(row)) {
        return null;
      }
      if (element.colors.continuous) {
        group.colorValue = element.colorColumn.number(row);
      } else {
        group.color = element.colors.index(row);
      }
    }
    Channel size = element.element.size();
    if (size != null && !ElementPlan.isAggregate(size)) {
      if (element.sizeColumn.isMissing(row)) {
        return null;
      }
      group.size = element.sizeColumn.number(row);
    }
    return group;
  }

  private void label(Group group, int row) {
    Channel label = element.element.label();
    if (label == null || ElementPlan.isAggregate(label) || element.labelColumn.isMissing(row)) {
      return;
    }
    Column column = element.labelColumn;
    group.label = column.kind() == ColumnKind.CATEGORY
        ? plan.text(column.text(row)) : plan.formatShort(label, column, column.number(row));
  }

  private void add(Sums entry, int row) {
    if (entry.group.firstRow != row) {
      entry.group.rows++;
    }
    add(entry.x, element.x, element.xColumn, row);
    add(entry.y, element.y, element.yColumn, row);
    add(entry.color, element.element.color(), element.colorColumn, row);
    add(entry.size, element.element.size(), element.sizeColumn, row);
    add(entry.label, element.element.label(), element.labelColumn, row);
  }

  private static void add(Accumulator sum, Channel channel, Column column, int row) {
    if (sum == null) {
      return;
    }
    if (channel.aggregate() == Aggregate.COUNT) {
      sum.add(column == null || !column.isMissing(row) ? 0 : Double.NaN);
    } else {
      sum.add(column.number(row));
    }
  }

  private void finish(Sums entry, List<Group> result) {
    Group group = entry.group;
    group.x = entry.x == null ? group.x : entry.x.result();
    group.y = entry.y == null ? group.y : entry.y.result();
    group.colorValue = entry.color == null ? group.colorValue : entry.color.result();
    group.size = entry.size == null ? group.size : entry.size.result();
    if (entry.label != null && !Double.isNaN(entry.label.result())) {
      group.label =
          plan.formatShort(element.element.label(), element.labelColumn, entry.label.result());
    }
    boolean gap = keepGaps && Double.isNaN(group.measure(element.horizontal));
    boolean unplaced = Double.isNaN(group.x) || Double.isNaN(group.y) && !gap;
    boolean colorless = entry.color != null && Double.isNaN(group.colorValue);
    boolean sizeless = entry.size != null && Double.isNaN(group.size);
    if (!unplaced && !colorless && !sizeless) {
      result.add(group);
    }
  }
}
