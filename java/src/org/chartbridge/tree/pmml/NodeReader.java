// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;
import org.chartbridge.tree.ClassCount;
import org.chartbridge.tree.Embedded;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.Remark;
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
    final Embedded.Tree within;
    final String id = in.attribute("id");
    final String score = in.attribute("score");
    final double recordCount = in.number("recordCount", Double.NaN);
    final String defaultChild = in.attribute("defaultChild");
    final List<ClassCount> distribution = new ArrayList<>();
    final List<TreeNode> children = new ArrayList<>();
    Predicate predicate;
    Embedded embedded;
    /** How many trees within the node are open; their nodes go on where this one ends. */
    int openTrees;

    Open(String path, Embedded.Tree within) {
      this.path = path;
      this.within = within;
      if (recordCount < 0) {
        throw in.error("attribute recordCount of <Node>: found \"" + in.attribute("recordCount")
            + "\", expected a number that is not negative");
      }
    }

    Embedded.Tree branching() {
      return embedded instanceof Embedded.Tree tree ? tree : within;
    }

    TreeNode close() {
      if (predicate == null) {
        throw in.error(offset, "<Node>" + named(id) + " has no predicate");
      }
      return new TreeNode(path, id, score, recordCount, defaultChild, predicate, distribution,
          embedded, within, children);
    }
  }

  private final PmmlCursor in;
  private final FieldCatalog fields;
  private final PredicateReader predicates;
  private final RegressionReader regressions;

  /** @param fields those of the model, to which models within nodes add their own */
  NodeReader(PmmlCursor in, FieldCatalog fields, FieldMentions mentions) {
    this.in = in;
    this.fields = fields;
    this.predicates = new PredicateReader(in, mentions);
    this.regressions = new RegressionReader(in, mentions);
  }

  /** Reads the current {@code Node}, which is a root. */
  TreeNode read() {
    Deque<Open> open = new ArrayDeque<>();
    open.push(new Open("1", null));
    while (true) {
      Open node = open.peek();
      if (in.nextChild()) {
        readChild(node, open);
        continue;
      }
      if (node.openTrees > 0) {
        node.openTrees--;
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
      case "Node" -> open.push(
          new Open(node.path + "." + (node.children.size() + 1), node.branching()));
      case "DecisionTree" -> {
        embed(node, embeddedTree());
        node.openTrees++;
      }
      case "Regression" -> embed(node, regressions.read(fields));
      case "LocalTransformations" -> new FieldReader(in).read(fields);
      case "Targets" -> rescale(node);
      default -> in.skip();
    }
  }

  private void embed(Open node, Embedded embedded) {
    if (node.embedded != null) {
      throw in.error("<Node>" + named(node.id) + " has a second model in it");
    }
    node.embedded = embedded;
  }

  private Embedded.Tree embeddedTree() {
    TreeAttributes attributes = TreeAttributes.read(in);
    return new Embedded.Tree(attributes.classification(), attributes.missingValues(),
        attributes.returnsLastPrediction(), attributes.remarks());
  }

  /** Targets come before the nodes of a tree, so none of these has the record yet. */
  private void rescale(Open node) {
    List<Remark> remarks = TargetsReader.of(new TargetsReader(in).read(), null);
    if (node.embedded instanceof Embedded.Tree tree) {
      List<Remark> all = new ArrayList<>(tree.remarks());
      all.addAll(remarks);
      node.embedded = new Embedded.Tree(tree.classification(), tree.missingValues(),
          tree.returnsLastPrediction(), all);
    }
  }

  private ClassCount classCount() {
    String value = in.required("value");
    double probability = part("probability");
    if (Double.isNaN(probability)) {
      in.required("recordCount");
    }
    ClassCount count =
        new ClassCount(value, part("recordCount"), probability, part("confidence"));
    in.skip();
    return count;
  }

  /** A number of the current {@code ScoreDistribution}; NaN when it is not there. */
  private double part(String attribute) {
    double value = in.number(attribute, Double.NaN);
    if (value < 0) {
      throw in.error("attribute " + attribute + " of <ScoreDistribution>: found \""
          + in.attribute(attribute) + "\", expected a number that is not negative");
    }
    return value;
  }

  private static String named(String id) {
    return id == null ? "" : " with the id \"" + id + "\"";
  }
}
