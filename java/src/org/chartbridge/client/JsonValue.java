// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;

/**
 * One value of a JSON text, which knows its place there. Numbers keep their text, so that nothing
 * is lost or made up.
 *
 * @param source the whole text
 * @param offset where the value begins
 * @param kind what it is
 * @param text of a text, a number, {@code true} or {@code false}; null for the others
 * @param items of an array; empty for the others
 * @param members of an object, in their order; empty for the others
 */
record JsonValue(String source, int offset, Kind kind, String text, List<JsonValue> items,
    Map<String, JsonValue> members) {
  enum Kind {
    OBJECT("an object"),
    ARRAY("an array"),
    TEXT("a text"),
    NUMBER("a number"),
    BOOLEAN("true or false"),
    NULL("null");

    final String words;

    Kind(String words) {
      this.words = words;
    }
  }

  static JsonValue scalar(String source, int offset, Kind kind, String text) {
    return new JsonValue(source, offset, kind, text, List.of(), Map.of());
  }

  boolean is(Kind wanted) {
    return kind == wanted;
  }

  /** The member of that name; null when there is none. */
  JsonValue member(String name) {
    return members.get(name);
  }

  /** How messages show it. */
  String shown() {
    return switch (kind) {
      case TEXT -> "\"" + shortened(text) + "\"";
      case NUMBER, BOOLEAN -> shortened(text);
      default -> kind.words;
    };
  }

  private static String shortened(String text) {
    return text.length() <= 40 ? text : text.substring(0, text.offsetByCodePoints(0, 30)) + "...";
  }

  ChartException error(String message) {
    return new ChartException(TextPosition.of(source, offset) + ": " + message);
  }

  /**
   * @param what what the value is called in the message
   * @throws ChartException when it is of another kind
   */
  JsonValue expect(Kind wanted, String what) {
    if (kind != wanted) {
      throw error(what + " is " + shown() + "; expected " + wanted.words);
    }
    return this;
  }
}
