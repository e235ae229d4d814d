// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.geom.Rectangle2D;

/** The scales of a panel and where it stands in the picture: maps values to pixels. */
record Frame(AxisScale x, AxisScale y, Rectangle2D area) {
  double px(double value) {
    return area.getX() + x.unit(value) * area.getWidth();
  }

  double py(double value) {
    return area.getMaxY() - y.unit(value) * area.getHeight();
  }

  /**
   * The rectangle between two positions and two measures, cut at the panel's ends; null when
   * nothing of it is in sight.
   */
  Rectangle2D rect(boolean horizontal, double p0, double p1, double v0, double v1) {
    double x0 = clampX(px(horizontal ? v0 : p0));
    double x1 = clampX(px(horizontal ? v1 : p1));
    double y0 = clampY(py(horizontal ? p0 : v0));
    double y1 = clampY(py(horizontal ? p1 : v1));
    Rectangle2D rect = new Rectangle2D.Double(
        Math.min(x0, x1), Math.min(y0, y1), Math.abs(x1 - x0), Math.abs(y1 - y0));
    boolean thin = horizontal ? rect.getHeight() <= 0 : rect.getWidth() <= 0;
    return thin ? null : rect;
  }

  private double clampX(double value) {
    return Math.max(area.getX(), Math.min(area.getMaxX(), value));
  }

  private double clampY(double value) {
    return Math.max(area.getY(), Math.min(area.getMaxY(), value));
  }

  boolean shows(double px, double py) {
    double slack = 0.5;
    return px >= area.getX() - slack && px <= area.getMaxX() + slack
        && py >= area.getY() - slack && py <= area.getMaxY() + slack;
  }
}
