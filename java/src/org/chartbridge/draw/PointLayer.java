// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.Shape;
import java.awt.geom.AffineTransform;
import java.util.ArrayList;
import java.util.List;

/** Points: one marker for each value. */
final class PointLayer extends Layer {
  private static final double LARGEST = 28;
  private static final double SMALLEST = 4;
  private static final double LARGEST_IN_CROWD = 11;
  private static final int CROWD = 150;
  private static final int MANY = 2000;

  private final List<Group> groups;
  private final SizeScale sizes;

  /**
   * Areas of markers, growing evenly from the smallest to the largest value of the size channel.
   */
  record SizeScale(double smallest, double largest, double smallestDiameter, double diameter) {
    double diameter(double value) {
      if (largest <= smallest) {
        return (smallestDiameter + diameter) / 2;
      }
      double share = (value - smallest) / (largest - smallest);
      double least = smallestDiameter * smallestDiameter;
      return Math.sqrt(least + share * (diameter * diameter - least));
    }
  }

  PointLayer(LayerSource source, int panel, List<Group> groups, SizeScale sizes) {
    super(source, panel);
    this.groups = new ArrayList<>(groups);
    this.sizes = sizes;
    if (sizes != null) {
      this.groups.sort((a, b) -> Double.compare(b.size, a.size));
    }
  }

  static SizeScale sizes(Plan plan, ElementPlan element, List<Group> groups, int panels) {
    if (element.element.size() == null) {
      return null;
    }
    double largest = Double.NEGATIVE_INFINITY;
    double smallest = Double.POSITIVE_INFINITY;
    for (Group group : groups) {
      if (group.size < 0) {
        throw element.error("size", "the value " + Formats.plain(group.size)
            + " is negative; sizes must not be below 0.");
      }
      largest = Math.max(largest, group.size);
      smallest = Math.min(smallest, group.size);
    }
    double shrink = Math.max(0.4, 1 / Math.sqrt(Math.sqrt(panels)));
    double crowd = Math.min(1, Math.pow((double) CROWD * panels / groups.size(), 0.4));
    double diameter = Math.max(LARGEST_IN_CROWD, LARGEST * crowd) * shrink;
    return new SizeScale(
        smallest, largest, SMALLEST * plan.type.factor, diameter * plan.type.factor);
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    for (Group group : groups) {
      xExtent.add(group.x);
      yExtent.add(group.y);
    }
    xExtent.needMargin();
    yExtent.needMargin();
  }

  SizeScale sizes() {
    return sizes;
  }

  boolean crowded() {
    return groups.size() > MANY;
  }

  private double diameter(Group group) {
    if (sizes != null) {
      return sizes.diameter(group.size);
    }
    double crowd = groups.size() > MANY ? 0.7 : 1;
    return plan.style.markerSize * plan.type.factor * crowd;
  }

  private int shape(Group group) {
    return inks.shape(Math.max(0, ink(group)));
  }

  /**
   * Markers of the same size keep a thin edge of the ground's colour, so that neighbours stay
   * apart.
   */
  private Color edge() {
    return groups.size() > MANY ? null : Inks.alpha(plan.style.background, 0.85);
  }

  @Override
  double reach() {
    double largest = sizes == null ? plan.style.markerSize * plan.type.factor : sizes.diameter();
    return largest;
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    Stamps stamps = Stamps.on(g);
    Color edge = edge();
    if (stamps == null) {
      drawShapes(g, frame, edge);
      return;
    }
    List<Group> large = new ArrayList<>();
    for (Group group : groups) {
      if (inSight(frame, group) && !Stamps.fits(diameter(group), stamps.scale())) {
        large.add(group);
      }
    }
    large.forEach(group -> drawShape(g, frame, group, edge));
    stamps.begin();
    for (Group group : groups) {
      double diameter = diameter(group);
      if (inSight(frame, group) && Stamps.fits(diameter, stamps.scale())) {
        double rounded = Math.round(diameter * 4) / 4.0;
        stamps.draw(
            shape(group), rounded, color(group), edge, frame.px(group.x), frame.py(group.y));
      }
    }
    stamps.end();
  }

  private static boolean inSight(Frame frame, Group group) {
    return frame.shows(frame.px(group.x), frame.py(group.y));
  }

  private void drawShapes(Graphics2D g, Frame frame, Color edge) {
    for (Group group : groups) {
      if (inSight(frame, group)) {
        drawShape(g, frame, group, edge);
      }
    }
  }

  private void drawShape(Graphics2D g, Frame frame, Group group, Color edge) {
    drawMarker(g, outline(frame, group), color(group), edge);
  }

  static void drawMarker(Graphics2D g, Shape marker, Color fill, Color edge) {
    g.setPaint(fill);
    g.fill(marker);
    if (edge != null) {
      g.setPaint(edge);
      g.setStroke(new BasicStroke(0.8f));
      g.draw(marker);
    }
  }

  private Shape outline(Frame frame, Group group) {
    if (shape(group) == 0) {
      return circle(frame.px(group.x), frame.py(group.y), diameter(group));
    }
    return AffineTransform.getTranslateInstance(frame.px(group.x), frame.py(group.y))
        .createTransformedShape(Inks.marker(shape(group), diameter(group)));
  }

  @Override
  void labels(Frame frame, LabelPlacer placer) {
    if (element.element.label() == null) {
      return;
    }
    for (Group group : groups) {
      if (inSight(frame, group)) {
        placer.avoid(circle(frame.px(group.x), frame.py(group.y), diameter(group)).getBounds2D());
      }
    }
    for (Group group : groups) {
      if (group.label != null && inSight(frame, group)) {
        placer.beside(group.label, frame.px(group.x), frame.py(group.y), diameter(group) / 2);
      }
    }
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (Group group : groups) {
      double x = frame.px(group.x);
      double y = frame.py(group.y);
      if (!frame.shows(x, y)) {
        continue;
      }
      marks.add(mark(outline(frame, group), values(group)));
    }
  }

  private static Shape circle(double x, double y, double diameter) {
    return new java.awt.geom.Ellipse2D.Double(
        x - diameter / 2, y - diameter / 2, diameter, diameter);
  }
}
