// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.HashMap;
import java.util.Map;
import java.util.Set;
import java.util.function.Predicate;
import java.util.function.Supplier;

/**
 * Where the parts of a chart stand in the text that it was read from. Filled by one thread, then
 * only asked. It is no part of what a chart says, so all places are equal to each other.
 */
public final class ChartPlaces {
  /** No part stands anywhere. */
  public static final ChartPlaces NONE = new ChartPlaces(Map.of());

  private final Map<String, Supplier<TextPosition>> places;

  public ChartPlaces() {
    this(new HashMap<>());
  }

  private ChartPlaces(Map<String, Supplier<TextPosition>> places) {
    this.places = places;
  }

  /** Remembers a place; it is worked out only when it is asked for. */
  public void put(String path, Supplier<TextPosition> place) {
    places.put(path, place);
  }

  /** All paths whose places are remembered. */
  public Set<String> paths() {
    return Set.copyOf(places.keySet());
  }

  /** The places of some paths. */
  public ChartPlaces only(Predicate<String> wanted) {
    ChartPlaces some = new ChartPlaces();
    places.forEach((path, place) -> {
      if (wanted.test(path)) {
        some.put(path, place);
      }
    });
    return some;
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

  @Override
  public boolean equals(Object other) {
    return other instanceof ChartPlaces;
  }

  @Override
  public int hashCode() {
    return 0;
  }

  @Override
  public String toString() {
    return "places";
  }
}
