// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;
import org.chartbridge.tree.ClassCount;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeNode;

/**
 * Reads a node with all nodes below it, without recursion: trees may be deeper than the stack of a
 * host's thread allows.
 */
final class NodeReader {
  /** A node whose end is not reached yet. */
  private final class Open {
    final int offset = in.offset();
    final String path;
    final String id = in.attribute("id");
    final String score = in.attribute("score");
    final double recordCount = in.number("recordCount", Double.NaN);
    final String defaultChild = in.attribute("defaultChild");
    final List<ClassCount> distribution = new ArrayList<>();
    final List<TreeNode> children = new ArrayList<>();
    Predicate predicate;
    /** How many trees within the node are open; their nodes go on where this one ends. */
    int embedded;

    Open(String path) {
      this.path = path;
      if (recordCount < 0) {
        throw in.error("attribute recordCount of <Node>: found \"" + in.attribute("recordCount")
            + "\", expected a number that is not negative");
      }
    }

    TreeNode close() {
      if (predicate == null) {
        throw in.error(offset, "<Node>" + named(id) + " has no predicate");
      }
      return new TreeNode(
          path, id, score, recordCount, defaultChild, predicate, distribution, children);
    }
  }

  private final PmmlCursor in;
  private final PredicateReader predicates;

  NodeReader(PmmlCursor in) {
    this.in = in;
    this.predicates = new PredicateReader(in);
  }

  /** Reads the current {@code Node}, which is a root. */
  TreeNode read() {
    Deque<Open> open = new ArrayDeque<>();
    open.push(new Open("1"));
    while (true) {
      Open node = open.peek();
      if (in.nextChild()) {
        readChild(node, open);
        continue;
      }
      if (node.embedded > 0) {
        node.embedded--;
        continue;
      }
      open.pop();
      TreeNode done = node.close();
      if (open.isEmpty()) {
        return done;
      }
      open.peek().children.add(done);
    }
  }

  private void readChild(Open node, Deque<Open> open) {
    if (predicates.isPredicate()) {
      if (node.predicate != null) {
        throw in.error("<Node>" + named(node.id) + " has a second predicate");
      }
      node.predicate = predicates.read();
      return;
    }
    switch (in.name()) {
      case "ScoreDistribution" -> node.distribution.add(classCount());
      case "Node" -> open.push(new Open(node.path + "." + (node.children.size() + 1)));
      case "DecisionTree" -> node.embedded++;
      default -> in.skip();
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
