// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.EnumSet;
import java.util.Set;

/** Where bars or areas of several colours at one position go. */
public enum Arrangement {
  /** Side by side. */
  GROUPED,
  /** On top of each other. */
  STACKED,
  /** On top of each other, each position scaled to 100 percent. */
  FILLED,
  /** Over each other, from the same baseline. */
  OVERLAID;

  /** The arrangements that make sense for these marks; empty for marks that have none. */
  public static Set<Arrangement> of(ElementKind kind) {
    return switch (kind) {
      case BAR, HISTOGRAM -> EnumSet.allOf(Arrangement.class);
      case AREA -> EnumSet.of(STACKED, FILLED, OVERLAID);
      default -> EnumSet.noneOf(Arrangement.class);
    };
  }

  /** The arrangement of marks that say nothing about it; null for marks that have none. */
  public static Arrangement defaultOf(ElementKind kind) {
    return switch (kind) {
      case BAR -> GROUPED;
      case AREA, HISTOGRAM -> STACKED;
      default -> null;
    };
  }
}
