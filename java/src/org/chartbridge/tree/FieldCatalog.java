// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
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
  private final Map<String, FieldUse> uses = new HashMap<>();
  /** The places of the values that a field lists, by the field's name and their identity. */
  private final Map<String, Map<String, Integer>> places = new HashMap<>();

  /** @param outer the catalog of the enclosing model, or null */
  public FieldCatalog(FieldCatalog outer) {
    this.outer = outer;
  }

  public void add(Field field) {
    fields.put(field.name(), field);
    Map<String, Integer> own = new HashMap<>();
    int place = 0;
    for (String value : field.valueLabels().keySet()) {
      own.putIfAbsent(field.identity(value), place++);
    }
    places.put(field.name(), own);
  }

  /** Where a field lists a value, by the value's identity; null when it does not. */
  private Integer place(Field field, String identity) {
    return fields.containsKey(field.name()) || outer == null
        ? places.get(field.name()).get(identity) : outer.place(field, identity);
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
      String listed = field.listed(value);
      if (listed != null) {
        return field.valueLabels().get(listed);
      }
    }
    return value;
  }

  /** A text that is equal for texts that are the same value of the field. */
  public String identity(String name, String value) {
    Field field = find(name);
    if (field == null) {
      return value;
    }
    // A field may pass on numbers under another type.
    boolean passed = !ValueIdentity.isNumeric(field.dataType()) && isNumeric(name);
    Double number = passed ? number(chain(name), value) : null;
    return number == null ? field.identity(value) : number.toString();
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

  /** The field that the model computes and that a field takes its values from, or null. */
  Field computed(String name) {
    List<Field> chain = chain(name);
    Field last = chain.isEmpty() ? null : chain.get(chain.size() - 1);
    return last == null || !last.derived() ? null : last;
  }

  /** What a field holds when the field that it passes on is missing, or null. */
  public String missingSource(String name) {
    for (Field field : chain(name)) {
      if (field.missingSource() != null) {
        return field.missingSource();
      }
    }
    return null;
  }

  /** The values that a field can have, when the document lists them; else empty. */
  Set<String> categories(String name) {
    for (Field field : chain(name)) {
      if (!field.continuous() && !field.valueLabels().isEmpty()) {
        return field.valueLabels().keySet();
      }
    }
    return Set.of();
  }

  /** The names of all fields, for a message that says what there is. */
  public Set<String> names() {
    Set<String> names = outer == null ? new LinkedHashSet<>() : outer.names();
    names.addAll(fields.keySet());
    return names;
  }

  /** Says what this model does with the values of a field. */
  public void use(String name, FieldUse use) {
    uses.put(name, use);
  }

  /** What models do with the values of a field, the outermost model first. */
  public List<FieldUse> uses(String name) {
    List<FieldUse> found = outer == null ? new ArrayList<>() : outer.uses(name);
    if (uses.containsKey(name)) {
      found.add(uses.get(name));
    }
    return found;
  }

  /**
   * The value of a field in a record whose columns {@code values} gives, as the model sees it: with
   * what stands in for missing, invalid and extreme values. Null when it is missing.
   */
  String value(String name, Function<String, String> values) {
    return value(name, values, 0);
  }

  private String value(String name, Function<String, String> values, int links) {
    Field field = find(name);
    String raw = values.apply(name);
    List<FieldUse> treatments = uses(name);
    if (field != null && field.derived()) {
      boolean passesOn = raw == null && field.source() != null && links < MAX_CHAIN;
      raw = passesOn ? value(field.source(), values, links + 1) : raw;
      raw = passesOn && raw == null ? field.missingSource() : raw;
    } else if (field != null && raw != null) {
      raw = field.meansMissing(raw) ? null : raw;
      raw = raw == null || treatments.isEmpty() || field.accepts(raw)
          ? raw : insteadOfInvalid(treatments.get(0), raw);
    }
    for (FieldUse use : treatments) {
      raw = use.treated(raw);
    }
    return raw;
  }

  private static String insteadOfInvalid(FieldUse use, String value) {
    return switch (use.invalid()) {
      case AS_MISSING -> null;
      case AS_VALUE -> use.invalidReplacement();
      default -> value;
    };
  }

  /**
   * Whether the model has no result at all for a record with that value in the field's column.
   *
   * @param value null when it is missing
   */
  boolean rejects(Field field, String value) {
    List<FieldUse> treatments = uses(field.name());
    if (treatments.isEmpty()) {
      return false;
    }
    String current = value == null || field.meansMissing(value) ? null : value;
    if (current != null && !field.accepts(current)) {
      FieldUse outermost = treatments.get(0);
      if (outermost.invalid() == FieldUse.Invalid.RETURN_INVALID) {
        return true;
      }
      current = insteadOfInvalid(outermost, current);
    }
    for (FieldUse use : treatments) {
      if (use.rejects(current)) {
        return true;
      }
      current = use.treated(current);
    }
    return false;
  }

  /** Compares two values of a field the way the field's type asks for. */
  int compare(String name, String left, String right) {
    List<Field> chain = chain(name);
    if (chain.isEmpty() || isNumeric(name)) {
      Double leftNumber = number(chain, left);
      Double rightNumber = leftNumber == null ? null : number(chain, right);
      if (rightNumber != null) {
        return Double.compare(leftNumber, rightNumber);
      }
    }
    for (Field field : chain) {
      String leftIdentity = field.identity(left);
      String rightIdentity = field.identity(right);
      if (leftIdentity.equals(rightIdentity)) {
        return 0;
      }
      Integer leftPlace = place(field, leftIdentity);
      Integer rightPlace = place(field, rightIdentity);
      if (leftPlace != null && rightPlace != null) {
        return Integer.compare(leftPlace, rightPlace);
      }
    }
    return left.compareTo(right);
  }

  /**
   * A text that is equal for values that {@link #compare} finds equal, and that compares like them.
   * Comparing many values with many goes through sets of these.
   */
  String equality(String name, String value) {
    List<Field> chain = chain(name);
    Double number = chain.isEmpty() || isNumeric(name) ? number(chain, value) : null;
    if (number != null) {
      return number.toString();
    }
    String text = value;
    for (Field field : chain) {
      text = field.identity(text);
    }
    return text;
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
