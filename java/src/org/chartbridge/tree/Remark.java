// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.List;

/**
 * Something about a model that its nodes and branches do not show but that changes what they mean,
 * for example that predictions are rescaled.
 *
 * @param text a sentence for people, with the places {@code {0}}, {@code {1}} and so on for values
 * @param values what stands in those places, as the document writes it; numbers are shown like all
 *     others
 */
public record Remark(String text, List<String> values) {
  public Remark {
    values = List.copyOf(values);
  }

  static List<Remark> joined(List<Remark> first, List<Remark> second) {
    List<Remark> all = new ArrayList<>(first);
    all.addAll(second);
    return all;
  }

  public static Remark of(String text, String... values) {
    return new Remark(text, List.of(values));
  }
}
