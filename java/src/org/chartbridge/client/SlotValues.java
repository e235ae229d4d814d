// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;

/** The slots of a template with the values that they have in one conversion. */
final class SlotValues {
  private final Map<String, Slot> slots = new LinkedHashMap<>();
  private final Map<String, JsonValue> given = new HashMap<>();

  /**
   * @throws ChartException when one is no slot, or two have the same name
   */
  SlotValues(List<JsonValue> declarations) {
    for (JsonValue declaration : declarations) {
      Slot slot = new Slot(declaration);
      if (slots.put(slot.name, slot) != null) {
        throw declaration.error("there are two slots called \"" + slot.name + "\"");
      }
    }
  }

  /**
   * Takes values for slots; they win over those that were taken before.
   *
   * @param values an object whose members are called as the slots
   * @throws ChartException when a value is for no slot or does not fit its slot
   */
  void take(JsonValue values) {
    values.expect(JsonValue.Kind.OBJECT, "values");
    for (Map.Entry<String, JsonValue> value : values.members().entrySet()) {
      slot(value.getKey(), value.getValue()).value(value.getValue());
      given.put(value.getKey(), value.getValue());
    }
  }

  Iterable<Slot> slots() {
    return slots.values();
  }

  /**
   * The value of a slot, or null when an optional one is left empty.
   *
   * @param place where the slot is named
   * @throws ChartException when there is no such slot, or its value is missing
   */
  String value(String name, JsonValue place) {
    return slot(name, place).value(given.get(name));
  }

  /** The value of a slot that may not be needed at all; null when it has none. */
  String valueIfAny(Slot slot) {
    JsonValue value = given.get(slot.name);
    return value == null && !slot.hasDefault() ? null : slot.value(value);
  }

  private Slot slot(String name, JsonValue place) {
    Slot slot = slots.get(name);
    if (slot != null) {
      return slot;
    }
    String rather = slots.isEmpty() ? "the template has none"
                                    : Suggestions.expected(name, slots.keySet());
    throw place.error("there is no slot \"" + name + "\"; " + rather);
  }
}
