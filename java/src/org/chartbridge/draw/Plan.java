// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;

/**
 * What all steps of preparing a drawing share: the chart, its data, and how texts and values are
 * written.
 */
final class Plan {
  private static final double DAY = 86_400_000;

  final Chart chart;
  final Table table;
  final Style style;
  final Formats formats;
  final Typography type;
  private final Map<String, String> messages;
  private final Map<String, Boolean> dateOnly = new HashMap<>();

  Plan(Chart chart, Table table, DrawOptions options) {
    this.chart = chart;
    this.table = table;
    Style base = options.style() == null ? Style.of(chart) : options.style();
    style = chart.palette().isEmpty()
        ? base : base.withPalette(Style.colors(chart.palette().toArray(String[]::new)));
    formats = new Formats(options.locale());
    type = new Typography(style, chart.size().width(), chart.size().height());
    messages = options.messages();
  }

  /** A text of the chart in the reader's language. */
  String text(String text) {
    return text == null ? null : messages.getOrDefault(text, text);
  }

  String label(Column column) {
    return text(chart.label(column.name()));
  }

  /** How readers call what a channel shows, for example "Sales (mean)". */
  String label(Channel channel) {
    if (channel.aggregate() == Aggregate.COUNT) {
      return text("Count");
    }
    String label = text(chart.label(channel.column()));
    if (channel.aggregate() == Aggregate.NONE) {
      return label;
    }
    return label + " (" + text(channel.aggregate().name().toLowerCase(Locale.ROOT)) + ")";
  }

  Column column(ElementPlan element, String channel, String name) {
    try {
      return table.column(name);
    } catch (ChartException e) {
      throw chart.error(element.path() + "." + channel,
          element.name() + ", " + channel + ": " + e.getMessage(), e);
    }
  }

  /** A value of a column, or of an aggregate of it, for readers. */
  String format(Channel channel, Column column, double value) {
    boolean time = column != null && column.kind() == ColumnKind.TIME
        && channel.aggregate() != Aggregate.COUNT;
    if (time) {
      return formats.time(value, isDateOnly(column));
    }
    return formats.number(value);
  }

  /** A value of a column for a label in the picture. */
  String formatShort(Channel channel, Column column, double value) {
    boolean number = column == null || column.kind() != ColumnKind.TIME;
    return number ? formats.shortNumber(value) : format(channel, column, value);
  }

  /** Whether no time of the column has an hour of its own. */
  boolean isDateOnly(Column column) {
    return dateOnly.computeIfAbsent(column.name(), name -> {
      for (int row = 0; row < column.size(); row++) {
        if (!column.isMissing(row) && column.number(row) % DAY != 0) {
          return false;
        }
      }
      return true;
    });
  }
}
