// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

/** What the layers of an element are made from. */
record LayerSource(
    Plan plan, ElementPlan element, AxisData x, AxisData y, Panels panels, Inks inks) {
  AxisData positionAxis() {
    return element.horizontal ? y : x;
  }

  AxisData measureAxis() {
    return element.horizontal ? x : y;
  }
}
