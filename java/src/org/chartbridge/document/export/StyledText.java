// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayDeque;
import java.util.Deque;
import java.util.List;
import java.util.Locale;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.TextStyle;

/** Running text with the style of each character, for those who measure it. */
final class StyledText implements InlineVisitor {
  /** Text of a fixed width is a little smaller than what surrounds it. */
  private static final double CODE_SIZE = 0.92;

  private final StringBuilder text = new StringBuilder();
  private final StringBuilder styles = new StringBuilder();
  private final Deque<Integer> open = new ArrayDeque<>();

  /**
   * @param style of all of it
   */
  StyledText(List<Inline> content, int style) {
    open.push(style);
    content.forEach(inline -> inline.accept(this));
  }

  @Override
  public void text(String characters) {
    text.append(characters);
    styles.append(Character.toString(open.peek()).repeat(characters.length()));
  }

  @Override
  public void begin(TextStyle style) {
    open.push(open.peek() | switch (style) {
      case EMPHASIS -> Typeface.ITALIC;
      case STRONG -> Typeface.BOLD;
      case CODE -> PageFonts.CODE;
    });
  }

  @Override
  public void end(TextStyle style) {
    open.pop();
  }

  @Override
  public void beginLink(String target) {}

  @Override
  public void endLink(String target) {}

  @Override
  public void lineBreak() {
    text("\n");
  }

  String text() {
    return text.toString();
  }

  /** The width of a part for a size of 1. */
  double width(int from, int to, Locale language) {
    double width = 0;
    int start = from;
    for (int i = from + 1; i <= to; i++) {
      if (i == to || styles.charAt(i) != styles.charAt(start)) {
        int style = styles.charAt(start);
        double part = PageFonts.width(text.substring(start, i), style, language);
        width += (style & PageFonts.CODE) != 0 ? part * CODE_SIZE : part;
        start = i;
      }
    }
    return width;
  }
}
