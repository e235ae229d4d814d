// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.List;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class TreeStatisticsTest {
  private static final double EXACT = 1e-9;

  private static NodeStatistics at(TreeModel tree, String path) {
    return TreeStatistics.of(tree).of(Models.node(tree.root(), path));
  }

  @Test
  void takesWhatTheDocumentSays() {
    TreeModel tree = PmmlReader.read(Models.example("iris")).tree(1);
    TreeStatistics all = TreeStatistics.of(tree);
    assertEquals(5, all.nodes());
    assertEquals(3, all.leaves());
    assertEquals(2, all.depth());
    assertEquals(150, all.total());
    NodeStatistics node = at(tree, "1.2.1");
    assertEquals(54, node.count());
    assertEquals(0.36, node.share(), EXACT);
    assertArrayEquals(new double[] {0, 49, 5}, node.classCounts());
    assertEquals("versicolor", node.prediction());
  }

  @Test
  void countsOfInnerNodesFollowFromTheLeaves() {
    String leaf = "<Node score=\"%s\"><%s/><ScoreDistribution value=\"A\" recordCount=\"%d\"/>"
        + "<ScoreDistribution value=\"D\" recordCount=\"%d\"/></Node>";
    TreeModel tree = Models
                         .read(Models.document("<Node><True/>" + leaf.formatted("A", "False", 6, 2)
                             + leaf.formatted("D", "True", 1, 11) + "</Node>"))
                         .tree(1);
    NodeStatistics root = at(tree, "1");
    assertEquals(20, root.count());
    assertEquals(1, root.share());
    // A, B and C are listed, D is found in the nodes.
    assertEquals(List.of("A", "B", "C", "D"), TreeStatistics.of(tree).classes());
    assertArrayEquals(new double[] {7, 0, 0, 13}, root.classCounts());
    assertEquals("D", root.prediction());
    assertEquals(0.4, at(tree, "1.1").share(), EXACT);
  }

  @Test
  void whatNobodySaysIsUnknown() {
    TreeModel tree =
        Models
            .read(Models.document(
                "<Node><True/><Node score=\"A\"><True/></Node><Node"
                    + " recordCount=\"3\"><True/></Node></Node>"))
            .tree(1);
    NodeStatistics root = at(tree, "1");
    assertFalse(root.hasCount());
    assertFalse(root.hasShare());
    assertNull(root.classCounts());
    assertNull(root.prediction());
    assertEquals(3, at(tree, "1.2").count());
    assertFalse(at(tree, "1.2").hasShare());
  }

  @Test
  void spreadOfARegressionFollowsFromTheLeavesBelow() {
    TreeModel tree =
        Models
            .read(Models.regression(
                "<Node score=\"4\" recordCount=\"4\"><True/><Node score=\"1\""
                    + " recordCount=\"1\"><True/></Node>"
                + "<Node score=\"5\" recordCount=\"3\"><True/></Node></Node>"))
            .tree(1);
    NodeStatistics root = at(tree, "1");
    assertEquals(4, root.mean());
    assertEquals(Math.sqrt(3), root.spread(), EXACT);
    assertFalse(at(tree, "1.2").hasSpread());
    assertEquals(1, TreeStatistics.of(tree).lowest());
    assertEquals(5, TreeStatistics.of(tree).highest());
  }

  @Test
  void aRegressionWithADistributionHasItsOwnMeanAndSpread() {
    TreeModel tree = PmmlReader.read(Models.odd("no-scores")).tree(1);
    NodeStatistics left = at(tree, "1.1");
    assertEquals(4, left.count());
    assertEquals(2, left.mean(), EXACT);
    assertEquals(Math.sqrt(3), left.spread(), EXACT);
    assertEquals("2.0", left.prediction());
    NodeStatistics right = at(tree, "1.2");
    assertFalse(right.hasCount());
    assertFalse(right.hasMean());
    assertNull(at(tree, "1.2.2").prediction());
  }

  /** Two leaves of one and two records. */
  private static TreeModel pair(String first, String second) {
    return Models.read(Models.regression("<Node><True/><Node score=\"" + first
        + "\" recordCount=\"1\"><True/></Node><Node score=\"" + second
        + "\" recordCount=\"2\"><True/></Node></Node>")).tree(1);
  }

  @ParameterizedTest
  @ValueSource(doubles = {0, 1e8, 1e9, 1e12, -1e15})
  void theSpreadOfLargePredictionsIsExact(double base) {
    TreeModel tree = pair(Double.toString(base + 1), Double.toString(base + 3));
    assertEquals(Math.sqrt(8.0 / 9), at(tree, "1").spread(), EXACT);
    assertEquals(base + 7.0 / 3, at(tree, "1").mean(), Math.max(Math.ulp(base), 1e-15));
  }

  @Test
  void equalPredictionsHaveNoSpreadWhateverTheirSize() {
    for (String value : new String[] {"0.1", "123456789.123", "1e300", "-7e-300"}) {
      assertEquals(0, at(pair(value, value), "1").spread(), value);
    }
  }

  @Test
  void theEndsOfDoublesGiveAMeanAndNoSpread() {
    TreeModel tree = pair("-1.7976931348623157E308", "1.7976931348623157E308");
    assertEquals(Double.MAX_VALUE / 3, at(tree, "1").mean(), 1e294);
    assertFalse(at(tree, "1").hasSpread());
  }

  @Test
  void recordsThatEndAtANodeWithBranchesCountForItsSpread() {
    TreeModel tree = Models.read(Models.regression("<Node score=\"1\" recordCount=\"4\"><True/>"
        + "<Node score=\"5\" recordCount=\"1\"><SimplePredicate field=\"x\" operator=\"lessThan\""
        + " value=\"0\"/></Node></Node>").replace("<TreeModel",
            "<TreeModel noTrueChildStrategy=\"returnLastPrediction\"")).tree(1);
    assertEquals(Math.sqrt(3), at(tree, "1").spread(), EXACT);
  }

  @Test
  void leavesWithoutCountsGiveNoSpread() {
    TreeModel tree = Models.read(Models.regression("<Node score=\"4\"><True/>"
        + "<Node score=\"1\"><True/></Node><Node score=\"5\"><True/></Node></Node>")).tree(1);
    assertFalse(at(tree, "1").hasSpread());
    assertTrue(at(tree, "1").hasMean());
  }

  @Test
  void emptyDistributionsAndZeroRecordsDivideNothing() {
    TreeModel tree = Models.read(Models.document("<Node score=\"A\" recordCount=\"0\"><True/>"
        + "<ScoreDistribution value=\"A\" recordCount=\"0\"/></Node>")).tree(1);
    NodeStatistics root = at(tree, "1");
    assertNull(root.classCounts());
    assertFalse(root.hasShare());
    assertEquals("A", root.prediction());
  }
}
