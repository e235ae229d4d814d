// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.tree.Branches;
import org.chartbridge.tree.ClassCount;
import org.chartbridge.tree.Embedded;
import org.chartbridge.tree.MissingValues;
import org.chartbridge.tree.NodeStatistics;
import org.chartbridge.tree.Predicate;
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
  private final RegressionText regressions;
  private final RegressionText completeRegressions;
  /** All classes that have a colour, in the order of the colours. */
  private final List<String> palette;
  private final Map<String, Boolean> ordered = new HashMap<>();
  private final Map<String, Boolean> ending = new HashMap<>();
  /** What measures in pixels are multiplied by: 1 for text of 12 pixels. */
  final double unit;

  /**
   * @param whole the tree that {@code tree} is a branch of, or the same
   * @param palette the classes of all pictures that belong together, so that colours agree
   */
  Scene(TreeModel tree, TreeModel whole, TreeDisplay display, TreeStyle style,
      SamplePaths samples, List<String> palette) {
    this.tree = tree;
    this.display = display;
    this.style = style;
    this.samples = samples;
    this.palette = palette;
    statistics = TreeStatistics.of(whole);
    numbers = new NumberText(display.locale(), display.digits());
    predicates = PredicateText.ofTree(whole, numbers, false);
    completePredicates = PredicateText.ofTree(whole, numbers, true);
    regressions = new RegressionText(tree, numbers);
    completeRegressions =
        new RegressionText(tree, new NumberText(display.locale(), NumberText.MOST_DIGITS));
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
    return of.hasMean() ? predicted(of.mean()) : of.prediction();
  }

  /** A predicted number, with digits enough to tell it from the others of the tree. */
  String predicted(double number) {
    return numbers.number(number, statistics.highest() - statistics.lowest());
  }

  /** The equations by which a node predicts; empty when it does not do so. */
  List<String> equations(TreeNode node) {
    return node.embedded() instanceof Embedded.Regression regression
        ? regressions.equations(regression) : List.of();
  }

  /** The colour index of a class, or -1 for a node without a prediction. */
  int classIndex(String value) {
    return value == null ? -1 : palette.indexOf(value);
  }

  /** The place of a branch among those of its node when their order decides, from 1; else 0. */
  int order(TreeNode node, TreeNode parent) {
    boolean alone = parent == null || parent.children().size() == 1;
    if (alone || isRest(node, parent) || !orderCounts(parent)) {
      return 0;
    }
    return Integer.parseInt(node.path().substring(node.path().lastIndexOf('.') + 1));
  }

  /** Whether a branch is the last one and takes all that is left. */
  static boolean isRest(TreeNode node, TreeNode parent) {
    int size = parent == null ? 0 : parent.children().size();
    return size > 1 && parent.children().get(size - 1) == node
        && node.predicate() instanceof Predicate.Constant constant && constant.value();
  }

  boolean orderCounts(TreeNode node) {
    return ordered.computeIfAbsent(node.path(), path -> Branches.orderCounts(tree, node));
  }

  /** Whether a record can end at a node that has branches, and be predicted there. */
  boolean endsAt(TreeNode node) {
    return ending.computeIfAbsent(node.path(), path -> Branches.endsAt(tree, node));
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
      if (order(node, parent) > 0) {
        values.put("Order", order(node, parent) + " of " + parent.children().size()
            + ", the first that applies");
      }
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
    putModel(node, values);
    if (endsAt(node)) {
      values.put("When no branch applies", "predicts here");
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
    putProbabilities(node, values);
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
        values.put((of.probabilities() ? "Probability of " : "Records of ") + label,
            of.probabilities() ? numbers.share(of.classCounts()[i])
                : numbers.count(of.classCounts()[i]));
      }
    }
  }

  private void putProbabilities(TreeNode node, Map<String, String> values) {
    for (ClassCount entry : node.distribution()) {
      String label = tree.classLabel(entry.value());
      if (!Double.isNaN(entry.probability()) && entry.probability() > 0) {
        values.put("Probability of " + label, numbers.share(entry.probability()));
      }
      if (!Double.isNaN(entry.confidence())) {
        values.put("Confidence of " + label, numbers.number(entry.confidence()));
      }
    }
  }

  private void putModel(TreeNode node, Map<String, String> values) {
    if (node.embedded() instanceof Embedded.Regression regression) {
      values.put("Model", RegressionText.kind(regression));
      values.put("Equation", String.join("; ", completeRegressions.equations(regression)));
      if (node.score() != null) {
        values.put("Score", node.score());
      }
    } else if (node.embedded() instanceof Embedded.Tree inner) {
      values.put("Model", embedded(inner));
    }
    String remarks = remarks(node);
    if (!remarks.isEmpty()) {
      values.put("Remarks", remarks);
    }
  }

  /** What a tree within a node is, as far as it is not like the tree around it. */
  String embedded(Embedded.Tree inner) {
    String kind = inner.classification() == tree.classification() ? "tree within the tree"
        : inner.classification() ? "classification tree within" : "regression tree within";
    boolean differs = inner.missingValues() != tree.missingValues()
        || inner.returnsLastPrediction() != tree.returnsLastPrediction();
    String missing = inner.missingValues() == MissingValues.NONE
        ? "" : ", missing values: " + inner.missingValues().label();
    return differs ? kind + missing + (inner.returnsLastPrediction()
        ? ", no branch: the node above predicts" : ", no branch: no prediction") : kind;
  }

  /** What else is said about the model within a node. */
  String remarks(TreeNode node) {
    RemarkText texts = new RemarkText(numbers);
    if (node.embedded() instanceof Embedded.Regression regression) {
      return texts.of(regression.remarks());
    }
    return node.embedded() instanceof Embedded.Tree inner ? texts.of(inner.remarks()) : "";
  }

  /** The words about the tree as a whole. */
  List<String> facts() {
    List<String> facts = new ArrayList<>();
    facts.add(tree.classification() ? "Classification tree" : "Regression tree");
    facts.add(plural(statistics.nodes(), "node") + ", " + ends()
        + ", depth " + statistics.depth());
    if (!Double.isNaN(statistics.total())) {
      facts.add(
          numbers.count(statistics.total()) + (statistics.total() == 1 ? " record" : " records"));
    }
    return facts;
  }

  /** How many leaves there are, and outcomes where these are more. */
  String ends() {
    String leaves = plural(statistics.leaves(), "leaf", "leaves");
    return statistics.outcomes() == statistics.leaves()
        ? leaves : leaves + ", " + plural(statistics.outcomes(), "outcome");
  }

  String plural(int count, String one) {
    return plural(count, one, one + "s");
  }

  String plural(int count, String one, String many) {
    return numbers.count(count) + " " + (count == 1 ? one : many);
  }
}
