// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.time.Instant;
import java.time.ZoneOffset;
import java.time.format.DateTimeFormatter;
import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Set;
import java.util.TreeSet;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;

/**
 * A column whose values are told apart: along an axis of categories, by colour, or in panels. Times
 * become texts, since the value of a time says little to a reader.
 */
final class Discrete {
  private static final double LATE = 1e9;

  private final Context context;
  private final Column column;
  private final String field;
  private final List<Object> values;
  private String rank;

  Discrete(Context context, Column column) {
    this.context = context;
    this.column = column;
    String raw = context.fields.of(column);
    if (column.kind() == ColumnKind.TIME) {
      field = context.fields.unique(column.name() + " text");
      context.addStep(Transforms.calculate("isValid(" + Expr.datum(raw) + ") ? "
          + Expr.utcFormat(Expr.datum(raw), timeFormat()) + " : null", field));
    } else {
      field = raw;
    }
    values = used();
  }

  private String timeFormat() {
    return context.facts.isDateOnly(column) ? Expr.DATE : Expr.DATE_TIME;
  }

  private List<Object> used() {
    return switch (column.kind()) {
      case CATEGORY -> usedCategories();
      case NUMBER -> List.copyOf(usedNumbers());
      case TIME -> usedTimes();
    };
  }

  private List<Object> usedCategories() {
    boolean[] used = new boolean[column.categories().size()];
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        used[column.category(row)] = true;
      }
    }
    List<Object> texts = new ArrayList<>();
    for (int i = 0; i < used.length; i++) {
      if (used[i]) {
        texts.add(column.categories().get(i));
      }
    }
    return List.copyOf(texts);
  }

  private Set<Double> usedNumbers() {
    Set<Double> numbers = new TreeSet<>();
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        numbers.add(column.number(row));
      }
    }
    return numbers;
  }

  private List<Object> usedTimes() {
    boolean date = context.facts.isDateOnly(column);
    DateTimeFormatter format =
        DateTimeFormatter.ofPattern(date ? "uuuu MMM d" : "uuuu MMM d HH:mm", Locale.ENGLISH);
    Set<Object> texts = new LinkedHashSet<>();
    for (double millis : usedNumbers()) {
      texts.add(format.format(Instant.ofEpochMilli((long) millis).atZone(ZoneOffset.UTC)));
    }
    return List.copyOf(texts);
  }

  /** The field with the values. */
  String field() {
    return field;
  }

  /** The type that an encoding says. */
  String type() {
    return column.kind() == ColumnKind.NUMBER ? "ordinal" : "nominal";
  }

  /** The values in the order to show them, as far as they are known. */
  List<Object> values() {
    return values;
  }

  /** The expression of a tick's or a legend entry's text; null when the value says it. */
  String labelExpression() {
    return column.kind() == ColumnKind.NUMBER ? Expr.numberText("datum.value") : null;
  }

  private List<String> declared() {
    ColumnDeclaration declaration = context.chart.column(column.name());
    return declaration == null ? List.of() : declaration.order();
  }

  /** Says the order of the values to an encoding. */
  void sort(ObjectNode encoding) {
    if (context.fixedRows) {
      encoding.set("sort", Json.array(values));
    } else if (column.kind() == ColumnKind.CATEGORY) {
      encoding.set("sort", declared().isEmpty() ? Json.node(null) : Json.array(declared()));
    } else if (column.kind() == ColumnKind.TIME) {
      ObjectNode sort = Json.object("field", rank());
      encoding.set("sort", Json.set(sort, "op", "min"));
    }
  }

  /** Says the order of panels, which know no order of the data. */
  void sortPanels(ObjectNode facet) {
    if (context.fixedRows) {
      sort(facet);
    } else {
      ObjectNode sort = Json.object("field", rank());
      facet.set("sort", Json.set(sort, "op", "min"));
    }
  }

  /** Adds a field that grows in the order of the values; with fixed rows from 0 in steps of 1. */
  String rank() {
    if (rank == null) {
      rank = context.fields.unique(column.name() + " rank");
      addRank();
    }
    return rank;
  }

  private void addRank() {
    if (context.fixedRows) {
      context.addStep(Transforms.calculate(Expr.indexOf(values, field), rank));
      return;
    }
    if (column.kind() != ColumnKind.CATEGORY) {
      String raw = Expr.datum(context.fields.of(column));
      context.addStep(Transforms.calculate("isValid(" + raw + ") ? +" + raw + " : null", rank));
      return;
    }
    String first = declared().isEmpty() ? rank : context.fields.unique(column.name() + " first");
    context.addStep(Transforms.joinAggregate(
        List.of(Transforms.operation("min", context.rowField(), first)), List.of(field)));
    if (!declared().isEmpty()) {
      String place = Expr.indexOf(declared(), field);
      context.addStep(Transforms.calculate(place + " >= 0 ? " + place + " : "
          + Expr.number(LATE) + " + " + Expr.datum(first), rank));
    }
  }
}
