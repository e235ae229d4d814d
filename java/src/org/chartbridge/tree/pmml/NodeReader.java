// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.ClassCount;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeNode;

/** Reads a node with all nodes below it. */
final class NodeReader {
  private final PmmlCursor in;
  private final PredicateReader predicates;

  NodeReader(PmmlCursor in) {
    this.in = in;
    this.predicates = new PredicateReader(in);
  }

  /** Reads the current {@code Node}. */
  TreeNode read(String path) {
    int offset = in.offset();
    String id = in.attribute("id");
    String score = in.attribute("score");
    double recordCount = in.number("recordCount", Double.NaN);
    if (recordCount < 0) {
      throw in.error("attribute recordCount of <Node>: found \"" + in.attribute("recordCount")
          + "\", expected a number that is not negative");
    }
    String defaultChild = in.attribute("defaultChild");
    Predicate predicate = null;
    List<ClassCount> distribution = new ArrayList<>();
    List<TreeNode> children = new ArrayList<>();
    while (in.nextChild()) {
      if (predicates.isPredicate()) {
        if (predicate != null) {
          throw in.error("<Node>" + named(id) + " has a second predicate");
        }
        predicate = predicates.read();
        continue;
      }
      switch (in.name()) {
        case "ScoreDistribution" -> distribution.add(classCount());
        case "Node" -> children.add(read(path + "." + (children.size() + 1)));
        case "DecisionTree" -> embedded(path, children);
        default -> in.skip();
      }
    }
    if (predicate == null) {
      throw in.error(offset, "<Node>" + named(id) + " has no predicate");
    }
    return new TreeNode(
        path, id, score, recordCount, defaultChild, predicate, distribution, children);
  }

  /** A tree within a node goes on where the node ends. */
  private void embedded(String path, List<TreeNode> children) {
    while (in.nextChild()) {
      if (in.name().equals("Node")) {
        children.add(read(path + "." + (children.size() + 1)));
      } else {
        in.skip();
      }
    }
  }

  private ClassCount classCount() {
    String value = in.required("value");
    in.required("recordCount");
    double count = in.number("recordCount", 0);
    if (count < 0) {
      throw in.error("attribute recordCount of <ScoreDistribution>: found \""
          + in.attribute("recordCount") + "\", expected a number that is not negative");
    }
    in.skip();
    return new ClassCount(value, count);
  }

  private static String named(String id) {
    return id == null ? "" : " with the id \"" + id + "\"";
  }
}
