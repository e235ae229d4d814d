// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;

/**
 * Display data: what a picture shows of a model, and how.
 *
 * @param leftToRight whether the tree grows to the right instead of downwards
 * @param depth how many levels below the root are shown; 0 for all
 * @param tree the number of the tree to show, from 1; 0 for the overview of an ensemble
 * @param style the name of a built-in style; empty for the default
 * @param fontSize the size of ordinary text in pixels at 100 percent
 * @param title the title; null for one that follows from the model
 * @param locale how numbers are written
 * @param digits significant digits of predictions and split values
 * @param show which parts are drawn
 * @param collapsed nodes whose children are hidden
 * @param open nodes whose children are shown although {@code depth} would hide them
 */
public record TreeDisplay(boolean leftToRight, int depth, int tree, String style, double fontSize,
    String title, Locale locale, int digits, Parts show, List<NodeReference> collapsed,
    List<NodeReference> open) {

  /**
   * Parts of the picture.
   *
   * @param counts the number of records of a node
   * @param shares its share of all records
   * @param distribution the bar in each node
   * @param legend the classes with their colours
   * @param missing the treatment of missing values: defaults, surrogates, strategy
   */
  public record Parts(
      boolean counts, boolean shares, boolean distribution, boolean legend, boolean missing) {
    public static final Parts ALL = new Parts(true, true, true, true, true);
  }

  public static final TreeDisplay DEFAULT = new TreeDisplay(
      false, 0, 0, "", 12, null, Locale.ROOT, 4, Parts.ALL, List.of(), List.of());

  public TreeDisplay {
    collapsed = List.copyOf(collapsed);
    open = List.copyOf(open);
  }

  /** Reads display data; no bytes at all stand for {@link #DEFAULT}. */
  public static TreeDisplay parse(byte[] xml) {
    return xml.length == 0 ? DEFAULT : new TreeDisplayReader(xml).read();
  }

  public byte[] toXml() {
    return TreeDisplayWriter.write(this);
  }

  public TreeDisplay withOrientation(boolean newLeftToRight) {
    return new TreeDisplay(
        newLeftToRight, depth, tree, style, fontSize, title, locale, digits, show, collapsed, open);
  }

  public TreeDisplay withDepth(int newDepth) {
    return new TreeDisplay(
        leftToRight, newDepth, tree, style, fontSize, title, locale, digits, show, collapsed, open);
  }

  public TreeDisplay withTree(int newTree) {
    return new TreeDisplay(
        leftToRight, depth, newTree, style, fontSize, title, locale, digits, show, collapsed, open);
  }

  public TreeDisplay withTitle(String newTitle) {
    return new TreeDisplay(
        leftToRight, depth, tree, style, fontSize, newTitle, locale, digits, show, collapsed, open);
  }

  /** The display data after a node was collapsed or opened, whichever it was not. */
  public TreeDisplay toggled(TreeModel model, TreeNode node) {
    if (node.isLeaf()) {
      return this;
    }
    boolean hide = !hidesChildren(model, node);
    List<NodeReference> newCollapsed = without(collapsed, model, node);
    List<NodeReference> newOpen = without(open, model, node);
    TreeDisplay neither = new TreeDisplay(leftToRight, depth, tree, style, fontSize, title, locale,
        digits, show, newCollapsed, newOpen);
    if (neither.hidesChildren(model, node) != hide) {
      (hide ? newCollapsed : newOpen).add(NodeReference.to(model, node));
    }
    return new TreeDisplay(leftToRight, depth, tree, style, fontSize, title, locale, digits, show,
        newCollapsed, newOpen);
  }

  /** Whether the children of a node are not to be seen. */
  public boolean hidesChildren(TreeModel model, TreeNode node) {
    if (node.isLeaf()) {
      return false;
    }
    if (contains(collapsed, model, node)) {
      return true;
    }
    int level = node.depth() - model.root().depth();
    return depth > 0 && level >= depth && !contains(open, model, node);
  }

  private static boolean contains(List<NodeReference> list, TreeModel model, TreeNode node) {
    for (NodeReference reference : list) {
      if (reference.names(model, node)) {
        return true;
      }
    }
    return false;
  }

  private static List<NodeReference> without(
      List<NodeReference> list, TreeModel model, TreeNode node) {
    List<NodeReference> rest = new ArrayList<>(list);
    rest.removeIf(reference -> reference.names(model, node));
    return rest;
  }
}
