// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.LineBreaks;
import org.chartbridge.document.model.Alignment;

/** Breaks text into lines of a width in columns. */
final class TextLines {
  private TextLines() {}

  /** Breaks between words only. */
  static List<String> wrap(String text, int width, Locale language) {
    return wrap(text, width, language, LineBreaks.Detail.WORDS);
  }

  /**
   * @param text its line ends are kept
   * @param detail where it may be broken; what is longer than a line otherwise sticks out
   */
  static List<String> wrap(String text, int width, Locale language, LineBreaks.Detail detail) {
    List<String> lines = new ArrayList<>();
    for (String paragraph : text.split("\n", -1)) {
      LineBreaks breaks = new LineBreaks(paragraph, language);
      StringBuilder line = new StringBuilder();
      for (String word : breaks.pieces(LineBreaks.Detail.WORDS)) {
        // Words are broken only where they do not fit a line of their own.
        boolean whole = TextWidth.of(word.stripTrailing()) <= width;
        List<String> pieces = whole
            ? List.of(word) : new LineBreaks(word, language).pieces(detail);
        pieces.forEach(piece -> add(piece, line, lines, width));
      }
      lines.add(line.toString().stripTrailing());
    }
    return lines;
  }

  private static void add(String piece, StringBuilder line, List<String> lines, int width) {
    boolean fits = TextWidth.of(line.toString()) + TextWidth.of(piece.stripTrailing()) <= width;
    if (line.length() > 0 && !fits) {
      lines.add(line.toString().stripTrailing());
      line.setLength(0);
    }
    line.append(piece);
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
