// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeModel;

/** What the legend says about sample records. */
final class SampleText {
  private SampleText() {}

  /** @param trees the trees that the picture shows */
  static void legend(Header header, SamplePaths samples, List<TreeModel> trees) {
    int records = samples.records();
    if (records == 0) {
      return;
    }
    Set<String> lacking = new LinkedHashSet<>();
    int unknown = 0;
    for (TreeModel tree : trees) {
      lacking.addAll(samples.lacking(tree));
      unknown += samples.lacking(tree).isEmpty() ? 0 : 1;
    }
    if (unknown < trees.size()) {
      int outside = trees.size() == 1 ? outside(samples, trees.get(0)) : 0;
      String ways = records == 1 ? "way of the sample record"
          : "ways of " + records + " sample records";
      header.path(outside == 0 ? ways : ways + ", " + outside + " without one");
    }
    if (unknown > 0) {
      String where = trees.size() == 1 ? "" : " through " + unknown
          + (unknown == 1 ? " tree" : " trees");
      header.remark("The ways of sample records" + where + " are not known: the model computes "
          + String.join(", ", lacking) + ". Columns of that name in the data would show them.");
    }
  }

  /** How many records do not come into a tree at all; 0 for a branch, which few need to reach. */
  private static int outside(SamplePaths samples, TreeModel tree) {
    return tree.root().depth() > 0 ? 0 : samples.records() - samples.passing(tree, tree.root());
  }
}
