// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.chart.Words;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlText;

/**
 * Turns a chart in JSON into the tree of its chart XML. The two mirror each other: an object is an
 * element, a member with a text, a number, true or false is an attribute. Every element of the tree
 * stands at the place of its object, so that whoever reads the tree points into the JSON text.
 */
final class ChartTree {
  private static final String SLOT = "slot";
  private static final String COLUMNS = "columns";

  /** Members that an object is about: where they are left empty, so is the whole object. */
  private static final List<String> SUBJECTS = List.of("column", "name");

  private final String namespace;
  private final SlotValues values;
  /** The slots by the places where they are named. */
  private final Map<TextPosition, String> filled = new HashMap<>();

  ChartTree(String namespace, SlotValues values) {
    this.namespace = namespace;
    this.values = values;
  }

  /**
   * @throws ChartException when it mirrors no tree, or names a slot that there is not
   */
  XmlElement chart(JsonValue chart) {
    XmlElement root = object("chart", chart.expect(JsonValue.Kind.OBJECT, "chart"));
    declareColumns(root);
    return root;
  }

  /** The error with the slot that it is about, when it is about the value of one. */
  ChartException explained(ChartException error) {
    for (Map.Entry<TextPosition, String> place : filled.entrySet()) {
      if (error.getMessage().startsWith(place.getKey() + ": ")) {
        return new ChartException(
            error.getMessage() + " (the value of slot \"" + place.getValue() + "\")", error);
      }
    }
    return error;
  }

  private XmlElement element(String name, JsonValue place) {
    return XmlElement.at(namespace, name, place.source(), place.offset());
  }

  /** Null when the object is about a slot that is left empty. */
  private XmlElement object(String name, JsonValue object) {
    object.expect(JsonValue.Kind.OBJECT, "<" + name + ">");
    for (String subject : SUBJECTS) {
      JsonValue value = object.member(subject);
      if (value != null && isSlot(value) && scalar(value) == null) {
        return null;
      }
    }
    XmlElement element = element(name, object);
    for (Map.Entry<String, JsonValue> member : object.members().entrySet()) {
      member(element, member.getKey(), member.getValue());
    }
    return element;
  }

  private void member(XmlElement element, String name, JsonValue value) {
    boolean list = value.is(JsonValue.Kind.ARRAY);
    switch (element.name() + "." + name) {
      case "chart.columns" -> element.with(list(name, "column", value));
      case "chart.elements" -> element.with(elements(value));
      case "chart.palette" -> element.with(texts(element(name, value), "color", value));
      case "chart.data" -> element.with(data(value));
      case "column.categories" -> texts(element, "category", value);
      case "histogram.bins" -> {
        if (list) {
          value.items().forEach(bin -> element.with(object("bin", bin)));
        } else {
          attribute(element, name, value);
        }
      }
      default -> {
        if (value.is(JsonValue.Kind.OBJECT) && !isSlot(value)) {
          element.with(object(name, value));
        } else {
          attribute(element, name, value);
        }
      }
    }
  }

  private XmlElement list(String name, String childName, JsonValue value) {
    XmlElement list = element(name, value);
    for (JsonValue item : value.expect(JsonValue.Kind.ARRAY, name).items()) {
      list.with(object(childName, item));
    }
    return list;
  }

  /** Each layer is an object with one member, which is called as its marks. */
  private XmlElement elements(JsonValue value) {
    XmlElement elements = element("elements", value);
    for (JsonValue item : value.expect(JsonValue.Kind.ARRAY, "elements").items()) {
      item.expect(JsonValue.Kind.OBJECT, "an element");
      if (item.members().size() != 1) {
        throw item.error("an element is an object with one member, such as {\"bar\": {...}}, but"
            + " this one has " + item.members().size());
      }
      item.members().forEach((name, layer) -> elements.with(object(name, layer)));
    }
    return elements;
  }

  private XmlElement texts(XmlElement parent, String childName, JsonValue value) {
    for (JsonValue item : value.expect(JsonValue.Kind.ARRAY, childName + " list").items()) {
      String text = scalar(item);
      if (text != null) {
        parent.with(element(childName, item).with("value", text, item.offset()));
      }
    }
    return parent;
  }

  private XmlElement data(JsonValue value) {
    String csv = scalar(value);
    return csv == null ? null : element("data", value).with(new XmlText(csv));
  }

  private void attribute(XmlElement element, String name, JsonValue value) {
    element.with(name, scalar(value), value.offset());
  }

  private static boolean isSlot(JsonValue value) {
    return value.is(JsonValue.Kind.OBJECT) && value.members().size() == 1
        && value.member(SLOT) != null;
  }

  /** The text of a value, of a slot or of an array of both; null for null and for empty slots. */
  private String scalar(JsonValue value) {
    if (isSlot(value)) {
      String slot = value.member(SLOT).expect(JsonValue.Kind.TEXT, SLOT).text();
      filled.put(TextPosition.of(value.source(), value.offset()), slot);
      return values.value(slot, value.member(SLOT));
    }
    if (!value.is(JsonValue.Kind.ARRAY)) {
      return plain(value);
    }
    StringBuilder joined = new StringBuilder();
    for (JsonValue part : value.items()) {
      String text = scalar(part);
      joined.append(text == null ? "" : text);
    }
    return joined.toString();
  }

  private static String plain(JsonValue value) {
    if (value.is(JsonValue.Kind.OBJECT)) {
      throw value.error("found an object; expected a text, a number, true, false or"
          + " {\"slot\": \"name\"}");
    }
    return value.text();
  }

  /** What a slot wants its column to hold is said in the chart, unless the chart says it itself. */
  private void declareColumns(XmlElement root) {
    Map<String, Slot> declared = new HashMap<>();
    for (Slot slot : values.slots()) {
      String column = slot.holds == null ? null : values.valueIfAny(slot);
      if (column == null) {
        continue;
      }
      Slot other = declared.putIfAbsent(column, slot);
      if (other != null && other.holds != slot.holds) {
        throw slot.place.error("slots \"" + other.name + "\" and \"" + slot.name + "\" both name"
            + " the column \"" + column + "\", which cannot hold " + Words.of(other.holds) + " and "
            + Words.of(slot.holds));
      }
      if (other == null && !isDeclared(root, column)) {
        declare(root, column, slot);
      }
    }
  }

  private static boolean isDeclared(XmlElement root, String column) {
    XmlElement columns = root.child(COLUMNS);
    return columns != null && columns.children().stream()
        .anyMatch(child -> column.equals(child.attribute("name")));
  }

  private void declare(XmlElement root, String column, Slot slot) {
    XmlElement columns = root.child(COLUMNS);
    if (columns == null) {
      columns = element(COLUMNS, slot.place);
      root.with(columns);
    }
    columns.with(element("column", slot.place).with("name", column)
        .with("kind", Words.of(slot.holds)));
  }
}
