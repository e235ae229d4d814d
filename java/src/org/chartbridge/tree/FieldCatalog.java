// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Function;

/**
 * The fields that a model knows: those of the document and those that the model itself derives.
 * Filled by the reader, then only read.
 */
public final class FieldCatalog {
  /** A chain of derived fields longer than this is a circle. */
  private static final int MAX_CHAIN = 100;

  private final FieldCatalog outer;
  private final Map<String, Field> fields = new LinkedHashMap<>();

  /** @param outer the catalog of the enclosing model, or null */
  public FieldCatalog(FieldCatalog outer) {
    this.outer = outer;
  }

  public void add(Field field) {
    fields.put(field.name(), field);
  }

  /** The field of that name, or null. */
  public Field find(String name) {
    Field field = fields.get(name);
    return field != null || outer == null ? field : outer.find(name);
  }

  /**
   * The name of a field for people: a field that only passes on another one goes by that one's
   * name.
   */
  public String label(String name) {
    List<Field> chain = chain(name);
    return chain.isEmpty() ? name : chain.get(chain.size() - 1).label();
  }

  /** A value of a field for people. */
  public String valueLabel(String name, String value) {
    for (Field field : chain(name)) {
      String label = field.valueLabels().get(value);
      if (label != null) {
        return label;
      }
    }
    return value;
  }

  public boolean isNumeric(String name) {
    List<Field> chain = chain(name);
    return !chain.isEmpty() && chain.get(chain.size() - 1).isNumeric();
  }

  /**
   * The field in the data that a field takes its values from; null when it is computed or unknown.
   */
  public Field source(String name) {
    List<Field> chain = chain(name);
    Field last = chain.isEmpty() ? null : chain.get(chain.size() - 1);
    return last == null || last.derived() ? null : last;
  }

  /**
   * The value of a field in a record whose columns {@code values} gives, or null when it is
   * missing.
   */
  String value(String name, Function<String, String> values) {
    String own = values.apply(name);
    if (own != null) {
      return own;
    }
    Field source = source(name);
    return source == null ? null : values.apply(source.name());
  }

  /** Compares two values of a field the way the field's type asks for. */
  int compare(String name, String left, String right) {
    List<Field> chain = chain(name);
    Double leftNumber = number(chain, left);
    Double rightNumber = number(chain, right);
    boolean numbers = chain.isEmpty() || isNumeric(name);
    if (numbers && leftNumber != null && rightNumber != null) {
      return Double.compare(leftNumber, rightNumber);
    }
    for (Field field : chain) {
      List<String> order = new ArrayList<>(field.valueLabels().keySet());
      int a = order.indexOf(left);
      int b = order.indexOf(right);
      if (a >= 0 && b >= 0) {
        return Integer.compare(a, b);
      }
    }
    return left.compareTo(right);
  }

  /**
   * Single precision where the model works in it: 0.1 is then not below the threshold 0.1 that a
   * tool wrote in full.
   */
  private static Double number(List<Field> chain, String text) {
    try {
      boolean single = chain.stream().anyMatch(Field::isFloat);
      double value = single ? Float.parseFloat(text) : Double.parseDouble(text);
      return value == 0 ? 0.0 : value;
    } catch (NumberFormatException e) {
      return null;
    }
  }

  /** The field and those that it passes on, itself first; empty when it is unknown. */
  private List<Field> chain(String name) {
    List<Field> chain = new ArrayList<>();
    Field field = find(name);
    while (field != null && !chain.contains(field) && chain.size() < MAX_CHAIN) {
      chain.add(field);
      field = field.source() == null ? null : find(field.source());
    }
    return chain;
  }
}
