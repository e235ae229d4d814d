// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.LinkedHashMap;
import java.util.Map;
import org.chartbridge.tree.Field;
import org.chartbridge.tree.FieldCatalog;

/** Reads the fields of data dictionaries and transformations. */
final class FieldReader {
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

  private Field field(boolean derived) {
    String name = in.required("name");
    String displayName = in.attribute("displayName");
    String label = displayName == null || displayName.isBlank() ? name : displayName;
    boolean continuous = "continuous".equals(in.attribute("optype"));
    String dataType = in.attribute("dataType") == null ? "" : in.attribute("dataType");
    Map<String, String> values = new LinkedHashMap<>();
    String source = null;
    while (in.nextChild()) {
      if (in.name().equals("Value")) {
        addValue(values);
      } else if (in.name().equals("FieldRef") && derived) {
        source = in.required("field");
        in.skip();
      } else {
        in.skip();
      }
    }
    return new Field(name, label, continuous, dataType, values, source, derived);
  }

  /** Values that stand for "missing" or "invalid" are none of the field. */
  private void addValue(Map<String, String> values) {
    String property = in.attribute("property");
    String value = in.required("value");
    if (property == null || property.equals("valid")) {
      String displayValue = in.attribute("displayValue");
      values.put(value, displayValue == null || displayValue.isBlank() ? value : displayValue);
    }
    in.skip();
  }
}
