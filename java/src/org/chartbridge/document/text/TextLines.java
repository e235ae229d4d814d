// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.document.model.Alignment;

/** Breaks text into lines of a width in columns. */
final class TextLines {
  private TextLines() {}

  /**
   * @param text its line ends are kept
   * @param breakWords whether words longer than a line are cut; else they stick out
   */
  static List<String> wrap(String text, int width, boolean breakWords) {
    List<String> lines = new ArrayList<>();
    for (String paragraph : text.split("\n", -1)) {
      StringBuilder line = new StringBuilder();
      for (String word : paragraph.split(" ")) {
        add(word, line, lines, width, breakWords);
      }
      lines.add(line.toString());
    }
    return lines;
  }

  private static void add(
      String word, StringBuilder line, List<String> lines, int width, boolean breakWords) {
    boolean fits = TextWidth.of(line.toString()) + 1 + TextWidth.of(word) <= width;
    if (line.length() > 0 && !fits) {
      lines.add(line.toString());
      line.setLength(0);
    }
    if (line.length() > 0) {
      line.append(' ');
    }
    String rest = word;
    while (breakWords && TextWidth.of(rest) > width) {
      int end = prefix(rest, width);
      lines.add(rest.substring(0, end));
      rest = rest.substring(end);
    }
    line.append(rest);
  }

  /** How many characters fit, at least one. */
  private static int prefix(String text, int width) {
    int end = text.offsetByCodePoints(0, 1);
    int used = TextWidth.of(text.codePointAt(0));
    while (end < text.length()) {
      int next = text.codePointAt(end);
      used += TextWidth.of(next);
      if (used > width) {
        break;
      }
      end += Character.charCount(next);
    }
    return end;
  }

  /** The line with blanks in front of it as its alignment asks for. */
  static String aligned(String line, int width, Alignment alignment) {
    int room = Math.max(0, width - TextWidth.of(line));
    return switch (alignment) {
      case CENTER -> " ".repeat(room / 2) + line;
      case RIGHT -> " ".repeat(room) + line;
      default -> line;
    };
  }
}
