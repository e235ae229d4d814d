// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Line2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;

/** Colours, patterns, dashes and marker shapes of the groups. */
final class Inks {
  private static final int SHAPES = 6;
  private static final float[][] DASHES = {
      null, {7, 4}, {2, 3}, {9, 3, 2, 3}, {14, 4}, {5, 2, 1, 2, 1, 2}};

  /** What hatches a surface in styles without colours. */
  private enum Hatch { NONE, RISING, FALLING, CROSSED, LEVEL }

  private static final Hatch[] HATCHES = {
    Hatch.NONE, Hatch.NONE, Hatch.RISING, Hatch.NONE, Hatch.FALLING, Hatch.CROSSED, Hatch.LEVEL
  };

  private final Style style;
  private final double factor;

  Inks(Plan plan) {
    style = plan.style;
    factor = plan.type.factor;
  }

  /** The colour of a group; groups beyond the palette get lighter and darker ones. */
  Color color(int index) {
    int size = style.palette.size();
    Color color = style.palette.get(index % size);
    int round = index / size;
    if (round == 0) {
      return color;
    }
    double part = Math.min(0.75, 0.25 + 0.2 * ((round + 1) / 2));
    return mix(color, round % 2 == 1 ? style.text : style.background, part);
  }

  static Color mix(Color a, Color b, double part) {
    return ColorAssignment.scale(java.util.List.of(a, b), part);
  }

  static Color alpha(Color color, double opacity) {
    if (opacity >= 1) {
      return color;
    }
    int alpha = (int) Math.round(255 * Math.max(0, opacity));
    return new Color(color.getRed(), color.getGreen(), color.getBlue(), alpha);
  }

  /** Black or white, whichever can be read on the colour. */
  static Color contrast(Color color) {
    double light = 0.299 * color.getRed() + 0.587 * color.getGreen() + 0.114 * color.getBlue();
    return light > 145 ? new Color(0x1f1f1f) : Color.WHITE;
  }

  BasicStroke line(int index) {
    float width = (float) (style.lineWidth * factor);
    boolean dashed = style.shapes || index >= style.palette.size();
    float[] pattern = dashed
        ? DASHES[(style.shapes ? index : index / style.palette.size()) % DASHES.length]
        : null;
    if (pattern == null) {
      return new BasicStroke(width, BasicStroke.CAP_ROUND, BasicStroke.JOIN_ROUND);
    }
    float[] dash = new float[pattern.length];
    for (int i = 0; i < dash.length; i++) {
      dash[i] = (float) (pattern[i] * factor);
    }
    return new BasicStroke(width, BasicStroke.CAP_BUTT, BasicStroke.JOIN_ROUND, 10, dash, 0);
  }

  /** The index of the marker shape of a group. */
  int shape(int index) {
    if (style.shapes) {
      return index % SHAPES;
    }
    return index / style.palette.size() % SHAPES;
  }

  /** A marker of about the area of a circle with this diameter, around (0, 0). */
  static Shape marker(int shape, double diameter) {
    double r = diameter / 2;
    return switch (shape) {
      case 1 -> new Rectangle2D.Double(-r * 0.89, -r * 0.89, r * 1.78, r * 1.78);
      case 2 -> polygon(0, -r * 1.25, r * 1.2, r * 0.85, -r * 1.2, r * 0.85);
      case 3 -> polygon(0, -r * 1.25, r * 1.25, 0, 0, r * 1.25, -r * 1.25, 0);
      case 4 -> polygon(0, r * 1.25, r * 1.2, -r * 0.85, -r * 1.2, -r * 0.85);
      case 5 -> plus(r * 1.15, r * 0.42);
      default -> new Ellipse2D.Double(-r, -r, diameter, diameter);
    };
  }

  private static Shape polygon(double... points) {
    Path2D path = new Path2D.Double();
    path.moveTo(points[0], points[1]);
    for (int i = 2; i < points.length; i += 2) {
      path.lineTo(points[i], points[i + 1]);
    }
    path.closePath();
    return path;
  }

  private static Shape plus(double r, double half) {
    return polygon(-half, -r, half, -r, half, -half, r, -half, r, half, half, half, half, r, -half,
        r, -half, half, -r, half, -r, -half, -half, -half);
  }

  boolean hatches() {
    return style.patterns;
  }

  /** Fills a rectangle along the axes; without anti-aliasing its edges are sharp at every size. */
  void fillRect(Graphics2D g, Rectangle2D rect, Color color, int index) {
    if (style.patterns && index >= 0) {
      fill(g, rect, color, index);
      return;
    }
    Object before = g.getRenderingHint(RenderingHints.KEY_ANTIALIASING);
    g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_OFF);
    g.setPaint(color);
    g.fill(rect);
    g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, before);
  }

  /** Fills a shape with a colour, or with the pattern of a group where the style uses patterns. */
  void fill(Graphics2D g, Shape shape, Color color, int index) {
    if (!style.patterns || index < 0) {
      g.setPaint(color);
      g.fill(shape);
      return;
    }
    Hatch hatch = HATCHES[index % HATCHES.length];
    Color ink = alpha(new Color(0x33, 0x33, 0x33), color.getAlpha() / 255.0);
    g.setPaint(hatch == Hatch.NONE ? color : alpha(style.background, color.getAlpha() / 255.0));
    g.fill(shape);
    g.setPaint(ink);
    if (hatch != Hatch.NONE) {
      hatch(g, shape, hatch);
    }
    g.setStroke(new BasicStroke((float) (0.8 * factor)));
    g.draw(shape);
  }

  private void hatch(Graphics2D g, Shape shape, Hatch hatch) {
    Shape clip = g.getClip();
    g.clip(shape);
    g.setStroke(new BasicStroke((float) (0.9 * factor)));
    Rectangle2D b = shape.getBounds2D();
    double gap = 5 * factor;
    double height = b.getHeight();
    double first = Math.floor((b.getX() - height) / gap) * gap;
    for (double x = first; hatch != Hatch.LEVEL && x < b.getMaxX() + height; x += gap) {
      if (hatch != Hatch.FALLING) {
        g.draw(new Line2D.Double(x, b.getMaxY(), x + height, b.getY()));
      }
      if (hatch != Hatch.RISING) {
        g.draw(new Line2D.Double(x, b.getY(), x + height, b.getMaxY()));
      }
    }
    for (double y = b.getY() + gap / 2; hatch == Hatch.LEVEL && y < b.getMaxY(); y += gap) {
      g.draw(new Line2D.Double(b.getX(), y, b.getMaxX(), y));
    }
    g.setClip(clip);
  }
}
