// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import org.chartbridge.tree.NodeStatistics;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.tree.layout.TidyTree;

/** The shape of a tree without texts. */
final class Thumbnail {
  private static final double MOST_STEP = 18;
  private static final double MOST_RADIUS = 4;

  private final Scene scene;
  private final List<TreeNode> nodes = new ArrayList<>();
  private final List<Integer> parents = new ArrayList<>();
  private final double[] centers;

  Thumbnail(Scene scene) {
    this.scene = scene;
    collect(scene.tree.root(), -1);
    double[] breadth = new double[nodes.size()];
    Arrays.fill(breadth, 1);
    centers = TidyTree.place(
        parents.stream().mapToInt(Integer::intValue).toArray(), breadth, 0, 0.25);
  }

  private void collect(TreeNode node, int parent) {
    int index = nodes.size();
    nodes.add(node);
    parents.add(parent);
    node.children().forEach(child -> collect(child, index));
  }

  List<String> facts() {
    return List.of(scene.ends() + ", depth " + scene.statistics.depth());
  }

  void draw(Graphics2D g, Rectangle2D area) {
    double breadth = Arrays.stream(centers).max().orElse(0) + 0.5;
    double step = Math.min(MOST_STEP * scene.unit, area.getWidth() / breadth);
    double radius = Math.max(0.6, Math.min(MOST_RADIUS * scene.unit, 0.4 * step));
    int depth = Math.max(1, scene.statistics.depth());
    double levelStep = Math.min(28 * scene.unit, (area.getHeight() - 2 * radius) / depth);
    double left = area.getCenterX() - breadth * step / 2;
    double top = area.getY() + radius;
    boolean turned = scene.display.leftToRight();
    double[] x = new double[centers.length];
    double[] y = new double[centers.length];
    for (int i = 0; i < centers.length; i++) {
      x[i] = left + centers[i] * step;
      y[i] = top + nodes.get(i).depth() * levelStep;
      if (turned) {
        turn(x, y, i, area, breadth, depth, radius);
      }
    }
    drawBranches(g, x, y, false);
    drawBranches(g, x, y, true);
    for (int i = 0; i < x.length; i++) {
      g.setColor(color(nodes.get(i)));
      g.fill(new Ellipse2D.Double(x[i] - radius, y[i] - radius, 2 * radius, 2 * radius));
      if (radius > 2) {
        g.setColor(scene.style.tint(scene.style.muted, 0.8));
        g.setStroke(new BasicStroke((float) (0.7 * scene.unit)));
        g.draw(new Ellipse2D.Double(x[i] - radius, y[i] - radius, 2 * radius, 2 * radius));
      }
    }
  }

  private void turn(double[] x, double[] y, int i, Rectangle2D area, double breadth, int depth,
      double radius) {
    double across = Math.min(MOST_STEP * scene.unit, area.getHeight() / breadth);
    double along = Math.min(32 * scene.unit, (area.getWidth() - 2 * radius) / depth);
    x[i] = area.getX() + radius + nodes.get(i).depth() * along;
    y[i] = area.getCenterY() - breadth * across / 2 + centers[i] * across;
  }

  private void drawBranches(Graphics2D g, double[] x, double[] y, boolean onPath) {
    Path2D path = new Path2D.Double();
    boolean any = false;
    for (int i = 1; i < x.length; i++) {
      if (scene.passing(nodes.get(i)) > 0 == onPath) {
        path.moveTo(x[parents.get(i)], y[parents.get(i)]);
        path.lineTo(x[i], y[i]);
        any = true;
      }
    }
    if (any) {
      g.setColor(onPath ? scene.style.highlight : scene.style.line);
      g.setStroke(new BasicStroke((float) ((onPath ? 2.2 : 0.9) * scene.unit)));
      g.draw(path);
    }
  }

  private Color color(TreeNode node) {
    NodeStatistics of = scene.statistics(node);
    if (scene.tree.classification()) {
      int index = scene.classIndex(of.prediction());
      return index < 0 ? scene.style.background : scene.style.group(index);
    }
    if (!of.hasMean()) {
      return scene.style.background;
    }
    return scene.style.tint(
        scene.style.group(0), 0.12 + 0.88 * scene.statistics.position(of.mean()));
  }
}
