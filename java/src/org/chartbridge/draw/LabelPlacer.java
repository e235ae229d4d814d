// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;

/**
 * Places the labels of marks inside a panel. A label that would cover another one, or leave the
 * panel, is left out.
 */
final class LabelPlacer {
  private static final int MOST = 2000;
  /** Where so many labels do not fit, more would not either, and trying takes long. */
  private static final int MOST_TRIES = 10_000;

  private record Placed(String text, Rectangle2D box, Color color) {}

  private final Typography type;
  private final Font font;
  private final Color color;
  private final Rectangle2D area;
  private final double gap;
  private final List<Placed> placed = new ArrayList<>();
  private int tries;
  private final List<Rectangle2D> obstacles = new ArrayList<>();

  LabelPlacer(Plan plan, Rectangle2D area) {
    type = plan.type;
    font = plan.type.label;
    color = plan.style.text;
    gap = 3 * plan.type.factor;
    this.area = area;
  }

  /** Beside a point of a radius: to its right, else left, above or below. */
  void beside(String text, double x, double y, double radius) {
    double w = type.width(text, font);
    double h = height();
    double away = radius + gap;
    double[][] corners = {{x + away, y - h / 2}, {x - away - w, y - h / 2},
        {x - w / 2, y - away - h}, {x - w / 2, y + away}, {x + away * 0.7, y - away * 0.7 - h},
        {x - away * 0.7 - w, y - away * 0.7 - h}};
    for (double[] corner : corners) {
      if (place(text, new Rectangle2D.Double(corner[0], corner[1], w, h), color)) {
        return;
      }
    }
  }

  /** Beyond the end of a bar, else inside it. */
  void atEnd(
      String text, Rectangle2D bar, boolean horizontal, boolean negative, Color insideColor) {
    double w = type.width(text, font);
    double h = height();
    Rectangle2D beyond;
    Rectangle2D within;
    if (horizontal) {
      double y = bar.getCenterY() - h / 2;
      beyond =
          new Rectangle2D.Double(negative ? bar.getX() - gap - w : bar.getMaxX() + gap, y, w, h);
      within =
          new Rectangle2D.Double(negative ? bar.getX() + gap : bar.getMaxX() - gap - w, y, w, h);
    } else {
      double x = bar.getCenterX() - w / 2;
      beyond = new Rectangle2D.Double(
          x, negative ? bar.getMaxY() + gap / 2 : bar.getY() - gap / 2 - h, w, h);
      within =
          new Rectangle2D.Double(x, negative ? bar.getMaxY() - gap - h : bar.getY() + gap, w, h);
    }
    if (!place(text, beyond, color) && bar.contains(within)) {
      place(text, within, insideColor);
    }
  }

  /** In the middle of a rectangle that is large enough. */
  void inside(String text, Rectangle2D rect, Color insideColor) {
    double w = type.width(text, font);
    double h = height();
    Rectangle2D box =
        new Rectangle2D.Double(rect.getCenterX() - w / 2, rect.getCenterY() - h / 2, w, h);
    if (rect.getWidth() >= w + 2 && rect.getHeight() >= h) {
      place(text, box, insideColor);
    }
  }

  /** Keeps labels off a marker. */
  void avoid(Rectangle2D marker) {
    if (obstacles.size() < MOST) {
      obstacles.add(marker);
    }
  }

  private double height() {
    return font.getSize2D() * 1.1;
  }

  private boolean place(String text, Rectangle2D box, Color ink) {
    if (text.isBlank() || placed.size() >= MOST || tries++ > MOST_TRIES || !area.contains(box)) {
      return false;
    }
    for (Placed other : placed) {
      if (other.box.intersects(box)) {
        return false;
      }
    }
    for (Rectangle2D obstacle : obstacles) {
      if (obstacle.intersects(box)) {
        return false;
      }
    }
    placed.add(new Placed(text, box, ink));
    return true;
  }

  void draw(Graphics2D g) {
    for (Placed label : placed) {
      g.setPaint(label.color);
      double baseline = label.box.getCenterY() + type.capHeight(font) / 2;
      type.draw(g, label.text, font, label.box.getX(), baseline, 0);
    }
  }
}
