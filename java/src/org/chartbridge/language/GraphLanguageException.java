// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.List;
import org.chartbridge.chart.ChartException;

/**
 * The mistakes in a graph-language text. The message is the first one in a line, with the number of
 * the others; {@link #problems} has them all.
 */
public final class GraphLanguageException extends ChartException {
  private static final long serialVersionUID = 1L;

  private final transient List<String> problems;

  GraphLanguageException(List<String> problems, boolean complete) {
    super(message(problems, complete));
    this.problems = List.copyOf(problems);
  }

  /**
   * One line for each mistake, in the order of the text: {@code line 3, column 12: found "colour",
   * expected ...}.
   */
  public List<String> problems() {
    return problems;
  }

  private static String message(List<String> problems, boolean complete) {
    int more = problems.size() - 1;
    if (more == 0) {
      return problems.get(0);
    }
    String count = (complete ? "" : "at least ") + more + " more mistake" + (more == 1 ? "" : "s");
    return problems.get(0) + " (and " + count + ")";
  }
}
