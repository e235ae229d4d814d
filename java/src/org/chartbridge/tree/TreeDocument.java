// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;

/**
 * A PMML document as far as it is about trees.
 *
 * @param version its PMML version; empty when it does not say
 * @param model the model
 * @param trees all trees in it, in document order; at least one
 */
public record TreeDocument(String version, ModelPart model, List<TreeModel> trees) {
  public TreeDocument {
    trees = List.copyOf(trees);
  }

  /** The classes of all its trees, those of the first tree first. */
  public List<String> classes() {
    Set<String> classes = new LinkedHashSet<>();
    trees.forEach(tree -> classes.addAll(tree.classes()));
    return List.copyOf(classes);
  }

  /** Whether the picture of the whole model is the picture of one tree. */
  public boolean isSingleTree() {
    return trees.size() == 1;
  }

  /**
   * @param number from 1
   * @throws TreeException when there is no such tree
   */
  public TreeModel tree(int number) {
    if (number < 1 || number > trees.size()) {
      String has = trees.size() == 1 ? "1 tree" : trees.size() + " trees";
      throw new TreeException("There is no tree " + number + "; the model has " + has + ".");
    }
    return trees.get(number - 1);
  }
}
