// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * A chart that cannot be read or drawn. The message is for the person who wrote the chart: it names
 * the element, the column or the line, and what would be right. It is always one line: line breaks
 * in quoted names become spaces.
 */
public class ChartException extends RuntimeException {
  private static final long serialVersionUID = 1L;

  public ChartException(String message) {
    super(oneLine(message));
  }

  public ChartException(String message, Throwable cause) {
    super(oneLine(message), cause);
  }

  /** What to tell when a thread runs out of stack, which inputs alone cannot bring about. */
  public static ChartException tooLittleStack(StackOverflowError e) {
    return new ChartException(
        "The thread that calls has too little stack for this; give it 1 MB or more.", e);
  }

  /** The text with every run of line breaks, tabs and spaces around them as one space. */
  public static String oneLine(String text) {
    return text == null
        ? null
        : text.replaceAll(
            "[ \\t]*[\\r\\n\\t\\u0085\\u2028\\u2029][\\s\\u0085\\u2028\\u2029]*", " ");
  }
}
