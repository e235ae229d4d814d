// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.regex.Pattern;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;

/**
 * The fields of the rows: the columns under their own names, and what is worked out from them. A
 * dot or a bracket in a field's name would be taken as a path into it, so such a column gets a
 * second name.
 */
final class Fields {
  private static final Pattern PLAIN = Pattern.compile("[^.\\[\\]\\\\'\"*\\p{Cntrl}]+");

  private final Map<String, String> names = new HashMap<>();
  private final Set<String> taken = new HashSet<>();
  private final List<ObjectNode> steps = new ArrayList<>();
  private final ObjectNode parse = Json.object();

  /** @param loaded whether Vega loads the rows, and so can read times while it does */
  Fields(List<Column> columns, boolean loaded) {
    columns.forEach(column -> taken.add(column.name()));
    columns.forEach(column -> add(column, loaded));
  }

  private void add(Column column, boolean loaded) {
    String name = column.name();
    boolean time = column.kind() == ColumnKind.TIME;
    if (PLAIN.matcher(name).matches()) {
      names.put(name, name);
      if (time && loaded) {
        parse.put(name, "date");
      } else if (time) {
        steps.add(Transforms.calculate("toDate(" + Expr.datum(name) + ")", name));
      }
      return;
    }
    String plain = unique("column_" + (names.size() + 1));
    names.put(name, plain);
    String value = Expr.datum(name);
    steps.add(Transforms.calculate(time ? "toDate(" + value + ")" : value, plain));
  }

  /** The field of a column. */
  String of(Column column) {
    return names.get(column.name());
  }

  /** A field of our own, by this name if it is free. */
  String unique(String wanted) {
    StringBuilder name = new StringBuilder(PLAIN.matcher(wanted).matches() ? wanted : "field");
    while (!taken.add(name.toString())) {
      name.append('_');
    }
    return name.toString();
  }

  /** The steps that give columns their second names. */
  List<ObjectNode> steps() {
    return List.copyOf(steps);
  }

  /** Which fields are texts that stand for times. */
  ObjectNode parse() {
    return parse;
  }
}
