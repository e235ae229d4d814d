// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.font.FontRenderContext;
import java.awt.font.LineMetrics;
import java.util.List;
import org.chartbridge.draw.Style;

/** The fonts and colours of a tree, taken from a chart style. */
final class TreeStyle {
  /** Widths are the same for every output: anti-aliased text with fractional advances. */
  static final FontRenderContext FONT_CONTEXT = new FontRenderContext(null, true, true);

  private static final String FAMILY = "Liberation Sans";
  private static final double DARK = 0.5;

  final Color background;
  final Color text;
  final Color muted;
  final Color line;
  final Color highlight;
  final double fontSize;
  final Font title;
  final Font normal;
  final Font bold;
  final Font small;
  final Font smallItalic;
  private final List<Color> palette;

  TreeStyle(Style style, double fontSize) {
    background = style.background();
    boolean dark = luminance(background) < DARK;
    text = dark ? new Color(0xF2F2F2) : new Color(0x1F1F1F);
    muted = dark ? new Color(0xB9BEC6) : new Color(0x555555);
    line = dark ? new Color(0x7D848F) : new Color(0x8A8A8A);
    highlight = dark ? Color.WHITE : Color.BLACK;
    palette = style.palette();
    this.fontSize = fontSize;
    Font base = new Font(FAMILY, Font.PLAIN, 1).deriveFont((float) fontSize);
    normal = base;
    bold = base.deriveFont(Font.BOLD);
    small = base.deriveFont((float) (0.92 * fontSize));
    smallItalic = small.deriveFont(Font.ITALIC);
    title = base.deriveFont(Font.BOLD, (float) (1.5 * fontSize));
  }

  /** The colour of a group; beyond the palette its colours come again, paler each time. */
  Color group(int index) {
    Color color = palette.get(index % palette.size());
    int round = index / palette.size();
    return round == 0 ? color : mix(color, background, Math.min(0.75, 0.25 * round));
  }

  /** The ground of a node of that colour: pale enough for text on it. */
  Color tint(Color color, double strength) {
    return mix(background, color, strength);
  }

  static Color mix(Color a, Color b, double share) {
    return new Color(
        channel(a.getRed(), b.getRed(), share),
        channel(a.getGreen(), b.getGreen(), share),
        channel(a.getBlue(), b.getBlue(), share));
  }

  private static int channel(int a, int b, double share) {
    return (int) Math.round(a + (b - a) * share);
  }

  private static double luminance(Color color) {
    return (0.2126 * color.getRed() + 0.7152 * color.getGreen() + 0.0722 * color.getBlue()) / 255;
  }

  /** The font itself, or one that has the letters of the text. */
  static Font fitting(Font font, String text) {
    if (font.canDisplayUpTo(text) < 0) {
      return font;
    }
    return new Font(Font.SANS_SERIF, font.getStyle(), 1).deriveFont(font.getSize2D());
  }

  static double width(String text, Font font) {
    return text.isEmpty() ? 0 : fitting(font, text).getStringBounds(text, FONT_CONTEXT).getWidth();
  }

  static double lineHeight(Font font) {
    LineMetrics metrics = font.getLineMetrics("Xg", FONT_CONTEXT);
    return Math.ceil(metrics.getAscent() + metrics.getDescent());
  }

  static double ascent(Font font) {
    return font.getLineMetrics("Xg", FONT_CONTEXT).getAscent();
  }
}
