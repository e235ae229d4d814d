// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * A field of a model's data.
 *
 * @param name as predicates refer to it
 * @param label as people read it
 * @param continuous whether its values are numbers on a scale
 * @param dataType the PMML data type, for example {@code float}
 * @param valueLabels the listed values in their order, each with the text that people read
 * @param domain which values count as missing or invalid
 * @param source for a derived field that only passes on another one, that field's name; else null
 * @param missingSource what such a field holds when the other one is missing, or null
 * @param derived whether the model makes it, so that no data column has to
 */
public record Field(String name, String label, boolean continuous, String dataType,
    Map<String, String> valueLabels, Domain domain, String source, String missingSource,
    boolean derived) {
  /**
   * @param missing texts that stand for a missing value
   * @param invalid values that the field cannot have
   * @param intervals where its numbers can be; empty for everywhere
   */
  public record Domain(List<String> missing, List<String> invalid, List<Interval> intervals) {
    public static final Domain ANY = new Domain(List.of(), List.of(), List.of());

    public Domain {
      missing = List.copyOf(missing);
      invalid = List.copyOf(invalid);
      intervals = List.copyOf(intervals);
    }
  }

  /** A stretch of numbers, without its ends where they are open. */
  public record Interval(double left, boolean leftOpen, double right, boolean rightOpen) {
    boolean contains(double number) {
      return (leftOpen ? number > left : number >= left)
          && (rightOpen ? number < right : number <= right);
    }
  }

  /** A field of any value. */
  public Field(String name, String label, boolean continuous, String dataType,
      Map<String, String> valueLabels, String source, boolean derived) {
    this(name, label, continuous, dataType, valueLabels, Domain.ANY, source, null, derived);
  }

  public Field {
    valueLabels = Collections.unmodifiableMap(new LinkedHashMap<>(valueLabels));
  }

  boolean isNumeric() {
    return continuous || ValueIdentity.isNumeric(dataType);
  }

  boolean isFloat() {
    return dataType.equals("float");
  }

  String identity(String value) {
    return ValueIdentity.of(dataType, value);
  }

  boolean meansMissing(String value) {
    return contains(domain.missing(), value);
  }

  /** Whether the field can have a value at all. */
  boolean accepts(String value) {
    if (contains(domain.invalid(), value)) {
      return false;
    }
    return !isRestricted() || listed(value) != null || continuous && inInterval(value);
  }

  /** Whether there are values that the field cannot have. */
  public boolean canBeInvalid() {
    return !domain.invalid().isEmpty() || isRestricted();
  }

  private boolean isRestricted() {
    return continuous ? !domain.intervals().isEmpty() : !valueLabels.isEmpty();
  }

  private boolean inInterval(String value) {
    try {
      double number = Double.parseDouble(value);
      return domain.intervals().stream().anyMatch(interval -> interval.contains(number));
    } catch (NumberFormatException e) {
      return false;
    }
  }

  /** The value as the field lists it, or null when it does not. */
  String listed(String value) {
    if (valueLabels.containsKey(value)) {
      return value;
    }
    if (dataType.isEmpty() || dataType.equals("string")) {
      return null;
    }
    String identity = identity(value);
    for (String known : valueLabels.keySet()) {
      if (identity(known).equals(identity)) {
        return known;
      }
    }
    return null;
  }

  private boolean contains(List<String> values, String value) {
    String identity = identity(value);
    return values.stream().anyMatch(known -> identity(known).equals(identity));
  }
}
