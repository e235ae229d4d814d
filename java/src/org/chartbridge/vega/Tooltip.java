// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;

/** What a mark says when it is pointed at: each value with its label. */
final class Tooltip {
  private final Context context;
  private final ElementFacts element;
  /** The label of each value, and the expression of its text. */
  private final Map<String, String> values = new LinkedHashMap<>();
  private Map<String, String> fields;
  private boolean shown;

  Tooltip(Context context, ElementFacts element) {
    this.context = context;
    this.element = element;
    if (context.hasFacet() && !element.element().hasOwnBins()) {
      Column column = context.facts.table().column(context.chart.facet().column());
      values.put(context.facts.label(column), text(Channel.of(column.name()), column,
          context.fields.of(column)));
    }
  }

  /** A value that is there already under this label stays. */
  void add(String label, String text) {
    values.putIfAbsent(label, text);
  }

  /** The value of a channel in a field. */
  void add(Channel channel, Column column, String field) {
    if (channel != null) {
      add(context.facts.label(channel), text(channel, column, field));
    }
  }

  /** The channels of an element whose marks are summed up. */
  void addAll(Sums sums) {
    add(element.x(), element.xColumn(), sums.x);
    add(element.y(), element.yColumn(), sums.y);
    addRest(sums);
  }

  /** The channels besides x and y. */
  void addRest(Sums sums) {
    Channel color = element.element().color();
    if (color != null) {
      add(element.colorTitle(), text(color, element.colorColumn(), sums.color));
    }
    add(element.element().size(), element.sizeColumn(), sums.size);
    if (sums.label != null) {
      add(context.facts.label(element.element().label()), sums.labelText());
    }
  }

  /** The expression of a value's text. */
  String text(Channel channel, Column column, String field) {
    String value = Expr.datum(field);
    boolean count = channel.aggregate() == Aggregate.COUNT;
    if (!count && column != null && column.kind() == ColumnKind.CATEGORY) {
      return value;
    }
    if (!count && column != null && column.kind() == ColumnKind.TIME) {
      // The text of a time that is told apart is ready.
      boolean ready = !field.equals(context.fields.of(column)) && !Sums.isAggregate(channel)
          && field.equals(context.discrete(column).field());
      return ready ? value : timeText(column, value);
    }
    return "isValid(" + value + ") ? " + Expr.numberText(value) + " : null";
  }

  private String timeText(Column column, String value) {
    return Expr.utcFormat(value, context.facts.isDateOnly(column) ? Expr.DATE : Expr.DATE_TIME);
  }

  /** The text of an interval of a column, such as a bin. */
  String interval(Column column, String from, String to) {
    if (column != null && column.kind() == ColumnKind.TIME) {
      return timeText(column, Expr.datum(from)) + " + ' \u2013 ' + "
          + timeText(column, Expr.datum(to));
    }
    return Expr.numberText(Expr.datum(from)) + " + ' \u2013 ' + "
        + Expr.numberText(Expr.datum(to));
  }

  private Map<String, String> fields() {
    if (fields == null) {
      fields = new LinkedHashMap<>();
      for (String label : values.keySet()) {
        fields.put(label, context.fields.unique("tip " + (fields.size() + 1)));
      }
    }
    return fields;
  }

  /** The steps that write the texts; none when no view shows them. */
  List<ObjectNode> steps() {
    List<ObjectNode> steps = new ArrayList<>();
    if (shown) {
      values.forEach(
          (label, text) -> steps.add(Transforms.calculate(text, fields().get(label))));
    }
    return steps;
  }

  /** Lets marks say the same to those who do not see them. */
  void describe(ObjectNode mark) {
    List<String> parts = new ArrayList<>();
    values.forEach((label, text) -> parts.add(Expr.text(label + ": ") + " + (" + text + ")"));
    mark.set("description", Json.expression(String.join(" + '; ' + ", parts)));
  }

  /** The compiler writes a title into an expression, and escapes nothing but quotes in it. */
  private static String title(String label) {
    String text = label.replaceAll("\\p{Cntrl}+", " ").replace("\\", "\\\\");
    return text.isBlank() ? " " : text;
  }

  /** Lets a view show the texts. */
  void show(ObjectNode encoding) {
    if (!context.tooltips()) {
      return;
    }
    shown = true;
    ArrayNode tooltip = encoding.putArray("tooltip");
    for (String label : values.keySet()) {
      ObjectNode value = Json.object("field", fields().get(label));
      value.put("type", "nominal");
      tooltip.add(Json.set(value, "title", title(label)));
    }
  }
}
