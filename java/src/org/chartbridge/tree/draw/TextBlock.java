// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.util.ArrayList;
import java.util.List;

/** Lines of text one below the other. */
final class TextBlock {
  /** Where the lines stand within a width. */
  enum Align {
    LEFT,
    CENTER
  }

  private record Line(String text, Font font, Color color, double width) {}

  private static final String ELLIPSIS = "\u2026";

  /** No picture has room for more. */
  private static final int LONGEST = 2000;

  private final List<Line> lines = new ArrayList<>();
  private double width;
  private double height;

  /** Adds one line, unless the text is empty. */
  TextBlock line(String text, Font font, Color color) {
    if (!text.isEmpty()) {
      double lineWidth = TreeStyle.width(text, font);
      lines.add(new Line(text, TreeStyle.fitting(font, text), color, lineWidth));
      width = Math.max(width, lineWidth);
      height += TreeStyle.lineHeight(font);
    }
    return this;
  }

  /** Adds a text on as many lines as it takes. */
  TextBlock wrapped(String text, Font font, Color color, double maxWidth, int maxLines) {
    for (String line : wrap(text, font, maxWidth, maxLines)) {
      line(line, font, color);
    }
    return this;
  }

  boolean isEmpty() {
    return lines.isEmpty();
  }

  double width() {
    return width;
  }

  double height() {
    return height;
  }

  List<String> texts() {
    return lines.stream().map(Line::text).toList();
  }

  void draw(Graphics2D g, double x, double y, double areaWidth, Align align) {
    double top = y;
    for (Line line : lines) {
      double indent = align == Align.LEFT ? 0 : (areaWidth - line.width()) / 2;
      g.setFont(line.font());
      g.setColor(line.color());
      double baseline = Math.round(top + TreeStyle.ascent(line.font()));
      g.drawString(line.text(), (float) (x + indent), (float) baseline);
      top += TreeStyle.lineHeight(line.font());
    }
  }

  /**
   * Breaks a text at spaces, and within words that are too long by themselves: where their parts
   * are joined, such as behind an underscore, else anywhere. Beyond {@code maxLines} the rest is
   * left out, and an ellipsis says so.
   */
  static List<String> wrap(String text, Font font, double maxWidth, int maxLines) {
    List<String> lines = new ArrayList<>();
    String rest = clean(text);
    while (!rest.isEmpty()) {
      int end = fitting(rest, font, maxWidth);
      if (end == rest.length()) {
        lines.add(rest);
        break;
      }
      if (lines.size() == maxLines - 1) {
        lines.add(shortened(rest, font, maxWidth));
        break;
      }
      int space = rest.charAt(end) == ' ' ? end : rest.lastIndexOf(' ', end - 1);
      int cut = space > 0 ? space : joint(rest, end);
      lines.add(rest.substring(0, cut).stripTrailing());
      rest = rest.substring(cut).strip();
    }
    return lines;
  }

  /** The last place up to {@code end} where a long word can be broken; {@code end} if none. */
  private static int joint(String word, int end) {
    for (int at = end; at > 1; at--) {
      if (isJoint(word, at)) {
        return at;
      }
    }
    return end;
  }

  /** Behind a sign that joins the parts of a name; never within a number or a date. */
  private static boolean isJoint(String word, int at) {
    char before = word.charAt(at - 1);
    char after = word.charAt(at);
    if (before == '_') {
      return after != '_';
    }
    boolean joins = before == '-' || before == '/' || before == '.' || before == ',';
    return joins && Character.isLetter(after) && Character.isLetterOrDigit(word.charAt(at - 2));
  }

  /** Line breaks and other control characters have no place in a line. */
  private static String clean(String text) {
    String start = text.length() > LONGEST ? text.substring(0, LONGEST) + ELLIPSIS : text;
    return start.replaceAll("\\p{Cntrl}+", " ").strip();
  }

  private static String shortened(String text, Font font, double maxWidth) {
    double room = maxWidth - TreeStyle.width(ELLIPSIS, font);
    return text.substring(0, fitting(text, font, room)).strip() + ELLIPSIS;
  }

  /** How many characters of a text fit into a width; at least one. */
  private static int fitting(String text, Font font, double maxWidth) {
    if (TreeStyle.width(text, font) <= maxWidth) {
      return text.length();
    }
    int low = 1;
    int high = text.length();
    while (high - low > 1) {
      int middle = (low + high) / 2;
      if (TreeStyle.width(text.substring(0, middle), font) <= maxWidth) {
        low = middle;
      } else {
        high = middle;
      }
    }
    boolean splitsPair = low < text.length() && Character.isLowSurrogate(text.charAt(low));
    return splitsPair ? Math.min(low + 1, text.length()) : low;
  }
}
