// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.tree.NodeStatistics;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.tree.TreeStatistics;

/** A tree with all that its picture depends on. */
final class Scene {
  final TreeModel tree;
  final TreeDisplay display;
  final TreeStyle style;
  final SamplePaths samples;
  final TreeStatistics statistics;
  final NumberText numbers;
  final PredicateText predicates;
  private final PredicateText completePredicates;
  /** What measures in pixels are multiplied by: 1 for text of 12 pixels. */
  final double unit;

  Scene(
      TreeModel tree, TreeModel whole, TreeDisplay display, TreeStyle style, SamplePaths samples) {
    this.tree = tree;
    this.display = display;
    this.style = style;
    this.samples = samples;
    statistics = TreeStatistics.of(whole);
    numbers = new NumberText(display.locale(), display.digits());
    predicates = new PredicateText(tree.fields(), numbers, false);
    completePredicates = new PredicateText(tree.fields(), numbers, true);
    unit = style.fontSize / 12;
  }

  NodeStatistics statistics(TreeNode node) {
    return statistics.of(node);
  }

  /** The prediction of a node for people; null when there is none. */
  String prediction(TreeNode node) {
    NodeStatistics of = statistics(node);
    if (of.prediction() == null) {
      return null;
    }
    if (tree.classification()) {
      return tree.classLabel(of.prediction());
    }
    return of.hasMean() ? numbers.number(of.mean()) : of.prediction();
  }

  /** The colour index of a class; -1 when there is no such class or no prediction. */
  int classIndex(String value) {
    return value == null ? -1 : statistics.classes().indexOf(value);
  }

  int passing(TreeNode node) {
    return samples.passing(tree, node);
  }

  /** Everything about a node, for tooltips. */
  Map<String, String> describe(TreeNode node, TreeNode parent, int hidden) {
    NodeStatistics of = statistics(node);
    Map<String, String> values = new LinkedHashMap<>();
    values.put("Node", node.id() == null ? node.path() : node.id());
    if (parent != null) {
      values.put("Condition", completePredicates.of(node.predicate()));
      List<String> surrogates = completePredicates.surrogates(node.predicate());
      if (!surrogates.isEmpty()) {
        values.put("Surrogates", String.join("; ", surrogates));
      }
      if (parent.isDefault(node)) {
        values.put("Missing values", "go here");
      }
    }
    String prediction = prediction(node);
    if (prediction != null) {
      values.put("Prediction", prediction);
    }
    if (of.hasSpread()) {
      values.put("Spread", numbers.number(of.spread()));
    }
    if (of.hasCount()) {
      values.put("Records", numbers.count(of.count()));
    }
    if (of.hasShare()) {
      values.put("Share", numbers.share(of.share()));
    }
    putClasses(of, values);
    if (hidden > 0) {
      values.put("Hidden nodes", numbers.count(hidden));
    }
    if (samples.records() > 0) {
      values.put("Sample records", passing(node) + " of " + samples.records());
    }
    return values;
  }

  private void putClasses(NodeStatistics of, Map<String, String> values) {
    if (of.classCounts() == null) {
      return;
    }
    for (int i = 0; i < of.classCounts().length; i++) {
      if (of.classCounts()[i] > 0) {
        String label = tree.classLabel(statistics.classes().get(i));
        values.put("Records of " + label, numbers.count(of.classCounts()[i]));
      }
    }
  }

  /** The words about the tree as a whole. */
  List<String> facts() {
    List<String> facts = new ArrayList<>();
    facts.add(tree.classification() ? "Classification tree" : "Regression tree");
    facts.add(plural(statistics.nodes(), "node") + ", "
        + plural(statistics.leaves(), "leaf", "leaves") + ", depth " + statistics.depth());
    if (!Double.isNaN(statistics.total())) {
      facts.add(
          numbers.count(statistics.total()) + (statistics.total() == 1 ? " record" : " records"));
    }
    return facts;
  }

  String plural(int count, String one) {
    return plural(count, one, one + "s");
  }

  String plural(int count, String one, String many) {
    return numbers.count(count) + " " + (count == 1 ? one : many);
  }
}
