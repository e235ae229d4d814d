// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.JsonNodeFactory;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;

/** Makes JSON nodes. */
final class Json {
  private static final JsonNodeFactory NODES = JsonNodeFactory.instance;
  private static final double LARGEST_WHOLE = 1e15;

  private Json() {}

  static ObjectNode object() {
    return NODES.objectNode();
  }

  /** An object with one member. */
  static ObjectNode object(String name, Object value) {
    return set(object(), name, value);
  }

  static ObjectNode set(ObjectNode object, String name, Object value) {
    object.set(name, node(value));
    return object;
  }

  static ArrayNode array(Object... values) {
    return array(List.of(values));
  }

  static ArrayNode array(List<?> values) {
    ArrayNode array = NODES.arrayNode();
    values.forEach(value -> array.add(node(value)));
    return array;
  }

  /** A text, number, boolean, list or node as a node; whole numbers come without a point. */
  static JsonNode node(Object value) {
    if (value == null) {
      return NODES.nullNode();
    }
    if (value instanceof JsonNode node) {
      return node;
    }
    if (value instanceof Boolean flag) {
      return NODES.booleanNode(flag);
    }
    if (value instanceof Number number) {
      return number(number.doubleValue());
    }
    if (value instanceof List<?> list) {
      return array(list);
    }
    return NODES.textNode(value.toString());
  }

  private static JsonNode number(double value) {
    boolean whole = value == Math.rint(value) && Math.abs(value) < LARGEST_WHOLE;
    return whole ? NODES.numberNode((long) value) : NODES.numberNode(value);
  }

  /** A length in pixels, as exact as anyone can see. */
  static double pixels(double length) {
    return Math.round(length * 100) / 100.0;
  }

  /** A value that Vega works out. */
  static ObjectNode expression(String expression) {
    return object("expr", expression);
  }
}
