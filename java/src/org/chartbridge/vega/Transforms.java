// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.Collection;
import java.util.List;

/** Makes the steps that change rows before they are drawn. */
final class Transforms {
  private Transforms() {}

  static ObjectNode filter(String condition) {
    return Json.object("filter", condition);
  }

  static ObjectNode calculate(String expression, String field) {
    return Json.set(Json.object("calculate", expression), "as", field);
  }

  /** An operation of an aggregate, joinaggregate or window step; {@code field} may be null. */
  static ObjectNode operation(String operation, String field, String as) {
    ObjectNode node = Json.object("op", operation);
    if (field != null) {
      node.put("field", field);
    }
    return Json.set(node, "as", as);
  }

  static ObjectNode aggregate(List<ObjectNode> operations, Collection<String> by) {
    return step("aggregate", operations, by);
  }

  static ObjectNode joinAggregate(List<ObjectNode> operations, Collection<String> by) {
    return step("joinaggregate", operations, by);
  }

  private static ObjectNode step(
      String kind, List<ObjectNode> operations, Collection<String> by) {
    // Within panels the compiler takes for granted that there is a list, if only an empty one.
    return Json.set(Json.object(kind, operations), "groupby", List.copyOf(by));
  }

  /**
   * Operations over the rows before and after a row.
   *
   * @param from the first row, relative to it; null for the very first
   * @param to the last row, relative to it; null for the very last
   * @param sort the field that orders the rows, or null for the order of the data
   */
  static ObjectNode window(List<ObjectNode> operations, Integer from, Integer to, String sort,
      Collection<String> by) {
    ObjectNode node = step("window", operations, by);
    ArrayNode frame = node.putArray("frame");
    frame.add(Json.node(from)).add(Json.node(to));
    if (sort != null) {
      node.set("sort", Json.array(Json.object("field", sort)));
    }
    return node;
  }

  /** Puts values on top of each other. */
  static ObjectNode stack(String field, Collection<String> by, String sort, String from, String to,
      boolean shares) {
    ObjectNode node = Json.object("stack", field);
    node.set("groupby", Json.array(List.copyOf(by)));
    if (sort != null) {
      node.set("sort", Json.array(Json.object("field", sort)));
    }
    node.put("offset", shares ? "normalize" : "zero");
    node.set("as", Json.array(from, to));
    return node;
  }
}
