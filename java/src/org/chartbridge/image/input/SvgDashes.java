// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.awt.BasicStroke;
import java.awt.Shape;
import org.apache.batik.ext.awt.geom.PathLength;
import org.apache.batik.gvt.CompositeGraphicsNode;
import org.apache.batik.gvt.CompositeShapePainter;
import org.apache.batik.gvt.GraphicsNode;
import org.apache.batik.gvt.ShapeNode;
import org.apache.batik.gvt.ShapePainter;
import org.apache.batik.gvt.StrokeShapePainter;
import org.chartbridge.chart.ChartException;

/** Counts dashes: short ones on a long line fill the memory, though nobody could see them. */
final class SvgDashes {
  private static final double MOST = 1_000_000;

  private double count;

  private SvgDashes() {}

  /**
   * @throws ChartException when lines have too many
   */
  static void check(GraphicsNode drawing) {
    SvgDashes dashes = new SvgDashes();
    dashes.add(drawing);
    if (dashes.count > MOST) {
      throw new ChartException("The SVG image: the lines of it have more than a million dashes"
          + " (stroke-dasharray).");
    }
  }

  private void add(GraphicsNode node) {
    if (node instanceof CompositeGraphicsNode group) {
      for (Object child : group.getChildren()) {
        add((GraphicsNode) child);
      }
    } else if (node instanceof ShapeNode shape && shape.getShape() != null) {
      add(shape.getShapePainter(), shape.getShape());
    }
  }

  private void add(ShapePainter painter, Shape shape) {
    if (painter instanceof CompositeShapePainter several) {
      for (int i = 0; i < several.getShapePainterCount(); i++) {
        add(several.getShapePainter(i), shape);
      }
    } else if (painter instanceof StrokeShapePainter stroke
        && stroke.getStroke() instanceof BasicStroke line && line.getDashArray() != null) {
      double period = 0;
      for (float dash : line.getDashArray()) {
        period += dash;
      }
      count += new PathLength(shape).lengthOfPath() / period * line.getDashArray().length;
    }
  }
}
