// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Graphics2D;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Path2D;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;

/** Lines through the values of each colour, from left to right; a missing value breaks the line. */
final class LineLayer extends Layer {
  private static final int DENSE = 4;

  private final TreeMap<Integer, List<Group>> lines = new TreeMap<>();

  LineLayer(LayerSource source, int panel, List<Group> groups) {
    super(source, panel);
    for (Group group : groups) {
      lines.computeIfAbsent(group.color, key -> new ArrayList<>()).add(group);
    }
    lines.values().forEach(line -> line.sort(Comparator.comparingDouble(group -> group.x)));
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    for (List<Group> line : lines.values()) {
      for (Group group : line) {
        xExtent.add(group.x);
        yExtent.add(group.y);
      }
    }
  }

  @Override
  double reach() {
    return plan.style.lineWidth * plan.type.factor / 2;
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    for (List<Group> line : lines.values()) {
      Group first = line.get(0);
      g.setPaint(color(first));
      g.setStroke(inks.line(Math.max(0, ink(first))));
      boolean dense = line.size() > DENSE * frame.area().getWidth();
      draw(g, frame, dense ? thin(line, frame) : line);
    }
  }

  private void draw(Graphics2D g, Frame frame, List<Group> line) {
    double dot = plan.style.lineWidth * plan.type.factor * 1.8;
    Path2D path = new Path2D.Double(Path2D.WIND_NON_ZERO, line.size());
    int run = 0;
    double lastX = 0;
    double lastY = 0;
    for (int i = 0; i <= line.size(); i++) {
      boolean gap = i == line.size() || Double.isNaN(line.get(i).y);
      if (gap) {
        if (run == 1) {
          g.fill(new Ellipse2D.Double(lastX - dot / 2, lastY - dot / 2, dot, dot));
        }
        run = 0;
        continue;
      }
      lastX = frame.px(line.get(i).x);
      lastY = frame.py(line.get(i).y);
      if (run++ == 0) {
        path.moveTo(lastX, lastY);
      } else {
        path.lineTo(lastX, lastY);
      }
    }
    g.draw(path);
  }

  /** Of the many points above one pixel only the first, lowest, highest and last can be seen. */
  private static List<Group> thin(List<Group> line, Frame frame) {
    List<Group> kept = new ArrayList<>();
    int from = 0;
    while (from < line.size()) {
      long pixel = Math.round(frame.px(line.get(from).x) * 2);
      int to = from;
      int low = from;
      int high = from;
      boolean gap = false;
      while (to < line.size() && Math.round(frame.px(line.get(to).x) * 2) == pixel) {
        gap |= Double.isNaN(line.get(to).y);
        low = line.get(to).y < line.get(low).y ? to : low;
        high = line.get(to).y > line.get(high).y ? to : high;
        to++;
      }
      if (gap) {
        kept.addAll(line.subList(from, to));
      } else {
        java.util.TreeSet<Integer> picks = new java.util.TreeSet<>(List.of(from));
        picks.add(low);
        picks.add(high);
        picks.add(to - 1);
        picks.forEach(pick -> kept.add(line.get(pick)));
      }
      from = to;
    }
    return kept;
  }

  @Override
  void labels(Frame frame, LabelPlacer placer) {
    double r = plan.style.lineWidth * plan.type.factor;
    for (Map.Entry<Integer, List<Group>> line : lines.entrySet()) {
      for (Group group : line.getValue()) {
        if (group.label != null && !Double.isNaN(group.y)) {
          placer.beside(group.label, frame.px(group.x), frame.py(group.y), r);
        }
      }
    }
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    double r = Math.max(4, plan.style.markerSize * plan.type.factor / 2);
    for (List<Group> line : lines.values()) {
      for (Group group : line) {
        double x = frame.px(group.x);
        double y = frame.py(group.y);
        if (!Double.isNaN(y) && frame.shows(x, y)) {
          marks.add(mark(new Ellipse2D.Double(x - r, y - r, 2 * r, 2 * r), values(group)));
        }
      }
    }
  }
}
