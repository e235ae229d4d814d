// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.util.List;
import java.util.Map;

/** Cells coloured by a value. */
final class HeatmapLayer extends Layer {
  /** Cells overlap by a hair, so that no ground shines through between them. */
  private static final double SEAM = 1e-5;

  private final List<Group> groups;
  private final CellAxis xCells;
  private final CellAxis yCells;

  HeatmapLayer(
      LayerSource source, int panel, List<Group> groups, CellAxis xCells, CellAxis yCells) {
    super(source, panel);
    this.groups = groups;
    this.xCells = xCells;
    this.yCells = yCells;
  }

  CellAxis xCells() {
    return xCells;
  }

  CellAxis yCells() {
    return yCells;
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    for (Group group : groups) {
      xExtent.add(xCells.lower(group.x));
      xExtent.add(xCells.upper(group.x));
      yExtent.add(yCells.lower(group.y));
      yExtent.add(yCells.upper(group.y));
    }
    xExtent.fillEdges();
    yExtent.fillEdges();
  }

  private Rectangle2D rect(Frame frame, Group group) {
    Rectangle2D rect = frame.rect(false, xCells.lower(group.x), xCells.upper(group.x),
        yCells.lower(group.y), yCells.upper(group.y));
    if (rect == null || rect.getHeight() <= 0) {
      return null;
    }
    return new Rectangle2D.Double(rect.getX() - SEAM, rect.getY() - SEAM,
        rect.getWidth() + 2 * SEAM, rect.getHeight() + 2 * SEAM);
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    for (Group group : groups) {
      Rectangle2D rect = rect(frame, group);
      if (rect != null) {
        inks.fillRect(g, rect, color(group), -1);
      }
    }
  }

  @Override
  void labels(Frame frame, LabelPlacer placer) {
    for (Group group : groups) {
      Rectangle2D rect = rect(frame, group);
      if (rect != null && group.label != null) {
        placer.inside(group.label, rect, Inks.contrast(color(group)));
      }
    }
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (Group group : groups) {
      Rectangle2D rect = rect(frame, group);
      if (rect == null) {
        continue;
      }
      Map<String, String> values = values(group);
      if (xCells.binned()) {
        values.replace(
            plan.label(element.x), xCells.text(plan, element.x, element.xColumn, group.x));
      }
      if (yCells.binned()) {
        values.replace(
            plan.label(element.y), yCells.text(plan, element.y, element.yColumn, group.y));
      }
      marks.add(mark(rect, values));
    }
  }
}
