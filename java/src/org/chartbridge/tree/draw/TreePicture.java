// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.util.List;
import org.chartbridge.draw.Mark;
import org.chartbridge.image.PictureWords;
import org.chartbridge.tree.TreeNode;

/** A picture that is laid out and can be drawn any number of times. Immutable. */
public interface TreePicture {
  /**
   * What lies at a point.
   *
   * @param tree the number of the tree
   * @param node the node, or null for the tree as a whole in an overview
   */
  record Hit(int tree, TreeNode node) {}

  /** In pixels at 100 percent. */
  int width();

  /** In pixels at 100 percent. */
  int height();

  /** What it shows, in words: the title, and what stands above the tree. */
  PictureWords words();

  /** The colour around everything. */
  Color background();

  /**
   * Draws at 100 percent, only what the clip of {@code g} lets through; the caller scales {@code g}
   * for other sizes.
   */
  void draw(Graphics2D g);

  /** One mark for each node, or for each tree of an overview, in pixels at 100 percent. */
  List<Mark> marks();

  /** What lies at a point in pixels at 100 percent; null for nothing. */
  Hit hit(double x, double y);
}
