// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Set;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;

/**
 * The marks of an element as rows: the rows of the data that agree in all plain channels, summed
 * up, or each row of the data where nothing is summed up. Rows that lack the value of a channel are
 * left out, but lines and areas keep a missing measure as a gap.
 */
final class Sums {
  final Context context;
  final ElementFacts element;
  /** The steps that lead from the data to the marks. */
  final List<ObjectNode> steps = new ArrayList<>();
  /** The fields of the channels; null where the element has none. */
  final String x;
  final String y;
  final String color;
  final String size;
  /** The text of the label; null when there is none. */
  final String label;
  /** The place of a mark's colour among the colours; null when it has none. */
  final String rank;
  private final Set<String> by = new LinkedHashSet<>();
  private final List<ObjectNode> operations = new ArrayList<>();
  private final List<String> results = new ArrayList<>();
  private final boolean aggregates;

  /**
   * @param before steps that work out the keys
   * @param xKey the field that stands for x, or null for the column's own
   * @param yKey the field that stands for y, likewise
   * @param more fields that rows of one mark agree in, too
   */
  Sums(Context context, ElementFacts element, List<ObjectNode> before, String xKey, String yKey,
      List<String> more) {
    this.context = context;
    this.element = element;
    by.addAll(context.panelFields());
    requireValid(element.x(), element.xColumn(), isGap(true));
    requireValid(element.y(), element.yColumn(), isGap(false));
    requireValid(element.element().color(), element.colorColumn(), false);
    requireValid(element.element().size(), element.sizeColumn(), false);
    steps.addAll(before);
    x = field(element.x(), element.xColumn(), xKey, context.isCategory(true), isGap(true));
    y = field(element.y(), element.yColumn(), yKey, context.isCategory(false), isGap(false));
    boolean told = !element.continuousColor();
    String plain = field(element.element().color(), element.colorColumn(), null, told, false);
    size = field(element.element().size(), element.sizeColumn(), null, false, false);
    rank = plain != null && told ? context.discrete(element.colorColumn()).rank() : null;
    by.addAll(more);
    if (rank != null) {
      by.add(rank);
    }
    aggregates = isAggregate(element.x()) || isAggregate(element.y())
        || isAggregate(element.element().color()) || isAggregate(element.element().size());
    label = label();
    finish();
    color = isTimeColor() ? number(plain) : plain;
  }

  /** Whether its colours are a scale of times. */
  private boolean isTimeColor() {
    return element.continuousColor() && element.colorColumn() != null
        && element.colorColumn().kind() == ColumnKind.TIME
        && element.element().color().aggregate() != Aggregate.COUNT;
  }

  /** A colour scale takes times as numbers only. */
  private String number(String time) {
    String field = context.fields.unique("color time");
    steps.add(Transforms.calculate("+" + Expr.datum(time), field));
    return field;
  }

  Sums(Context context, ElementFacts element) {
    this(context, element, List.of(), null, null, List.of());
  }

  static boolean isAggregate(Channel channel) {
    return channel != null && channel.aggregate() != Aggregate.NONE;
  }

  boolean aggregates() {
    return aggregates;
  }

  /** The fields that rows of one mark agree in. */
  List<String> keys() {
    return List.copyOf(by);
  }

  private boolean isGap(boolean horizontal) {
    ElementKind kind = element.element().kind();
    return (kind == ElementKind.LINE || kind == ElementKind.AREA)
        && horizontal == element.horizontal();
  }

  private void requireValid(Channel channel, Column column, boolean gap) {
    if (channel != null && !isAggregate(channel) && !gap) {
      steps.add(Transforms.filter(Expr.isValid(context.fields.of(column))));
    }
  }

  private String field(Channel channel, Column column, String key, boolean told, boolean gap) {
    if (channel == null) {
      return null;
    }
    if (isAggregate(channel)) {
      return result(channel, column, gap);
    }
    String field = key != null ? key
        : told ? context.discrete(column).field() : context.fields.of(column);
    by.add(field);
    if (told && key == null && column.kind() != ColumnKind.CATEGORY) {
      by.add(context.fields.of(column));
    }
    return field;
  }

  private String result(Channel channel, Column column, boolean gap) {
    String name = channel.aggregate().name().toLowerCase(Locale.ROOT);
    boolean rows = channel.aggregate() == Aggregate.COUNT && column == null;
    String field = context.fields.unique(column == null ? name : name + " of " + column.name());
    String operation = channel.aggregate() == Aggregate.COUNT && !rows ? "valid" : name;
    operations.add(Transforms.operation(
        operation, column == null ? null : context.fields.of(column), field));
    if (channel.aggregate() != Aggregate.COUNT && !gap) {
      results.add(field);
    }
    return field;
  }

  private String label() {
    Channel channel = element.element().label();
    boolean shown = channel != null
        && ChannelRules.allowed(element.element().kind()).contains("label")
        && (aggregates || !isAggregate(channel));
    if (!shown) {
      return null;
    }
    Column column = element.labelColumn();
    if (isAggregate(channel)) {
      return result(channel, column, true);
    }
    if (!aggregates) {
      return context.fields.of(column);
    }
    String first = context.fields.unique("first row");
    operations.add(Transforms.operation("argmin", context.rowField(), first));
    return first;
  }

  private void finish() {
    if (aggregates) {
      steps.add(Transforms.aggregate(operations, by));
      results.forEach(field -> steps.add(Transforms.filter(Expr.isValid(field))));
    }
  }

  /** The expression of a mark's label; null for a mark without one. */
  String labelText() {
    Channel channel = element.element().label();
    Column column = element.labelColumn();
    boolean first = aggregates && !isAggregate(channel);
    String value = first
        ? Expr.datum(label) + "[" + Expr.text(context.fields.of(column)) + "]"
        : Expr.datum(label);
    boolean count = channel.aggregate() == Aggregate.COUNT;
    String text;
    if (!count && column.kind() == ColumnKind.CATEGORY) {
      text = value;
    } else if (!count && column.kind() == ColumnKind.TIME) {
      text = Expr.utcFormat(value, context.facts.isDateOnly(column) ? Expr.DATE : Expr.DATE_TIME);
    } else {
      text = Expr.shortNumberText(value);
    }
    return "isValid(" + value + ") ? " + text + " : null";
  }
}
