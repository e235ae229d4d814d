// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.Collection;
import java.util.Locale;

/** Words the part of a message that says what would have been right. */
public final class Suggestions {
  private Suggestions() {}

  /**
   * The known name that {@code found} most likely stands for, or null when none is close. Letter
   * case does not count; a third of the letters may differ, but not all.
   */
  public static String closest(String found, Collection<String> known) {
    String wanted = found.toLowerCase(Locale.ROOT);
    int best = Math.min(wanted.length(), Math.max(1, wanted.length() / 3) + 1);
    String closest = null;
    for (String name : known) {
      int distance = distance(wanted, name.toLowerCase(Locale.ROOT), best);
      if (distance < best) {
        best = distance;
        closest = name;
      }
    }
    return closest;
  }

  /** For example {@code expected one of x, y, color; did you mean "color"?} */
  public static String expected(String found, Collection<String> known) {
    String closest = closest(found, known);
    return oneOf(known) + (closest == null ? "" : "; did you mean \"" + closest + "\"?");
  }

  /** For example {@code expected one of x, y, color}. */
  public static String oneOf(Collection<String> known) {
    return (known.size() == 1 ? "expected " : "expected one of ") + String.join(", ", known);
  }

  /** Edit distance with swaps of neighbours; {@code limit} when it is at least that. */
  private static int distance(String a, String b, int limit) {
    if (Math.abs(a.length() - b.length()) >= limit) {
      return limit;
    }
    int[][] cost = new int[a.length() + 1][b.length() + 1];
    for (int i = 0; i <= a.length(); i++) {
      for (int j = 0; j <= b.length(); j++) {
        cost[i][j] = cell(a, b, cost, i, j);
      }
    }
    return Math.min(limit, cost[a.length()][b.length()]);
  }

  private static int cell(String a, String b, int[][] cost, int i, int j) {
    if (i == 0 || j == 0) {
      return i + j;
    }
    int change = a.charAt(i - 1) == b.charAt(j - 1) ? 0 : 1;
    int best = Math.min(cost[i - 1][j - 1] + change, Math.min(cost[i - 1][j], cost[i][j - 1]) + 1);
    boolean swapped =
        i > 1 && j > 1 && a.charAt(i - 1) == b.charAt(j - 2) && a.charAt(i - 2) == b.charAt(j - 1);
    return swapped ? Math.min(best, cost[i - 2][j - 2] + 1) : best;
  }
}
