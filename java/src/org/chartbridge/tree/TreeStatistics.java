// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;

/**
 * The statistics of all nodes of a tree. What an inner node does not say is worked out from its
 * children, since many tools write counts at the leaves only.
 */
public final class TreeStatistics {
  /** Sums from which mean and variance of the leaves below a node follow. */
  private record Sums(double weight, double sum, double squares) {
    static final Sums UNKNOWN = new Sums(Double.NaN, Double.NaN, Double.NaN);

    static Sums of(double weight, double value) {
      return new Sums(weight, weight * value, weight * value * value);
    }

    Sums plus(Sums other) {
      return new Sums(weight + other.weight, sum + other.sum, squares + other.squares);
    }

    double mean() {
      return weight > 0 ? sum / weight : Double.NaN;
    }

    double deviation() {
      double mean = mean();
      return weight > 0 ? Math.sqrt(Math.max(0, squares / weight - mean * mean)) : Double.NaN;
    }
  }

  private final TreeModel tree;
  private final List<String> classes;
  private final Map<String, NodeStatistics> byPath = new HashMap<>();
  private double total = Double.NaN;
  private double lowest = Double.NaN;
  private double highest = Double.NaN;
  private int nodes;
  private int leaves;
  private int depth;

  private TreeStatistics(TreeModel tree) {
    this.tree = tree;
    this.classes = classes(tree);
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

  /** The number of edges from the root to the deepest leaf. */
  public int depth() {
    return depth;
  }

  private static List<String> classes(TreeModel tree) {
    if (!tree.classification()) {
      return List.of();
    }
    Set<String> classes = new LinkedHashSet<>(tree.classes());
    addClasses(tree.root(), classes);
    return List.copyOf(classes);
  }

  private static void addClasses(TreeNode node, Set<String> classes) {
    node.distribution().forEach(entry -> classes.add(entry.value()));
    if (node.score() != null) {
      classes.add(node.score());
    }
    node.children().forEach(child -> addClasses(child, classes));
  }

  private double count(TreeNode node) {
    if (!Double.isNaN(node.recordCount())) {
      return node.recordCount();
    }
    if (!node.distribution().isEmpty()) {
      return node.distribution().stream().mapToDouble(ClassCount::count).sum();
    }
    if (node.isLeaf()) {
      return Double.NaN;
    }
    return node.children().stream().mapToDouble(this::count).sum();
  }

  private Sums collect(TreeNode node, int level) {
    nodes++;
    leaves += node.isLeaf() ? 1 : 0;
    depth = Math.max(depth, level);
    List<double[]> below = new ArrayList<>();
    Sums leafSums = node.isLeaf() ? Sums.UNKNOWN : new Sums(0, 0, 0);
    double childCount = 0;
    for (TreeNode child : node.children()) {
      leafSums = leafSums.plus(collect(child, level + 1));
      NodeStatistics statistics = of(child);
      below.add(statistics.classCounts());
      childCount += statistics.count();
    }
    double count = ownCount(node, childCount);
    NodeStatistics statistics = tree.classification() ? classification(node, count, below)
                                                      : regression(node, count, leafSums);
    byPath.put(node.path(), statistics);
    if (statistics.hasMean()) {
      lowest = Double.isNaN(lowest) ? statistics.mean() : Math.min(lowest, statistics.mean());
      highest = Double.isNaN(highest) ? statistics.mean() : Math.max(highest, statistics.mean());
    }
    return node.isLeaf() ? Sums.of(count, statistics.mean()) : leafSums;
  }

  private static double ownCount(TreeNode node, double childCount) {
    if (!Double.isNaN(node.recordCount())) {
      return node.recordCount();
    }
    if (!node.distribution().isEmpty()) {
      return node.distribution().stream().mapToDouble(ClassCount::count).sum();
    }
    return node.isLeaf() ? Double.NaN : childCount;
  }

  private double share(double count) {
    return total > 0 ? count / total : Double.NaN;
  }

  private NodeStatistics classification(TreeNode node, double count, List<double[]> below) {
    double[] counts = classCounts(node, below);
    String prediction = node.score();
    if (prediction == null && counts != null) {
      prediction = classes.get(largest(counts));
    }
    return new NodeStatistics(count, share(count), counts, prediction, Double.NaN, Double.NaN);
  }

  private double[] classCounts(TreeNode node, List<double[]> below) {
    double[] counts = new double[classes.size()];
    if (!node.distribution().isEmpty()) {
      for (ClassCount entry : node.distribution()) {
        counts[classes.indexOf(entry.value())] += entry.count();
      }
      return sum(counts) > 0 ? counts : null;
    }
    if (below.isEmpty() || below.contains(null)) {
      return null;
    }
    for (double[] child : below) {
      for (int i = 0; i < counts.length; i++) {
        counts[i] += child[i];
      }
    }
    return counts;
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

  private NodeStatistics regression(TreeNode node, double count, Sums leafSums) {
    Sums own = distribution(node);
    double score = node.score() == null ? Double.NaN : number(node.score());
    double mean = score;
    if (node.score() == null) {
      mean = Double.isNaN(own.mean()) ? leafSums.mean() : own.mean();
    }
    double spread = Double.isNaN(own.mean()) ? leafSums.deviation() : own.deviation();
    String prediction = node.score();
    if (prediction == null && !Double.isNaN(mean)) {
      prediction = Double.toString(mean);
    }
    return new NodeStatistics(count, share(count), null, prediction, mean, spread);
  }

  private static Sums distribution(TreeNode node) {
    Sums sums = node.distribution().isEmpty() ? Sums.UNKNOWN : new Sums(0, 0, 0);
    for (ClassCount entry : node.distribution()) {
      sums = sums.plus(Sums.of(entry.count(), number(entry.value())));
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
