// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.layout;

import java.util.Arrays;

/**
 * Places the nodes of an ordered tree side by side, level by level: as narrow as the tidy rules
 * allow, children in their order, each parent over the middle of its children, equal subtrees drawn
 * equally.
 *
 * <p>The algorithm is that of C. Buchheim, M. J&uuml;nger and S. Leipert, "Improving Walker's
 * Algorithm to Run in Linear Time", Graph Drawing 2002, LNCS 2528, pages 344 to 353, with nodes of
 * different breadths. The names of the fields are those of the paper.
 */
public final class TidyTree {
  private static final int NONE = -1;

  private final int[] parent;
  private final double[] breadth;
  private final double siblingGap;
  private final double cousinGap;

  private final int[] firstChild;
  private final int[] lastChild;
  private final int[] leftSibling;
  private final int[] rightSibling;
  /** The place among its siblings, from 0. */
  private final int[] number;

  private final double[] prelim;
  private final double[] modifier;
  private final double[] shift;
  private final double[] change;
  private final int[] thread;
  private final int[] ancestor;
  private final double[] center;

  private TidyTree(int[] parent, double[] breadth, double siblingGap, double cousinGap) {
    int n = parent.length;
    this.parent = parent;
    this.breadth = breadth;
    this.siblingGap = siblingGap;
    this.cousinGap = cousinGap;
    firstChild = filled(n);
    lastChild = filled(n);
    leftSibling = filled(n);
    rightSibling = filled(n);
    number = new int[n];
    prelim = new double[n];
    modifier = new double[n];
    shift = new double[n];
    change = new double[n];
    thread = filled(n);
    ancestor = new int[n];
    center = new double[n];
  }

  private static int[] filled(int n) {
    int[] array = new int[n];
    Arrays.fill(array, NONE);
    return array;
  }

  /**
   * Places a tree.
   *
   * @param parent the parent of each node; a parent comes before its children, and the children
   *     of a node in their order; -1 for the root, which comes first
   * @param breadth how much room each node takes on its level
   * @param siblingGap the least room between neighbours with the same parent
   * @param cousinGap the least room between neighbours with different parents
   * @return the centre of each node; the outermost edge is at 0
   */
  public static double[] place(
      int[] parent, double[] breadth, double siblingGap, double cousinGap) {
    if (parent.length == 0 || parent.length != breadth.length) {
      throw new IllegalArgumentException(
          parent.length + " parents and " + breadth.length + " breadths");
    }
    TidyTree tree = new TidyTree(parent, breadth, siblingGap, cousinGap);
    tree.link();
    tree.firstWalk();
    tree.secondWalk();
    return tree.center;
  }

  private void link() {
    for (int v = 0; v < parent.length; v++) {
      int p = parent[v];
      boolean valid = v == 0 ? p == NONE : p >= 0 && p < v;
      if (!valid) {
        throw new IllegalArgumentException("node " + v + " has the parent " + p);
      }
      ancestor[v] = v;
      if (p == NONE) {
        continue;
      }
      if (firstChild[p] == NONE) {
        firstChild[p] = v;
      } else {
        leftSibling[v] = lastChild[p];
        rightSibling[lastChild[p]] = v;
        number[v] = number[lastChild[p]] + 1;
      }
      lastChild[p] = v;
    }
  }

  /**
   * Bottom up. The paper recurses; going backwards over an order in which parents come first visits
   * all nodes below a node before it just as well, but siblings have to be placed from the left, so
   * each node places its children.
   */
  private void firstWalk() {
    for (int v = parent.length - 1; v >= 0; v--) {
      if (firstChild[v] != NONE) {
        placeChildren(v);
      }
    }
    prelim[0] = firstChild[0] == NONE ? 0 : middleOfChildren(0);
  }

  private void placeChildren(int v) {
    int defaultAncestor = firstChild[v];
    for (int w = firstChild[v]; w != NONE; w = rightSibling[w]) {
      placeChild(w);
      defaultAncestor = apportion(w, defaultAncestor);
    }
    executeShifts(v);
  }

  private void placeChild(int v) {
    int left = leftSibling[v];
    if (firstChild[v] == NONE) {
      prelim[v] = left == NONE ? 0 : prelim[left] + distance(left, v);
      return;
    }
    double middle = middleOfChildren(v);
    prelim[v] = left == NONE ? middle : prelim[left] + distance(left, v);
    modifier[v] = left == NONE ? 0 : prelim[v] - middle;
  }

  private double middleOfChildren(int v) {
    return (prelim[firstChild[v]] + prelim[lastChild[v]]) / 2;
  }

  private double distance(int left, int right) {
    double gap = parent[left] == parent[right] ? siblingGap : cousinGap;
    return (breadth[left] + breadth[right]) / 2 + gap;
  }

  private int apportion(int v, int defaultAncestor) {
    int w = leftSibling[v];
    if (w == NONE) {
      return defaultAncestor;
    }
    int insideRight = v;
    int outsideRight = v;
    int insideLeft = w;
    int outsideLeft = firstChild[parent[v]];
    double insideRightSum = modifier[insideRight];
    double outsideRightSum = modifier[outsideRight];
    double insideLeftSum = modifier[insideLeft];
    double outsideLeftSum = modifier[outsideLeft];
    while (nextRight(insideLeft) != NONE && nextLeft(insideRight) != NONE) {
      insideLeft = nextRight(insideLeft);
      insideRight = nextLeft(insideRight);
      outsideLeft = nextLeft(outsideLeft);
      outsideRight = nextRight(outsideRight);
      ancestor[outsideRight] = v;
      double move = prelim[insideLeft] + insideLeftSum - prelim[insideRight] - insideRightSum
          + distance(insideLeft, insideRight);
      if (move > 0) {
        moveSubtree(ancestorOf(insideLeft, v, defaultAncestor), v, move);
        insideRightSum += move;
        outsideRightSum += move;
      }
      insideLeftSum += modifier[insideLeft];
      insideRightSum += modifier[insideRight];
      outsideLeftSum += modifier[outsideLeft];
      outsideRightSum += modifier[outsideRight];
    }
    int newDefault = defaultAncestor;
    if (nextRight(insideLeft) != NONE && nextRight(outsideRight) == NONE) {
      thread[outsideRight] = nextRight(insideLeft);
      modifier[outsideRight] += insideLeftSum - outsideRightSum;
    }
    if (nextLeft(insideRight) != NONE && nextLeft(outsideLeft) == NONE) {
      thread[outsideLeft] = nextLeft(insideRight);
      modifier[outsideLeft] += insideRightSum - outsideLeftSum;
      newDefault = v;
    }
    return newDefault;
  }

  private int nextLeft(int v) {
    return firstChild[v] == NONE ? thread[v] : firstChild[v];
  }

  private int nextRight(int v) {
    return lastChild[v] == NONE ? thread[v] : lastChild[v];
  }

  private int ancestorOf(int insideLeft, int v, int defaultAncestor) {
    int candidate = ancestor[insideLeft];
    return parent[candidate] == parent[v] ? candidate : defaultAncestor;
  }

  private void moveSubtree(int left, int right, double move) {
    double perSubtree = move / (number[right] - number[left]);
    change[right] -= perSubtree;
    shift[right] += move;
    change[left] += perSubtree;
    prelim[right] += move;
    modifier[right] += move;
  }

  private void executeShifts(int v) {
    double sum = 0;
    double changeSum = 0;
    for (int w = lastChild[v]; w != NONE; w = leftSibling[w]) {
      prelim[w] += sum;
      modifier[w] += sum;
      changeSum += change[w];
      sum += shift[w] + changeSum;
    }
  }

  /** Top down: adds up the modifiers above each node. */
  private void secondWalk() {
    double[] sums = new double[parent.length];
    double edge = Double.POSITIVE_INFINITY;
    for (int v = 0; v < parent.length; v++) {
      sums[v] = parent[v] == NONE ? 0 : sums[parent[v]] + modifier[parent[v]];
      center[v] = prelim[v] + sums[v];
      edge = Math.min(edge, center[v] - breadth[v] / 2);
    }
    for (int v = 0; v < center.length; v++) {
      center[v] -= edge;
    }
  }
}
