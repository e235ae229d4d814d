// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.TextPosition;
import org.junit.jupiter.api.Test;

class ChartPlacesTest {
  private final ChartPlaces places = new ChartPlaces();

  private void put(String path, int line) {
    places.put(path, () -> new TextPosition(line, 1));
  }

  private int line(String path) {
    return places.of(path).line();
  }

  @Test
  void findsTheClosestPartThatHasAPlace() {
    put("", 1);
    put("elements", 2);
    put("elements[0]", 3);
    put("elements[0].x", 4);
    assertEquals(4, line("elements[0].x"));
    assertEquals(3, line("elements[0].y"));
    assertEquals(4, line("elements[0].x.column"));
    assertEquals(2, line("elements[1].x"));
    assertEquals(1, line("palette[3]"));
  }

  @Test
  void hasNoPlaceForAChartThatWasNotRead() {
    assertNull(places.of("elements[0].x"));
  }
}
