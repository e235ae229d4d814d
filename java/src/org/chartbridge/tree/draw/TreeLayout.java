// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.tree.layout.TidyTree;

/**
 * Where the visible nodes of a tree are, with their labels. A label stands right before its node,
 * seen from the root, and takes part in the layout like the node itself, so that nothing overlaps.
 */
final class TreeLayout {
  /** A node in its place. */
  static final class Placed {
    final NodeBox box;
    final Placed parent;
    final int level;
    /** The corner of the box. */
    double x;
    double y;
    /** The corner of the label. */
    double labelX;
    double labelY;
    /**
     * Where the room before this level begins and ends, in the direction in which the tree grows.
     */
    double gapStart;
    double gapEnd;

    Placed(NodeBox box, Placed parent, int level) {
      this.box = box;
      this.parent = parent;
      this.level = level;
    }

    Rectangle2D boxArea() {
      return new Rectangle2D.Double(x, y, box.boxWidth, box.boxHeight);
    }

    Rectangle2D labelArea() {
      return new Rectangle2D.Double(labelX, labelY, box.label.width(), box.label.height());
    }

    /** The area of the badge; empty without one. */
    Rectangle2D badgeArea(boolean leftToRight) {
      double left = leftToRight
          ? x + box.boxWidth + box.badgeStem : x + (box.boxWidth - box.badgeWidth) / 2;
      double top = leftToRight
          ? y + (box.boxHeight - box.badgeHeight) / 2 : y + box.boxHeight + box.badgeStem;
      return new Rectangle2D.Double(left, top, box.badgeWidth, box.badgeHeight);
    }
  }

  private final Scene scene;
  private final boolean leftToRight;
  private final double unit;
  private final List<Placed> nodes = new ArrayList<>();
  private final List<Integer> parents = new ArrayList<>();
  private double width;
  private double height;

  TreeLayout(Scene scene) {
    this.scene = scene;
    leftToRight = scene.display.leftToRight();
    unit = scene.unit;
    collect(scene.tree.root(), null, null, -1, 0);
    place();
  }

  /** In preorder: the root first, a parent before its children, children in their order. */
  List<Placed> nodes() {
    return nodes;
  }

  double width() {
    return width;
  }

  double height() {
    return height;
  }

  private void collect(
      TreeNode node, TreeNode parentNode, Placed parent, int parentIndex, int level) {
    boolean hides = scene.display.hidesChildren(scene.tree, node);
    NodeBox box = new NodeBox(scene, node, parentNode, hides ? below(node) : 0);
    Placed placed = new Placed(box, parent, level);
    int index = nodes.size();
    nodes.add(placed);
    parents.add(parentIndex);
    if (!hides) {
      node.children().forEach(child -> collect(child, node, placed, index, level + 1));
    }
  }

  static int below(TreeNode node) {
    int count = 0;
    for (TreeNode child : node.children()) {
      count += 1 + below(child);
    }
    return count;
  }

  private void place() {
    int[] parent = parents.stream().mapToInt(Integer::intValue).toArray();
    double[] breadth = nodes.stream().mapToDouble(this::breadth).toArray();
    double siblingGap = (leftToRight ? 10 : 16) * unit;
    double cousinGap = (leftToRight ? 18 : 28) * unit;
    double[] centers = TidyTree.place(parent, breadth, siblingGap, cousinGap);
    int levels = nodes.stream().mapToInt(node -> node.level).max().orElse(0) + 1;
    double[] labelRoom = new double[levels];
    double[] boxRoom = new double[levels];
    for (Placed node : nodes) {
      labelRoom[node.level] = Math.max(labelRoom[node.level], labelLength(node.box));
      boxRoom[node.level] = Math.max(boxRoom[node.level], boxLength(node.box));
    }
    double[] levelStart = new double[levels];
    double[] boxStart = new double[levels];
    double at = 0;
    for (int level = 0; level < levels; level++) {
      levelStart[level] = at + (level == 0 ? 0 : levelGap());
      boxStart[level] = Math.ceil(levelStart[level] + labelRoom[level]);
      at = boxStart[level] + boxRoom[level];
    }
    for (int i = 0; i < nodes.size(); i++) {
      Placed node = nodes.get(i);
      node.gapEnd = levelStart[node.level];
      node.gapStart = levelStart[node.level] - levelGap();
      put(node, centers[i], levelStart[node.level], boxStart[node.level]);
      width = Math.max(width, Math.max(node.x + node.box.boxWidth, node.labelArea().getMaxX()));
      height = Math.max(height, Math.max(node.y + node.box.boxHeight, node.labelArea().getMaxY()));
      if (node.box.hidden > 0) {
        width = Math.max(width, node.badgeArea(leftToRight).getMaxX());
        height = Math.max(height, node.badgeArea(leftToRight).getMaxY());
      }
    }
    width = Math.ceil(width);
    height = Math.ceil(height);
  }

  /** The room between levels, in which the branches run. */
  private double levelGap() {
    return (leftToRight ? 34 : 30) * unit;
  }

  private double labelGap() {
    return (leftToRight ? 7 : 3) * unit;
  }

  private double breadth(Placed node) {
    NodeBox box = node.box;
    return leftToRight
        ? Math.ceil(Math.max(Math.max(box.boxHeight, box.label.height()), box.badgeHeight)) + 1
        : Math.ceil(Math.max(Math.max(box.boxWidth, box.label.width()), box.badgeWidth)) + 1;
  }

  private double labelLength(NodeBox box) {
    if (box.label.isEmpty()) {
      return 0;
    }
    return labelGap() + (leftToRight ? box.label.width() : box.label.height());
  }

  private double boxLength(NodeBox box) {
    return leftToRight
        ? box.boxWidth + box.badgeStem + box.badgeWidth
        : box.boxHeight + box.badgeStem + box.badgeHeight;
  }

  private void put(Placed node, double center, double levelStart, double boxStart) {
    NodeBox box = node.box;
    if (leftToRight) {
      node.x = boxStart;
      node.y = Math.round(center - box.boxHeight / 2);
      node.labelX = levelStart;
      node.labelY = Math.round(center - box.label.height() / 2);
      return;
    }
    node.x = Math.round(center - box.boxWidth / 2);
    node.y = boxStart;
    node.labelX = center - box.label.width() / 2;
    node.labelY = boxStart - labelGap() - box.label.height();
  }
}
