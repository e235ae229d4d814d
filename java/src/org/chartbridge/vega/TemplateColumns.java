// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;

/**
 * The columns that a template will be filled with. Their kinds are the declared ones, else those of
 * the chart's data if it has any, else what the elements make of them.
 */
final class TemplateColumns {
  private final Chart chart;
  private final Table known;
  private final Map<String, ColumnKind> kinds = new LinkedHashMap<>();

  private TemplateColumns(Chart chart, Table known) {
    this.chart = chart;
    this.known = known;
  }

  /**
   * A table of one row that stands for the data to come.
   *
   * @param known the chart's own data, or null
   */
  static Table of(Chart chart, Table known) {
    TemplateColumns columns = new TemplateColumns(chart, known);
    for (Element element : chart.elements()) {
      columns.add(element);
    }
    if (chart.facet() != null) {
      columns.add(chart.facet().column(), ColumnKind.CATEGORY);
    }
    List<Column> standIns = new ArrayList<>();
    columns.kinds.forEach((name, kind) -> standIns.add(new StandInColumn(name, kind)));
    return new Table(standIns, standIns.isEmpty() ? 0 : 1);
  }

  /** The chart with axes that fit any value, since no value is known. */
  static Chart withoutLimits(Chart chart) {
    return new Chart(chart.size(), chart.titles(), chart.columns(), withoutLimits(chart.x()),
        withoutLimits(chart.y()), chart.elements(), chart.legend(), chart.facet(), chart.style(),
        chart.palette());
  }

  private static Axis withoutLimits(Axis axis) {
    return new Axis(
        axis.scale(), axis.title(), null, null, axis.reversed(), axis.grid(), axis.format());
  }

  private void add(Element element) {
    for (String name : ChannelRules.NAMES) {
      Channel channel = ChannelRules.channel(element, name);
      if (channel != null && channel.column() != null) {
        add(channel.column(), kind(element, name, channel));
      }
    }
  }

  private void add(String column, ColumnKind kind) {
    ColumnKind declared = declared(column);
    kinds.putIfAbsent(column, declared == null ? kind : declared);
  }

  private ColumnKind declared(String column) {
    ColumnDeclaration declaration = chart.column(column);
    if (declaration != null && declaration.kind() != null) {
      return declaration.kind();
    }
    return known == null ? null : known.column(column).kind();
  }

  private ColumnKind kind(Element element, String name, Channel channel) {
    boolean across = name.equals("x");
    boolean position = across || name.equals("y");
    ColumnKind scale = position ? scale(across ? chart.x() : chart.y()) : null;
    if (channel.aggregate() == Aggregate.COUNT) {
      return ColumnKind.CATEGORY;
    }
    if (scale != null && (channel.aggregate() == Aggregate.NONE || scale == ColumnKind.TIME)) {
      return scale;
    }
    if (channel.aggregate() != Aggregate.NONE) {
      return ColumnKind.NUMBER;
    }
    return position ? positionKind(element, across) : otherKind(element, name);
  }

  private static ColumnKind scale(Axis axis) {
    return switch (axis.scale()) {
      case LINEAR, LOG -> ColumnKind.NUMBER;
      case TIME -> ColumnKind.TIME;
      case CATEGORY -> ColumnKind.CATEGORY;
      case AUTO -> null;
    };
  }

  private ColumnKind positionKind(Element element, boolean across) {
    return switch (element.kind()) {
      case HEATMAP -> ColumnKind.CATEGORY;
      case PIE -> across ? ColumnKind.CATEGORY : ColumnKind.NUMBER;
      case BAR, BOX -> besideMeasure(element, across) ? ColumnKind.CATEGORY : ColumnKind.NUMBER;
      default -> ColumnKind.NUMBER;
    };
  }

  /** Whether bars or boxes stand at this channel's values, rather than measure them. */
  private boolean besideMeasure(Element element, boolean across) {
    Channel other = across ? element.y() : element.x();
    if (other == null) {
      return element.kind() == ElementKind.BAR;
    }
    if (other.aggregate() != Aggregate.NONE) {
      return true;
    }
    boolean otherIsCategory = declared(other.column()) == ColumnKind.CATEGORY
        || scale(across ? chart.y() : chart.x()) == ColumnKind.CATEGORY;
    return across ? !otherIsCategory : declared(other.column()) == ColumnKind.NUMBER;
  }

  private static ColumnKind otherKind(Element element, String name) {
    boolean number = name.equals("size")
        || name.equals("color") && element.kind() == ElementKind.HEATMAP;
    return number ? ColumnKind.NUMBER : ColumnKind.CATEGORY;
  }
}
