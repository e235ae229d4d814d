// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.TextDirection;

/**
 * Finds the numbers and dates that a reader's program would break into lines, or turn around
 * between letters that run from right to left, while running text is written piece by piece.
 */
public final class WholeNumbers {
  /**
   * A part of a text.
   *
   * @param breaks where a program would break it; empty for what stays whole anyway
   * @param turns whether its parts would change places
   */
  public record Part(String text, List<Integer> breaks, boolean turns) {
    /** Whether it needs care. */
    public boolean isFragile() {
      return turns || !breaks.isEmpty();
    }
  }

  private static final String TURNING = "-/+\u2212\u2013";

  private final LineBreaks breaks;
  private final boolean mixed;
  private int place;

  /**
   * @param direction of what is around the text
   */
  public WholeNumbers(List<Inline> content, Locale language, TextDirection direction) {
    String whole = PlainText.of(content, '\n');
    breaks = new LineBreaks(whole, language);
    mixed = direction == TextDirection.RIGHT_TO_LEFT || TextDirection.isMixed(whole);
  }

  /** The next piece of the text in its parts. */
  public List<Part> next(String text) {
    List<Part> parts = new ArrayList<>();
    int start = 0;
    int i = 1;
    while (i < text.length()) {
      if (!breaks.isInside(place + i)) {
        i++;
        continue;
      }
      int end = Math.min(breaks.end(place + i) - place, text.length());
      Part number = number(i - 1, text.substring(i - 1, end));
      if (number.isFragile()) {
        if (start < i - 1) {
          parts.add(new Part(text.substring(start, i - 1), List.of(), false));
        }
        parts.add(number);
        start = end;
      }
      i = end + 1;
    }
    if (start < text.length()) {
      parts.add(new Part(text.substring(start), List.of(), false));
    }
    place += text.length();
    return parts;
  }

  /** Passes a line break. */
  public void skip() {
    place++;
  }

  private Part number(int start, String number) {
    boolean turns = mixed && number.chars().anyMatch(c -> TURNING.indexOf(c) >= 0);
    List<Integer> places = new ArrayList<>();
    for (int i = 1; i < number.length(); i++) {
      boolean mayEnd = !Character.isLetterOrDigit(number.charAt(i - 1));
      if (mayEnd && breaks.wouldBreak(place + start + i)) {
        places.add(i);
      }
    }
    return new Part(number, places, turns);
  }
}
