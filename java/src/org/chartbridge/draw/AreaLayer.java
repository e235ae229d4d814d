// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Arrangement;

/** Areas between a lower and an upper line for each colour. */
final class AreaLayer extends Layer {
  /** One corner of an area; {@code group} is null where it only carries the area on. */
  record Corner(Group group, double x, double from, double to, double share) {}

  private static final double SEE_THROUGH = 0.5;

  private final List<List<Corner>> areas;

  /** @param areas the runs of corners, each of one colour and in order of x */
  AreaLayer(LayerSource source, int panel, List<List<Corner>> areas) {
    super(source, panel);
    this.areas = areas;
  }

  private static Group group(List<Corner> area) {
    for (Corner corner : area) {
      if (corner.group != null) {
        return corner.group;
      }
    }
    throw new IllegalStateException("an area without values");
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    for (List<Corner> area : areas) {
      for (Corner corner : area) {
        xExtent.add(corner.x);
        yExtent.add(corner.to);
      }
    }
    yExtent.needBaseline();
    xExtent.fillEdges();
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    boolean overlaid = overlaid();
    for (List<Corner> area : areas) {
      Group group = group(area);
      Color color = color(group);
      Path2D outline = outline(frame, area);
      boolean through = overlaid && element.element.opacity() >= 1;
      inks.fill(g, outline, through ? Inks.alpha(color, SEE_THROUGH) : color, ink(group));
      if (overlaid) {
        g.setPaint(Inks.alpha(color, 1));
        g.setStroke(inks.line(Math.max(0, ink(group))));
        g.draw(edge(frame, area));
      }
    }
  }

  private boolean overlaid() {
    Arrangement arrangement = element.arrangement();
    return arrangement == Arrangement.OVERLAID || arrangement == Arrangement.GROUPED;
  }

  private static Path2D edge(Frame frame, List<Corner> area) {
    Path2D path = new Path2D.Double();
    for (Corner corner : area) {
      double x = frame.px(corner.x);
      double y = clamp(frame, frame.py(corner.to));
      if (path.getCurrentPoint() == null) {
        path.moveTo(x, y);
      } else {
        path.lineTo(x, y);
      }
    }
    return path;
  }

  private static Path2D outline(Frame frame, List<Corner> area) {
    Path2D path = edge(frame, area);
    for (int i = area.size() - 1; i >= 0; i--) {
      Corner corner = area.get(i);
      path.lineTo(frame.px(corner.x), clamp(frame, frame.py(corner.from)));
    }
    path.closePath();
    return path;
  }

  /** A baseline of a log scale lies infinitely deep. */
  private static double clamp(Frame frame, double y) {
    Rectangle2D area = frame.area();
    return Math.max(area.getY() - 1e4, Math.min(area.getMaxY(), y));
  }

  @Override
  void labels(Frame frame, LabelPlacer placer) {
    for (List<Corner> area : areas) {
      for (Corner corner : area) {
        if (corner.group != null && corner.group.label != null) {
          placer.beside(corner.group.label, frame.px(corner.x), frame.py(corner.to), 2);
        }
      }
    }
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (List<Corner> area : areas) {
      for (int i = 0; i < area.size(); i++) {
        Corner corner = area.get(i);
        double x = frame.px(corner.x);
        if (corner.group == null || x < frame.area().getX() - 0.5
            || x > frame.area().getMaxX() + 0.5) {
          continue;
        }
        Map<String, String> values = values(corner.group);
        if (!Double.isNaN(corner.share)) {
          values.put(plan.text("Share"), plan.formats.share(corner.share, 1));
        }
        marks.add(mark(strip(frame, area, i), values));
      }
    }
  }

  /** The part of an area that is nearer to this corner than to its neighbours. */
  private static Path2D strip(Frame frame, List<Corner> area, int i) {
    List<double[]> points = new ArrayList<>();
    if (i > 0) {
      points.add(middle(frame, area.get(i - 1), area.get(i)));
    }
    points.add(point(frame, area.get(i)));
    if (i + 1 < area.size()) {
      points.add(middle(frame, area.get(i), area.get(i + 1)));
    }
    if (points.size() == 1) {
      double[] only = points.get(0);
      points.set(0, new double[] {only[0] - 2, only[1], only[2]});
      points.add(new double[] {only[0] + 2, only[1], only[2]});
    }
    Path2D path = new Path2D.Double();
    path.moveTo(points.get(0)[0], points.get(0)[1]);
    for (int k = 1; k < points.size(); k++) {
      path.lineTo(points.get(k)[0], points.get(k)[1]);
    }
    for (int k = points.size() - 1; k >= 0; k--) {
      path.lineTo(points.get(k)[0], points.get(k)[2]);
    }
    path.closePath();
    return path;
  }

  private static double[] point(Frame frame, Corner corner) {
    return new double[] {
      frame.px(corner.x), clamp(frame, frame.py(corner.to)), clamp(frame, frame.py(corner.from))
    };
  }

  private static double[] middle(Frame frame, Corner a, Corner b) {
    double[] p = point(frame, a);
    double[] q = point(frame, b);
    return new double[] {(p[0] + q[0]) / 2, (p[1] + q[1]) / 2, (p[2] + q[2]) / 2};
  }
}
