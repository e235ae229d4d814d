// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.font.FontRenderContext;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;

/**
 * The fonts of a picture, and how wide texts are in them. Widths do not depend on the device, so
 * that a layout fits all.
 */
final class Typography {
  /** No room takes a text of so many characters uncut. */
  private static final int LONGEST = 5000;

  static final String ELLIPSIS = "\u2026";
  private static final FontRenderContext CONTEXT = new FontRenderContext(null, true, true);
  private static final double LEADING = 1.22;
  private static final String SPACES = "\\s+";
  /** After a hyphen or a slash within a word. */
  private static final String BREAK_IN_WORD = "(?<=\\p{L}-)(?=\\p{L})|(?<=/)(?=\\p{L})";

  final double factor;
  final Font title;
  final Font subtitle;
  final Font heading;
  final Font axisTitle;
  final Font tick;
  final Font legend;
  final Font legendTitle;
  final Font label;
  final Font caption;
  private final Map<Font, Map<String, Double>> widths = new HashMap<>();

  /**
   * @param width picture width at 100 percent
   * @param height picture height at 100 percent
   */
  Typography(Style style, int width, int height) {
    factor = factor(width, height);
    title = font(style, Font.BOLD, style.titleSize);
    subtitle = font(style, Font.PLAIN, style.subtitleSize);
    heading = font(style, Font.BOLD, style.headingSize);
    axisTitle = font(style, Font.PLAIN, style.axisTitleSize);
    tick = font(style, Font.PLAIN, style.tickSize);
    legend = font(style, Font.PLAIN, style.legendSize);
    legendTitle = font(style, Font.BOLD, style.legendSize);
    label = font(style, Font.PLAIN, style.labelSize);
    caption = font(style, Font.PLAIN, style.captionSize);
  }

  /**
   * Type grows slower than the picture, so that small ones stay readable and large ones do not
   * shout.
   */
  private static double factor(int width, int height) {
    double ratio = Math.min(width / 800.0, height / 600.0);
    return ratio < 1 ? Math.max(0.74, Math.pow(ratio, 0.22)) : Math.pow(ratio, 0.75);
  }

  private Font font(Style style, int weight, double size) {
    return new Font(style.fontFamily, weight, 12).deriveFont((float) Math.max(8.5, size * factor));
  }

  /** The font itself, or one that can show the text. */
  static Font fit(Font font, String text) {
    if (font.canDisplayUpTo(text) < 0) {
      return font;
    }
    return new Font(Font.SANS_SERIF, font.getStyle(), 12).deriveFont(font.getSize2D());
  }

  double width(String text, Font font) {
    Map<String, Double> known = widths.computeIfAbsent(font, key -> new HashMap<>());
    Double width = known.get(text);
    if (width == null) {
      width = fit(font, text).getStringBounds(text, CONTEXT).getWidth();
      known.put(text, width);
    }
    return width;
  }

  double width(List<String> lines, Font font) {
    double width = 0;
    for (String line : lines) {
      width = Math.max(width, width(line, font));
    }
    return width;
  }

  double lineHeight(Font font) {
    return font.getSize2D() * LEADING;
  }

  double height(int lines, Font font) {
    return lines * lineHeight(font);
  }

  /** How far capitals reach above the baseline. */
  double capHeight(Font font) {
    return font.getSize2D() * 0.72;
  }

  /** Baseline of a line whose box starts at {@code top}. */
  double baseline(Font font, double top) {
    return top + lineHeight(font) * 0.5 + capHeight(font) * 0.5;
  }

  /**
   * The text, cut with an ellipsis when it is wider than {@code room}; empty when not even that
   * fits.
   */
  String cut(String text, Font font, double room) {
    if (width(text, font) <= room) {
      return text;
    }
    int low = 0;
    int high = text.length();
    while (low < high) {
      int middle = (low + high + 1) / 2;
      if (width(head(text, middle) + ELLIPSIS, font) <= room) {
        low = middle;
      } else {
        high = middle - 1;
      }
    }
    return low == 0 ? "" : head(text, low) + ELLIPSIS;
  }

  private static String head(String text, int length) {
    int end = length;
    if (end > 0 && end < text.length() && Character.isHighSurrogate(text.charAt(end - 1))) {
      end--;
    }
    return text.substring(0, end).stripTrailing();
  }

  /**
   * The text in lines no wider than {@code room}, broken at spaces and after hyphens; the last one
   * cut when there are too many.
   */
  List<String> wrap(String text, Font font, double room, int most) {
    List<String> lines = new ArrayList<>();
    for (String paragraph : text.strip().split("\\R")) {
      wrapParagraph(paragraph, font, room, most, lines);
      if (lines.size() > most) {
        break;
      }
    }
    if (lines.size() > most) {
      String last = lines.get(most - 1) + " " + lines.get(most);
      lines = new ArrayList<>(lines.subList(0, most));
      lines.set(most - 1, cut(last + ELLIPSIS, font, room));
    }
    lines.removeIf(String::isEmpty);
    return lines;
  }

  private void wrapParagraph(String text, Font font, double room, int most, List<String> lines) {
    String line = "";
    for (String word : text.split(SPACES)) {
      String joint = line.isEmpty() ? "" : " ";
      for (String piece : word.split(BREAK_IN_WORD)) {
        String longer = line + joint + piece;
        if (line.isEmpty() || width(longer, font) <= room) {
          line = longer;
        } else {
          lines.add(cut(line, font, room));
          if (lines.size() > most) {
            return;
          }
          line = piece;
        }
        joint = "";
      }
    }
    lines.add(cut(line, font, room));
  }

  /** Whether every word of the text fits the room, so that wrapping need not cut. */
  boolean wordsFit(String text, Font font, double room) {
    if (text.length() > LONGEST) {
      return false;
    }
    for (String word : text.split(SPACES + "|" + BREAK_IN_WORD)) {
      if (width(word, font) > room) {
        return false;
      }
    }
    return true;
  }

  /**
   * Draws a line of text; {@code align} 0 starts it at x, 0.5 centres it there, 1 ends it there.
   */
  void draw(Graphics2D g, String text, Font font, double x, double baseline, double align) {
    if (text.isEmpty()) {
      return;
    }
    g.setFont(fit(font, text));
    g.drawString(text, (float) (x - align * width(text, font)), (float) baseline);
  }
}
