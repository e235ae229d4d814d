// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;

/**
 * A node of a tree.
 *
 * @param path where it stands: "1" is the root, "1.2" the root's second child
 * @param id its id in the document, or null
 * @param score what is predicted here, or null
 * @param recordCount how many training records reached it; NaN when the document does not say
 * @param defaultChild the id of the child for records whose value is missing, or null
 * @param predicate the condition on the branch that leads here
 * @param distribution how the target's values are distributed among its records; may be empty
 * @param embedded the model within the node, or null
 * @param within the tree in a node above that it belongs to; null for the model's own tree
 * @param children its children from first to last
 */
public record TreeNode(String path, String id, String score, double recordCount,
    String defaultChild, Predicate predicate, List<ClassCount> distribution,
    Embedded embedded, Embedded.Tree within, List<TreeNode> children) {
  public TreeNode {
    distribution = List.copyOf(distribution);
    children = List.copyOf(children);
  }

  /** The tree whose rules its branches follow: one in this or another node, or null. */
  Embedded.Tree branching() {
    return embedded instanceof Embedded.Tree tree ? tree : within;
  }

  /** Whether an equation, not a score, predicts for the records that reach the node. */
  public boolean predictsByRegression() {
    return embedded instanceof Embedded.Regression;
  }

  public boolean isLeaf() {
    return children.isEmpty();
  }

  /** The number of edges above it. */
  public int depth() {
    return (int) path.chars().filter(c -> c == '.').count();
  }

  /** Whether records whose value is missing go to this child. */
  public boolean isDefault(TreeNode child) {
    return defaultChild != null && defaultChild.equals(child.id);
  }
}
