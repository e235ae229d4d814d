// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.Map;

/**
 * A field of a model's data.
 *
 * @param name as predicates refer to it
 * @param label as people read it
 * @param continuous whether its values are numbers on a scale
 * @param dataType the PMML data type, for example {@code float}
 * @param valueLabels the listed values in their order, each with the text that people read
 * @param source for a derived field that only passes on another one, that field's name; else null
 * @param derived whether a transformation makes it, so that no data column has to
 */
public record Field(String name, String label, boolean continuous, String dataType,
    Map<String, String> valueLabels, String source, boolean derived) {
  public Field {
    valueLabels = Collections.unmodifiableMap(new LinkedHashMap<>(valueLabels));
  }

  boolean isNumeric() {
    return continuous || isFloat() || dataType.equals("double") || dataType.equals("integer");
  }

  boolean isFloat() {
    return dataType.equals("float");
  }
}
