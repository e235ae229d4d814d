// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Shape;
import java.awt.geom.AffineTransform;
import java.awt.geom.Ellipse2D;
import java.awt.geom.PathIterator;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/**
 * One area of an image map in whole pixels, in the three forms that HTML has.
 *
 * @param shape {@code rect} (left, top, right, bottom), {@code circle} (centre x, centre y, radius)
 *     or {@code poly} (x and y of each corner)
 */
record MapArea(String shape, int[] coordinates) {
  /** How far, in pixels, a polygon may leave the curve that it stands for. */
  private static final double FLATNESS = 0.5;

  private static final int MIN_CORNERS = 3;

  /** The areas of an outline: one, or one for each separate part of a path. */
  static List<MapArea> of(Shape outline, double scale) {
    if (outline instanceof Rectangle2D rectangle) {
      return List.of(rectangle(rectangle, scale));
    }
    if (outline instanceof Ellipse2D ellipse && ellipse.getWidth() == ellipse.getHeight()) {
      return List.of(circle(ellipse, scale));
    }
    return polygons(outline, scale);
  }

  /** At least one pixel wide and high, so that a bar of length zero can be pointed at. */
  private static MapArea rectangle(Rectangle2D r, double scale) {
    int left = round(r.getMinX() * scale);
    int top = round(r.getMinY() * scale);
    int right = Math.max(left + 1, round(r.getMaxX() * scale));
    int bottom = Math.max(top + 1, round(r.getMaxY() * scale));
    return new MapArea("rect", new int[] {left, top, right, bottom});
  }

  private static MapArea circle(Ellipse2D e, double scale) {
    int radius = Math.max(1, round(e.getWidth() / 2 * scale));
    return new MapArea(
        "circle", new int[] {round(e.getCenterX() * scale), round(e.getCenterY() * scale), radius});
  }

  private static List<MapArea> polygons(Shape outline, double scale) {
    List<MapArea> areas = new ArrayList<>();
    PathIterator path =
        outline.getPathIterator(AffineTransform.getScaleInstance(scale, scale), FLATNESS);
    Corners corners = new Corners();
    double[] point = new double[6];
    for (; !path.isDone(); path.next()) {
      int segment = path.currentSegment(point);
      if (segment == PathIterator.SEG_MOVETO) {
        corners.finish(areas);
      }
      if (segment != PathIterator.SEG_CLOSE) {
        corners.add(round(point[0]), round(point[1]));
      }
    }
    corners.finish(areas);
    return areas;
  }

  private static int round(double value) {
    return (int) Math.round(value);
  }

  /** The corners of one polygon; a corner that falls on the one before is left out. */
  private static final class Corners {
    private int[] values = new int[32];
    private int size;

    void add(int x, int y) {
      if (size >= 2 && values[size - 2] == x && values[size - 1] == y) {
        return;
      }
      if (size == values.length) {
        values = Arrays.copyOf(values, 2 * size);
      }
      values[size++] = x;
      values[size++] = y;
    }

    void finish(List<MapArea> areas) {
      if (size >= 4 && values[0] == values[size - 2] && values[1] == values[size - 1]) {
        size -= 2;
      }
      if (size >= 2 * MIN_CORNERS) {
        areas.add(new MapArea("poly", Arrays.copyOf(values, size)));
      }
      size = 0;
    }
  }
}
