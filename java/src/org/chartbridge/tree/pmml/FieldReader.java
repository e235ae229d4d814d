// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.tree.Field;
import org.chartbridge.tree.FieldCatalog;

/** Reads the fields of data dictionaries and transformations. */
final class FieldReader {
  private static final int VALID = 0;
  private static final int INVALID = 1;

  private final PmmlCursor in;

  FieldReader(PmmlCursor in) {
    this.in = in;
  }

  /**
   * Reads the current {@code DataDictionary}, {@code TransformationDictionary} or {@code
   * LocalTransformations}.
   */
  void read(FieldCatalog fields) {
    while (in.nextChild()) {
      switch (in.name()) {
        case "DataField" -> fields.add(field(false));
        case "DerivedField" -> fields.add(field(true));
        default -> in.skip();
      }
    }
  }

  /** Reads the current field of the output of a model, which models after it can use. */
  void readOutputField(FieldCatalog fields) {
    Field field = field(true);
    if (fields.find(field.name()) == null) {
      fields.add(field);
    }
  }

  private Field field(boolean derived) {
    String name = in.required("name");
    String displayName = in.attribute("displayName");
    String label = displayName == null || displayName.isBlank() ? name : displayName;
    boolean continuous = "continuous".equals(in.attribute("optype"));
    String dataType = in.attribute("dataType") == null ? "" : in.attribute("dataType");
    Map<String, String> values = new LinkedHashMap<>();
    List<String> missing = new ArrayList<>();
    List<String> invalid = new ArrayList<>();
    List<Field.Interval> intervals = new ArrayList<>();
    String source = null;
    String missingSource = null;
    while (in.nextChild()) {
      switch (in.name()) {
        case "Value" -> addValue(values, invalid, missing);
        case "Interval" -> intervals.add(interval());
        case "FieldRef" -> {
          source = derived ? in.required("field") : null;
          missingSource = in.attribute("mapMissingTo");
          in.skip();
        }
        default -> in.skip();
      }
    }
    return new Field(name, label, continuous, dataType, values,
        new Field.Domain(missing, invalid, intervals), source, missingSource, derived);
  }

  /** Values that stand for "missing" or "invalid" are none of the field. */
  private void addValue(Map<String, String> values, List<String> invalid, List<String> missing) {
    int property = in.choice("property", VALID, "valid", "invalid", "missing");
    String value = in.required("value");
    if (property == VALID) {
      String displayValue = in.attribute("displayValue");
      values.put(value, displayValue == null || displayValue.isBlank() ? value : displayValue);
    } else {
      (property == INVALID ? invalid : missing).add(value);
    }
    in.skip();
  }

  private Field.Interval interval() {
    int closure = in.choice(
        "closure", 0, "closedClosed", "closedOpen", "openClosed", "openOpen");
    double left = in.number("leftMargin", Double.NEGATIVE_INFINITY);
    double right = in.number("rightMargin", Double.POSITIVE_INFINITY);
    in.skip();
    return new Field.Interval(left, closure >= 2, right, closure % 2 == 1);
  }
}
