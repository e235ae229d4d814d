// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.layout;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.time.Duration;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Random;
import org.junit.jupiter.api.Assertions;
import org.junit.jupiter.api.Test;

class TidyTreeTest {
  private static final double EXACT = 1e-6;
  private static final double SIBLING_GAP = 3;
  private static final double COUSIN_GAP = 7;

  private static double[] place(int[] parent, double... breadth) {
    return TidyTree.place(parent, breadth, SIBLING_GAP, COUSIN_GAP);
  }

  private static double[] same(int n, double breadth) {
    double[] all = new double[n];
    Arrays.fill(all, breadth);
    return all;
  }

  @Test
  void oneNodeStandsAtTheEdge() {
    assertArrayEquals(new double[] {5}, place(new int[] {-1}, 10), EXACT);
  }

  @Test
  void aParentStandsOverTheMiddleOfItsChildren() {
    double[] at = place(new int[] {-1, 0, 0}, 10, 20, 40);
    assertArrayEquals(new double[] {26.5, 10, 43}, at, EXACT);
  }

  @Test
  void aParentThatIsBroaderThanItsChildrenSetsTheEdge() {
    assertArrayEquals(new double[] {50, 50}, place(new int[] {-1, 0}, 100, 10), EXACT);
  }

  @Test
  void neighboursWithOtherParentsKeepTheWiderGap() {
    // Two parents with a child each: the parents need 10 + 3, the children 30 + 7.
    double[] at = place(new int[] {-1, 0, 0, 1, 2}, 10, 10, 10, 30, 30);
    assertArrayEquals(new double[] {33.5, 15, 52, 15, 52}, at, EXACT);
  }

  @Test
  void aSubtreeMovesUnderADeeperNeighbourAsFarAsItsOwnLevelsAllow() {
    // The second child has a broad grandchild only at depth 3, where the first child has nothing.
    double[] at = place(new int[] {-1, 0, 0, 2, 3}, 10, 10, 10, 10, 36);
    assertEquals(13, at[2] - at[1], EXACT);
    assertEquals(18, at[4], EXACT);
  }

  @Test
  void smallSubtreesBetweenLargeOnesAreSpreadEvenly() {
    // The outer children have five children each, the three between them have none.
    List<Integer> parents = new ArrayList<>(List.of(-1, 0, 0, 0, 0, 0));
    for (int i = 0; i < 5; i++) {
      parents.add(1);
    }
    for (int i = 0; i < 5; i++) {
      parents.add(5);
    }
    int[] parent = parents.stream().mapToInt(Integer::intValue).toArray();
    double[] at = place(parent, same(parent.length, 10));
    double step = at[2] - at[1];
    assertTrue(step > 13 + EXACT, "the large subtrees push apart");
    for (int v = 2; v <= 5; v++) {
      assertEquals(step, at[v] - at[v - 1], EXACT);
    }
  }

  @Test
  void whatStandsLeftOfTheLargeSubtreesIsNotPushedAway() {
    // Children 2 and 4 have five children each; 1 and 3 have none.
    List<Integer> parents = new ArrayList<>(List.of(-1, 0, 0, 0, 0));
    for (int i = 0; i < 10; i++) {
      parents.add(i < 5 ? 2 : 4);
    }
    int[] parent = parents.stream().mapToInt(Integer::intValue).toArray();
    double[] at = place(parent, same(parent.length, 10));
    assertEquals(13, at[2] - at[1], EXACT);
    assertEquals(69, at[4] - at[2], EXACT);
    assertEquals((at[2] + at[4]) / 2, at[3], EXACT);
  }

  @Test
  void randomTreesKeepTheRules() {
    for (int seed = 0; seed < 1500; seed++) {
      Random random = new Random(seed);
      int n = 1 + random.nextInt(seed % 10 == 0 ? 400 : 40);
      int[] parent = randomTree(random, n);
      double[] breadth = random.doubles(n, 1, seed % 3 == 0 ? 300 : 30).toArray();
      double[] at = TidyTree.place(parent, breadth, SIBLING_GAP, COUSIN_GAP);
      check("seed " + seed, parent, breadth, at);
    }
  }

  /** Preorder, so that order within a level is order of the numbers. */
  private static int[] randomTree(Random random, int n) {
    int[] parent = new int[n];
    parent[0] = -1;
    int back = 1 + random.nextInt(6);
    List<Integer> path = new ArrayList<>(List.of(0));
    for (int v = 1; v < n; v++) {
      int up = random.nextInt(back);
      while (up-- > 0 && path.size() > 1) {
        path.remove(path.size() - 1);
      }
      parent[v] = path.get(path.size() - 1);
      path.add(v);
    }
    return parent;
  }

  private static void check(String what, int[] parent, double[] breadth, double[] at) {
    int n = parent.length;
    int[] level = new int[n];
    double[] edge = new double[n];
    Arrays.fill(edge, Double.NEGATIVE_INFINITY);
    int[] last = new int[n];
    Arrays.fill(last, -1);
    double[] first = new double[n];
    double[] latest = new double[n];
    int[] count = new int[n];
    double least = Double.POSITIVE_INFINITY;
    for (int v = 0; v < n; v++) {
      level[v] = v == 0 ? 0 : level[parent[v]] + 1;
      int neighbour = last[level[v]];
      if (neighbour >= 0) {
        double gap = parent[neighbour] == parent[v] ? SIBLING_GAP : COUSIN_GAP;
        double room = at[v] - breadth[v] / 2 - (at[neighbour] + breadth[neighbour] / 2);
        assertTrue(room >= gap - EXACT, what + ": nodes " + neighbour + " and " + v
            + " are " + room + " apart, the gap is " + gap);
      }
      last[level[v]] = v;
      least = Math.min(least, at[v] - breadth[v] / 2);
      if (v > 0) {
        int p = parent[v];
        first[p] = count[p] == 0 ? at[v] : first[p];
        latest[p] = at[v];
        count[p]++;
      }
    }
    assertEquals(0, least, EXACT, what + ": the outermost edge");
    for (int v = 0; v < n; v++) {
      if (count[v] > 0) {
        assertEquals((first[v] + latest[v]) / 2, at[v], EXACT, what + ": parent " + v);
      }
    }
  }

  @Test
  void equalSubtreesLookEqual() {
    for (int seed = 0; seed < 200; seed++) {
      Random random = new Random(seed);
      int size = 2 + random.nextInt(15);
      int[] shape = randomTree(random, size);
      double[] shapeBreadth = random.doubles(size, 1, 40).toArray();
      // The same subtree as the first and as the last child, with leaves of any breadth between.
      int between = random.nextInt(4);
      int n = 1 + 2 * size + between;
      int[] parent = new int[n];
      double[] breadth = new double[n];
      parent[0] = -1;
      breadth[0] = 10;
      for (int i = 0; i < size; i++) {
        parent[1 + i] = i == 0 ? 0 : 1 + shape[i];
        parent[1 + size + between + i] = i == 0 ? 0 : 1 + size + between + shape[i];
        breadth[1 + i] = shapeBreadth[i];
        breadth[1 + size + between + i] = shapeBreadth[i];
      }
      for (int i = 0; i < between; i++) {
        breadth[1 + size + i] = 1 + random.nextInt(60);
      }
      double[] at = TidyTree.place(parent, breadth, SIBLING_GAP, COUSIN_GAP);
      double shift = at[1 + size + between] - at[1];
      for (int i = 0; i < size; i++) {
        assertEquals(at[1 + i] + shift, at[1 + size + between + i], EXACT, "seed " + seed);
      }
    }
  }

  @Test
  void aHundredThousandNodesTakeLinearTime() {
    int n = 100_000;
    int[] parent = randomTree(new Random(1), n);
    double[] at = Assertions.assertTimeout(
        Duration.ofSeconds(5), () -> TidyTree.place(parent, same(n, 10), 3, 7));
    assertEquals(n, at.length);
    int[] chain = new int[n];
    Arrays.setAll(chain, v -> v - 1);
    assertArrayEquals(same(n, 5), TidyTree.place(chain, same(n, 10), 3, 7), EXACT);
  }

  @Test
  void whatIsNoTreeIsRefused() {
    assertThrows(IllegalArgumentException.class, () -> place(new int[0]));
    assertThrows(IllegalArgumentException.class, () -> place(new int[] {-1, 0}, 1));
    assertThrows(IllegalArgumentException.class, () -> place(new int[] {-1, -1}, 1, 1));
    assertThrows(IllegalArgumentException.class, () -> place(new int[] {-1, 2, 0}, 1, 1, 1));
    assertThrows(IllegalArgumentException.class, () -> place(new int[] {0}, 1));
  }
}
