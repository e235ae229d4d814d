// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;

/**
 * What a map has to show: latitudes, and the shortest stretch of longitudes, which may lie across
 * the antimeridian. In degrees.
 */
final class MapExtent {
  private static final double TURN = 360;

  /** Covered longitudes, each from 0 to 360 and at most a turn long. */
  private record Arc(double from, double to) {}

  private final List<Arc> arcs = new ArrayList<>();
  private double south = Double.POSITIVE_INFINITY;
  private double north = Double.NEGATIVE_INFINITY;

  void add(double longitude, double latitude) {
    addArc(longitude, longitude);
    addLatitude(latitude);
  }

  void addLine(List<double[]> positions) {
    for (int i = 0; i < positions.size(); i++) {
      addLatitude(positions.get(i)[1]);
      if (i > 0) {
        addSegment(positions.get(i - 1)[0], positions.get(i)[0]);
      }
    }
  }

  void add(MapExtent other) {
    arcs.addAll(other.arcs);
    south = Math.min(south, other.south);
    north = Math.max(north, other.north);
  }

  private void addLatitude(double latitude) {
    south = Math.min(south, latitude);
    north = Math.max(north, latitude);
  }

  private void addSegment(double a, double b) {
    if (Math.abs(b - a) > TURN / 2) {
      addArc(Math.max(a, b), Math.min(a, b) + TURN);
    } else {
      addArc(Math.min(a, b), Math.max(a, b));
    }
  }

  private void addArc(double from, double to) {
    double start = from - Math.floor(from / TURN) * TURN;
    arcs.add(new Arc(start, start + Math.max(0, to - from)));
  }

  boolean isEmpty() {
    return arcs.isEmpty();
  }

  double south() {
    return south;
  }

  double north() {
    return north;
  }

  /**
   * The western end, from -180 to 180, and the eastern end, at most a turn further: all longitudes
   * but the widest gap.
   */
  double[] longitudes() {
    List<Arc> sorted = new ArrayList<>(arcs);
    sorted.sort(Comparator.comparingDouble(Arc::from));
    double reach = sorted.get(0).to();
    double widest = -1;
    double west = sorted.get(0).from();
    double end = reach;
    for (int i = 1; i < sorted.size(); i++) {
      Arc arc = sorted.get(i);
      if (arc.from() - reach > widest) {
        widest = arc.from() - reach;
        west = arc.from();
        end = reach + TURN;
      }
      reach = Math.max(reach, arc.to());
    }
    double over = sorted.get(0).from() + TURN - reach;
    if (over >= widest) {
      widest = over;
      west = sorted.get(0).from();
      end = reach;
    }
    if (widest <= 0) {
      return new double[] {-TURN / 2, TURN / 2};
    }
    double shift = west > TURN / 2 ? -TURN : 0;
    return new double[] {west + shift, end + shift};
  }
}
