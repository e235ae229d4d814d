// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;

/**
 * Names a node in display data, by its id or by its path.
 *
 * @param tree the number of its tree, from 1
 * @param id the node's id in the document, or null
 * @param path the node's path when {@code id} is null
 */
public record NodeReference(int tree, String id, String path) {
  static NodeReference to(TreeModel tree, TreeNode node) {
    return new NodeReference(tree.number(), null, node.path());
  }

  boolean names(TreeModel model, TreeNode node) {
    if (tree != model.number()) {
      return false;
    }
    return id == null ? path.equals(node.path()) : id.equals(node.id());
  }
}
