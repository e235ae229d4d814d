// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.font.FontRenderContext;
import java.awt.font.LineMetrics;
import java.util.List;
import org.chartbridge.draw.Style;

/**
 * The fonts and colours of a tree, taken from a chart style; sizes of type come from the display
 * data. A colour that cannot be told from the ground is replaced: where a style document changes
 * only the ground, texts and lines can still be seen.
 */
final class TreeStyle {
  /** Widths are the same for every output: anti-aliased text with fractional advances. */
  static final FontRenderContext FONT_CONTEXT = new FontRenderContext(null, true, true);

  private static final double DARK = 0.5;
  private static final double LEAST_CONTRAST = 2.5;

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
    Style safe = Style.named(dark ? "dark" : "print");
    text = visible(style.text(), safe.text());
    muted = visible(style.mutedText(), safe.mutedText());
    line = visible(style.axisColor(), safe.axisColor());
    highlight = dark ? Color.WHITE : Color.BLACK;
    palette = style.palette();
    this.fontSize = fontSize;
    Font base = new Font(style.fontFamily(), Font.PLAIN, 1).deriveFont((float) fontSize);
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

  private Color visible(Color color, Color otherwise) {
    return contrast(color, background) < LEAST_CONTRAST ? otherwise : color;
  }

  /** The contrast ratio of the Web Content Accessibility Guidelines, 1 to 21. */
  private static double contrast(Color a, Color b) {
    double first = relativeLuminance(a);
    double second = relativeLuminance(b);
    return (Math.max(first, second) + 0.05) / (Math.min(first, second) + 0.05);
  }

  private static double relativeLuminance(Color color) {
    return 0.2126 * linear(color.getRed()) + 0.7152 * linear(color.getGreen())
        + 0.0722 * linear(color.getBlue());
  }

  private static double linear(int channel) {
    double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : Math.pow((value + 0.055) / 1.055, 2.4);
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
