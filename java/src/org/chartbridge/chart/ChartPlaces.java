// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.HashMap;
import java.util.Map;
import java.util.Set;
import java.util.function.Supplier;

/** Where the parts of a chart stand in the text that it was read from. One thread. */
public final class ChartPlaces {
  private final Map<String, Supplier<TextPosition>> places = new HashMap<>();

  /** Remembers a place; it is worked out only when it is asked for. */
  public void put(String path, Supplier<TextPosition> place) {
    places.put(path, place);
  }

  /** All paths whose places are remembered. */
  public Set<String> paths() {
    return Set.copyOf(places.keySet());
  }

  /** The place of the path or of the closest part around it; null when there is none. */
  public TextPosition of(String path) {
    String part = path;
    while (!places.containsKey(part)) {
      int cut = Math.max(part.lastIndexOf('.'), part.lastIndexOf('['));
      if (cut < 0) {
        return places.containsKey("") ? places.get("").get() : null;
      }
      part = part.substring(0, cut);
    }
    return places.get(part).get();
  }
}
