// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.Collection;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * The statistics of all nodes of a tree. What an inner node does not say is worked out from its
 * children, since many tools write counts at the leaves only.
 */
public final class TreeStatistics {
  private final TreeModel tree;
  private final List<String> classes;
  /** The place of each class by what its texts have in common. */
  private final Map<String, Integer> classPlaces = new HashMap<>();
  private final Map<String, NodeStatistics> byPath = new HashMap<>();
  private double total = Double.NaN;
  private double lowest = Double.NaN;
  private double highest = Double.NaN;
  private int nodes;
  private int leaves;
  private int outcomes;
  private int depth;

  private TreeStatistics(TreeModel tree) {
    this.tree = tree;
    this.classes = List.copyOf(classesOf(tree));
    classes.forEach(value -> classPlaces.put(tree.classIdentity(value), classPlaces.size()));
  }

  public static TreeStatistics of(TreeModel tree) {
    TreeStatistics statistics = new TreeStatistics(tree);
    statistics.total = statistics.count(tree.root());
    statistics.collect(tree.root(), 0);
    return statistics;
  }

  /** The classes of the target: those that the model lists, then others that its nodes name. */
  public List<String> classes() {
    return classes;
  }

  public NodeStatistics of(TreeNode node) {
    return byPath.get(node.path());
  }

  /** The number of records of the whole tree; NaN when unknown. */
  public double total() {
    return total;
  }

  /** The lowest and the highest prediction of a regression tree; NaN when there is none. */
  public double lowest() {
    return lowest;
  }

  public double highest() {
    return highest;
  }

  public int nodes() {
    return nodes;
  }

  public int leaves() {
    return leaves;
  }

  /**
   * The number of nodes where a record can end: leaves, and nodes that predict because none of the
   * branches below them has to apply.
   */
  public int outcomes() {
    return outcomes;
  }

  /**
   * Where a prediction stands between the lowest and the highest one, from 0 to 1; in the middle
   * when all are the same.
   */
  public double position(double prediction) {
    // Halves, since the range itself may be too large for a double.
    double range = highest / 2 - lowest / 2;
    double share = range > 0 ? (prediction / 2 - lowest / 2) / range : 0.5;
    return Math.min(1, Math.max(0, share));
  }

  /** The number of edges from the root to the deepest leaf. */
  public int depth() {
    return depth;
  }

  /**
   * The classes of a tree: those that the model lists, then others that its nodes name, each as it
   * is written first.
   */
  public static Collection<String> classesOf(TreeModel tree) {
    if (!tree.classification()) {
      return List.of();
    }
    Map<String, String> classes = new LinkedHashMap<>();
    tree.classes().forEach(value -> classes.putIfAbsent(tree.classIdentity(value), value));
    addClasses(tree, tree.root(), classes);
    return classes.values();
  }

  private static void addClasses(TreeModel tree, TreeNode node, Map<String, String> classes) {
    node.distribution().forEach(
        entry -> classes.putIfAbsent(tree.classIdentity(entry.value()), entry.value()));
    if (node.score() != null) {
      classes.putIfAbsent(tree.classIdentity(node.score()), node.score());
    }
    node.children().forEach(child -> addClasses(tree, child, classes));
  }

  private int place(String value) {
    return classPlaces.get(tree.classIdentity(value));
  }

  private double count(TreeNode node) {
    if (hasOwnCount(node)) {
      return ownCount(node);
    }
    return node.isLeaf() ? Double.NaN : node.children().stream().mapToDouble(this::count).sum();
  }

  private Moments collect(TreeNode node, int level) {
    nodes++;
    leaves += node.isLeaf() ? 1 : 0;
    boolean ends = node.isLeaf() || Branches.endsAt(tree, node);
    outcomes += ends ? 1 : 0;
    depth = Math.max(depth, level);
    List<NodeStatistics> below = new ArrayList<>();
    Moments leafSums = node.isLeaf() ? Moments.UNKNOWN : Moments.NONE;
    double childCount = 0;
    for (TreeNode child : node.children()) {
      leafSums = leafSums.plus(collect(child, level + 1));
      NodeStatistics statistics = of(child);
      below.add(statistics);
      childCount += statistics.count();
    }
    double count = hasOwnCount(node) ? ownCount(node) : node.isLeaf() ? Double.NaN : childCount;
    if (ends && !node.isLeaf()) {
      leafSums = leafSums.plus(ending(node, count - childCount));
    }
    NodeStatistics statistics = tree.classification() ? classification(node, count, below)
                                                      : regression(node, count, leafSums);
    byPath.put(node.path(), statistics);
    if (statistics.hasMean()) {
      lowest = Double.isNaN(lowest) ? statistics.mean() : Math.min(lowest, statistics.mean());
      highest = Double.isNaN(highest) ? statistics.mean() : Math.max(highest, statistics.mean());
    }
    return node.isLeaf() ? Moments.of(count, statistics.mean()) : leafSums;
  }

  /** The records that end at a node although it has branches. */
  private static Moments ending(TreeNode node, double records) {
    if (records <= 0) {
      return Moments.NONE;
    }
    return Moments.of(
        records, node.score() == null ? distribution(node).average() : number(node.score()));
  }

  private static boolean hasOwnCount(TreeNode node) {
    return !Double.isNaN(node.recordCount()) || !node.distribution().isEmpty();
  }

  private static double ownCount(TreeNode node) {
    if (!Double.isNaN(node.recordCount())) {
      return node.recordCount();
    }
    double sum = node.distribution().stream().mapToDouble(ClassCount::count).sum();
    // Some tools write zeros where they give probabilities instead.
    boolean probabilities =
        node.distribution().stream().anyMatch(entry -> entry.probability() > 0);
    return sum == 0 && probabilities ? Double.NaN : sum;
  }

  private double share(double count) {
    return total > 0 ? count / total : Double.NaN;
  }

  private NodeStatistics classification(
      TreeNode node, double count, List<NodeStatistics> below) {
    double[] counts = classCounts(node, below);
    double[] probabilities = counts == null ? probabilities(node) : null;
    double[] known = counts == null ? probabilities : counts;
    String prediction = node.score() == null ? null : classes.get(place(node.score()));
    if (prediction == null && known != null) {
      prediction = classes.get(largest(known));
    }
    return new NodeStatistics(count, share(count), known, probabilities != null,
        node.predictsByRegression() ? null : prediction, Double.NaN, Double.NaN);
  }

  private double[] classCounts(TreeNode node, List<NodeStatistics> below) {
    double[] counts = new double[classes.size()];
    if (!node.distribution().isEmpty()) {
      for (ClassCount entry : node.distribution()) {
        counts[place(entry.value())] += entry.count();
      }
      return sum(counts) > 0 ? counts : null;
    }
    for (NodeStatistics child : below) {
      if (child.classCounts() == null || child.probabilities()) {
        return null;
      }
      for (int i = 0; i < counts.length; i++) {
        counts[i] += child.classCounts()[i];
      }
    }
    return sum(counts) > 0 ? counts : null;
  }

  /** The probabilities that a document gives instead of counts, or null. */
  private double[] probabilities(TreeNode node) {
    double[] probabilities = new double[classes.size()];
    for (ClassCount entry : node.distribution()) {
      if (!Double.isNaN(entry.probability())) {
        probabilities[place(entry.value())] += entry.probability();
      }
    }
    return sum(probabilities) > 0 ? probabilities : null;
  }

  private static double sum(double[] values) {
    double sum = 0;
    for (double value : values) {
      sum += value;
    }
    return sum;
  }

  private static int largest(double[] values) {
    int best = 0;
    for (int i = 1; i < values.length; i++) {
      best = values[i] > values[best] ? i : best;
    }
    return best;
  }

  private NodeStatistics regression(TreeNode node, double count, Moments leafSums) {
    Moments own = distribution(node);
    double mean = node.score() == null ? Double.NaN : number(node.score());
    if (node.score() == null) {
      mean = Double.isNaN(own.average()) ? leafSums.average() : own.average();
    }
    double spread = Double.isNaN(own.average()) ? leafSums.deviation() : own.deviation();
    String prediction = node.score();
    if (prediction == null && !Double.isNaN(mean)) {
      prediction = Double.toString(mean);
    }
    boolean byRegression = node.predictsByRegression();
    return new NodeStatistics(count, share(count), null, false, byRegression ? null : prediction,
        byRegression ? Double.NaN : mean, spread);
  }

  private static Moments distribution(TreeNode node) {
    Moments sums = node.distribution().isEmpty() ? Moments.UNKNOWN : Moments.NONE;
    for (ClassCount entry : node.distribution()) {
      sums = sums.plus(Moments.of(entry.count(), number(entry.value())));
    }
    return sums;
  }

  private static double number(String text) {
    try {
      double value = Double.parseDouble(text);
      return Double.isFinite(value) ? value : Double.NaN;
    } catch (NumberFormatException e) {
      return Double.NaN;
    }
  }
}
