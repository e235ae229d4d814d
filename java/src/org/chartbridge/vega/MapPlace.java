// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;

/** Encodes a coordinate on a map. */
final class MapPlace {
  private MapPlace() {}

  static ObjectNode of(String field) {
    return Json.set(Json.object("field", field), "type", "quantitative");
  }
}
