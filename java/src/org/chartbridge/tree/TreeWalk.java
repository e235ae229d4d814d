// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;
import java.util.function.Consumer;
import java.util.function.Function;

/** The way of a record through a tree. */
public final class TreeWalk {
  private final TreeModel tree;
  private final Function<String, String> values;
  private final Consumer<TreeNode> visitor;

  private TreeWalk(TreeModel tree, Function<String, String> values, Consumer<TreeNode> visitor) {
    this.tree = tree;
    this.values = values;
    this.visitor = visitor;
  }

  /**
   * Visits the nodes that a record passes, from the root on. With a missing value it may pass
   * several branches, as the tree's treatment of missing values says. It passes none when the root,
   * or a segment around the tree, does not apply to it, or when the model rejects it.
   *
   * @param values the text of a field's value, or null when it is missing
   */
  public static void walk(
      TreeModel tree, Function<String, String> values, Consumer<TreeNode> visitor) {
    TreeWalk walk = new TreeWalk(tree, values, visitor);
    for (Predicate condition : tree.conditions()) {
      if (walk.test(condition) != Truth.TRUE) {
        return;
      }
    }
    if (walk.test(tree.root().predicate()) == Truth.TRUE) {
      walk.enter(tree.root());
    }
  }

  private Truth test(Predicate predicate) {
    return predicate.test(tree.fields(), values);
  }

  private void enter(TreeNode node) {
    visitor.accept(node);
    for (TreeNode child : node.children()) {
      Truth truth = test(child.predicate());
      if (truth == Truth.TRUE) {
        enter(child);
        return;
      }
      if (truth == Truth.UNKNOWN && tree.missingValuesAt(node) != MissingValues.NONE) {
        enterUnknown(node);
        return;
      }
    }
  }

  private void enterUnknown(TreeNode node) {
    switch (tree.missingValuesAt(node)) {
      case DEFAULT_CHILD -> enterAll(node.children().stream().filter(node::isDefault).toList());
      case WEIGHTED_CONFIDENCE, AGGREGATE_NODES ->
          enterAll(node.children().stream()
              .filter(child -> test(child.predicate()) != Truth.FALSE).toList());
      default -> { }
    }
  }

  private void enterAll(List<TreeNode> nodes) {
    nodes.forEach(this::enter);
  }
}
