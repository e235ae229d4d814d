// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;

/** Reads the members of one JSON object by name and kind. */
final class Members {
  private final JsonValue object;
  private final String what;
  private final Set<String> known = new LinkedHashSet<>();

  /** @param what how messages call the object */
  Members(JsonValue object, String what) {
    this.object = object.expect(JsonValue.Kind.OBJECT, what);
    this.what = what;
  }

  /** The member, or null when it is not given or is null. */
  JsonValue value(String name) {
    known.add(name);
    JsonValue value = object.member(name);
    return value == null || value.is(JsonValue.Kind.NULL) ? null : value;
  }

  private JsonValue value(String name, JsonValue.Kind kind) {
    JsonValue value = value(name);
    return value == null ? null : value.expect(kind, name + " of " + what);
  }

  /** A member that must be given. */
  JsonValue needed(String name, JsonValue.Kind kind) {
    JsonValue value = value(name, kind);
    if (value == null) {
      throw object.error(what + " needs the member \"" + name + "\", " + kind.words);
    }
    return value;
  }

  String text(String name) {
    JsonValue value = value(name, JsonValue.Kind.TEXT);
    return value == null ? null : value.text();
  }

  /** A text that must be given and hold more than spaces. */
  String name(String name) {
    JsonValue value = needed(name, JsonValue.Kind.TEXT);
    if (value.text().isBlank()) {
      throw value.error(name + " of " + what + " must not be empty");
    }
    return value.text();
  }

  boolean flag(String name) {
    JsonValue value = value(name, JsonValue.Kind.BOOLEAN);
    return value != null && value.text().equals("true");
  }

  /** A number, or null. */
  Double number(String name) {
    JsonValue value = value(name, JsonValue.Kind.NUMBER);
    if (value == null) {
      return null;
    }
    Double number = AxisLimit.parseNumber(value.text());
    if (number == null) {
      throw value.error(name + " of " + what + " is " + value.shown() + ", beyond all numbers");
    }
    return number;
  }

  List<JsonValue> items(String name) {
    JsonValue value = value(name, JsonValue.Kind.ARRAY);
    return value == null ? List.of() : value.items();
  }

  /** Call when all members are read: anything else that is written there is a mistake. */
  void finish() {
    for (Map.Entry<String, JsonValue> member : object.members().entrySet()) {
      if (!known.contains(member.getKey())) {
        throw unknown(member.getKey(), member.getValue());
      }
    }
  }

  private ChartException unknown(String name, JsonValue value) {
    return value.error(
        what + " has no member \"" + name + "\"; " + Suggestions.expected(name, known));
  }
}
