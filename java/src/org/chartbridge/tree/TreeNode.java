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
 * @param children its children from first to last
 */
public record TreeNode(String path, String id, String score, double recordCount,
    String defaultChild, Predicate predicate, List<ClassCount> distribution,
    List<TreeNode> children) {
  public TreeNode {
    distribution = List.copyOf(distribution);
    children = List.copyOf(children);
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
