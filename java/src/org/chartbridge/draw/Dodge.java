// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Collection;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;

/** Shares the width at a position between the colours that stand there side by side. */
final class Dodge {
  private final Map<Integer, Integer> slots = new HashMap<>();
  private final int count;

  private record Place(int panel, double position) {}

  /** @param horizontal whether positions run along the y axis */
  Dodge(Collection<Group> groups, boolean horizontal, boolean sideBySide) {
    Map<Place, TreeSet<Integer>> colorsAt = new HashMap<>();
    TreeSet<Integer> colors = new TreeSet<>();
    int most = 0;
    for (Group group : groups) {
      Place place = new Place(group.panel, group.position(horizontal));
      TreeSet<Integer> here = colorsAt.computeIfAbsent(place, key -> new TreeSet<>());
      here.add(group.color);
      colors.add(group.color);
      most = Math.max(most, here.size());
    }
    boolean dodges = sideBySide && most > 1;
    for (int color : List.copyOf(colors)) {
      slots.put(color, dodges ? slots.size() : 0);
    }
    count = dodges ? slots.size() : 1;
  }

  int count() {
    return count;
  }

  /** Lower end of a colour's share of a width that is centred at 0. */
  double from(int color, double width) {
    return -width / 2 + slots.get(color) * width / count;
  }

  double to(int color, double width) {
    return from(color, width) + width / count;
  }
}
