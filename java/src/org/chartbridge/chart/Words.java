// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collection;
import java.util.List;
import java.util.Locale;

/**
 * The words by which chart texts of every kind name the constants of the model: their names in
 * small letters.
 */
public final class Words {
  private Words() {}

  public static String of(Enum<?> constant) {
    return constant.name().toLowerCase(Locale.ROOT);
  }

  public static <E extends Enum<E>> List<String> all(Class<E> type) {
    return all(Arrays.asList(type.getEnumConstants()));
  }

  public static List<String> all(Collection<? extends Enum<?>> constants) {
    List<String> words = new ArrayList<>();
    for (Enum<?> constant : constants) {
      words.add(of(constant));
    }
    return words;
  }

  /** The constant of that word, or null. */
  public static <E extends Enum<E>> E find(Class<E> type, String word) {
    for (E constant : type.getEnumConstants()) {
      if (of(constant).equals(word)) {
        return constant;
      }
    }
    return null;
  }
}
