// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.Shape;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Line2D;
import java.awt.geom.Rectangle2D;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/** Boxes from the first to the third quartile, with median, whiskers and outliers. */
final class BoxLayer extends Layer {
  /** A box between two positions. */
  record Box(Group group, double p0, double p1, Quartiles numbers) {}

  private static final double CAP = 0.25;

  private final List<Box> boxes;

  BoxLayer(LayerSource source, int panel, List<Box> boxes) {
    super(source, panel);
    this.boxes = boxes;
  }

  List<Box> boxes() {
    return boxes;
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    Extent positions = element.horizontal ? yExtent : xExtent;
    Extent measures = element.horizontal ? xExtent : yExtent;
    for (Box box : boxes) {
      positions.add(box.p0);
      positions.add(box.p1);
      measures.add(box.numbers.lowWhisker());
      measures.add(box.numbers.highWhisker());
      for (double outlier : box.numbers.outliers()) {
        measures.add(outlier);
      }
    }
    measures.needMargin();
  }

  private Rectangle2D rect(Frame frame, Box box) {
    return frame.rect(element.horizontal, box.p0, box.p1, box.numbers.q1(), box.numbers.q3());
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    double factor = plan.type.factor;
    for (Box box : boxes) {
      Rectangle2D rect = rect(frame, box);
      if (rect == null) {
        continue;
      }
      Color color = color(box.group);
      Color ink = ink(Inks.alpha(color, 1), plan.style);
      Quartiles n = box.numbers;
      double middle = (box.p0 + box.p1) / 2;
      double cap = (box.p1 - box.p0) * CAP / 2;
      g.setStroke(new BasicStroke((float) (1.2 * factor)));
      g.setPaint(ink);
      g.draw(line(frame, middle, n.lowWhisker(), middle, n.q1()));
      g.draw(line(frame, middle, n.q3(), middle, n.highWhisker()));
      g.draw(line(frame, middle - cap, n.lowWhisker(), middle + cap, n.lowWhisker()));
      g.draw(line(frame, middle - cap, n.highWhisker(), middle + cap, n.highWhisker()));
      inks.fill(g, rect, surface(color, plan.style), ink(box.group));
      g.setPaint(ink);
      g.setStroke(new BasicStroke((float) (1.2 * factor)));
      g.draw(rect);
      g.setStroke(
          new BasicStroke((float) (2.6 * factor), BasicStroke.CAP_BUTT, BasicStroke.JOIN_MITER));
      g.setPaint(ink);
      g.draw(line(frame, box.p0, n.median(), box.p1, n.median()));
      g.setPaint(ink);
      g.setStroke(new BasicStroke((float) (1.1 * factor)));
      for (double outlier : n.outliers()) {
        g.draw(dot(frame, middle, outlier));
      }
    }
  }

  static Color ink(Color color, Style style) {
    return style.patterns ? Color.BLACK : Inks.mix(color, style.text, 0.35);
  }

  /** Boxes are lighter than their colour, so that the median stands out. */
  static Color surface(Color color, Style style) {
    return Inks.mix(color, style.background, 0.45);
  }

  private Shape line(Frame frame, double p0, double v0, double p1, double v1) {
    return element.horizontal
        ? new Line2D.Double(frame.px(v0), frame.py(p0), frame.px(v1), frame.py(p1))
        : new Line2D.Double(frame.px(p0), frame.py(v0), frame.px(p1), frame.py(v1));
  }

  private Shape dot(Frame frame, double position, double value) {
    double r = plan.style.markerSize * plan.type.factor * 0.36;
    double x = frame.px(element.horizontal ? value : position);
    double y = frame.py(element.horizontal ? position : value);
    return new Ellipse2D.Double(x - r, y - r, 2 * r, 2 * r);
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (Box box : boxes) {
      Rectangle2D rect = rect(frame, box);
      if (rect == null) {
        continue;
      }
      marks.add(mark(rect, boxValues(box)));
      for (double outlier : box.numbers.outliers()) {
        Shape dot = dot(frame, (box.p0 + box.p1) / 2, outlier);
        if (!frame.shows(dot.getBounds2D().getCenterX(), dot.getBounds2D().getCenterY())) {
          continue;
        }
        Map<String, String> values = heading(box);
        values.put(plan.label(element.measure()), format(outlier));
        marks.add(mark(dot, values));
      }
    }
  }

  private Map<String, String> heading(Box box) {
    Map<String, String> values = new LinkedHashMap<>();
    putPanel(values);
    if (element.position() != null) {
      values.put(plan.label(element.position()), positionText(box.group));
    }
    putColor(values, box.group);
    return values;
  }

  private Map<String, String> boxValues(Box box) {
    Map<String, String> values = heading(box);
    Quartiles n = box.numbers;
    values.put(plan.text("Upper whisker"), format(n.highWhisker()));
    values.put(plan.text("Upper quartile"), format(n.q3()));
    values.put(plan.text("Median"), format(n.median()));
    values.put(plan.text("Lower quartile"), format(n.q1()));
    values.put(plan.text("Lower whisker"), format(n.lowWhisker()));
    values.put(plan.text("Count"), plan.formats.number(n.count()));
    return values;
  }

  private String format(double value) {
    return plan.format(element.measure(), element.measureColumn(), value);
  }
}
