// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Shape;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.Map;

/**
 * One mark of a drawn chart.
 *
 * @param area its outline in pixels at 100 percent
 * @param values what it shows: the label of each value and its text, in the order to read them
 * @param element the index of its element in the chart, from 0
 * @param panel the heading of its panel; empty when the chart has just one
 */
public record Mark(Shape area, Map<String, String> values, int element, String panel) {
  public Mark {
    values = Collections.unmodifiableMap(new LinkedHashMap<>(values));
  }

  /** The values as one text, a line for each. */
  public String tooltip() {
    StringBuilder text = new StringBuilder();
    values.forEach((label, value) -> {
      if (!text.isEmpty()) {
        text.append('\n');
      }
      text.append(label).append(": ").append(value);
    });
    return text.toString();
  }
}
