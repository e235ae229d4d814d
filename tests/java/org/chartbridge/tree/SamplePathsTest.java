// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class SamplePathsTest {
  private static List<String> walk(TreeModel tree, Map<String, String> values) {
    List<String> paths = new ArrayList<>();
    TreeWalk.walk(tree, values::get, node -> paths.add(node.path()));
    return paths;
  }

  private static TreeModel tree(String strategy) {
    String text = Models.document("<Node id=\"r\" score=\"A\" defaultChild=\"q\"><True/>"
        + "<Node id=\"p\" score=\"A\"><SimplePredicate field=\"x\" operator=\"lessThan\""
        + " value=\"1\"/>"
        + "</Node><Node id=\"q\" score=\"B\"><SimplePredicate field=\"x\" operator=\"lessThan\""
        + " value=\"2\"/></Node><Node id=\"s\" score=\"B\"><SimplePredicate field=\"c\""
        + " operator=\"equal\" value=\"v\"/></Node></Node>");
    return Models.read(text.replace(
        "<TreeModel", "<TreeModel missingValueStrategy=\"" + strategy + "\"")).tree(1);
  }

  @Test
  void aRecordTakesTheFirstBranchThatApplies() {
    TreeModel tree = tree("none");
    assertEquals(List.of("1", "1.1"), walk(tree, Map.of("x", "0", "c", "v")));
    assertEquals(List.of("1", "1.2"), walk(tree, Map.of("x", "1.5", "c", "v")));
    assertEquals(List.of("1", "1.3"), walk(tree, Map.of("x", "7", "c", "v")));
    assertEquals(List.of("1"), walk(tree, Map.of("x", "7", "c", "w")));
  }

  @ParameterizedTest
  @CsvSource({
    "none, 1 1.3", "lastPrediction, 1", "nullPrediction, 1", "defaultChild, 1 1.2",
    "weightedConfidence, 1 1.1 1.2 1.3", "aggregateNodes, 1 1.1 1.2 1.3"
  })
  void aMissingValueIsTreatedAsTheTreeSays(String strategy, String paths) {
    assertEquals(List.of(paths.split(" ")), walk(tree(strategy), Map.of("c", "v")));
  }

  @Test
  void aRecordPassesNothingWhereARootOrASegmentDoesNotApply() {
    TreeDocument document = PmmlReader.read(Models.odd("nested-segments"));
    Map<String, String> south = Map.of("region", "south", "x", "0.05");
    assertEquals(List.of(), walk(document.tree(1), south));
    assertEquals(List.of("1", "1.1"), walk(document.tree(3), south));
    // 0.1 in single precision is not below 0.1 in double precision.
    Map<String, String> north = Map.of("region", "north", "x", "0.1");
    assertEquals(List.of("1", "1.2"), walk(document.tree(1), north));
    TreeModel never = Models.read(Models.document("<Node score=\"A\"><False/></Node>")).tree(1);
    assertEquals(List.of(), walk(never, Map.of()));
  }

  @Test
  void recordsOfCsvAreCountedAtEachNode() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    SamplePaths paths = SamplePaths.of(iris, Models.utf8(
        "Petal.Length,Petal.Width,note\n1.4,0.2,a\n5,1.5,b\n,2.5,c\n,,d\n"));
    TreeModel tree = iris.tree(1);
    assertEquals(4, paths.records());
    int[] expected = {4, 1, 3, 2, 1};
    List<TreeNode> nodes = Models.all(tree.root());
    for (int i = 0; i < expected.length; i++) {
      assertEquals(expected[i], paths.passing(tree, nodes.get(i)), nodes.get(i).path());
    }
  }

  @Test
  void theSplitsOfTheForestAgreeWithTheCountsThatWereWrittenFromTheData() {
    // The counts in the document were made in R from all passengers; the walk has to give the same.
    TreeDocument forest = PmmlReader.read(Models.example("titanic-forest"));
    int[][][] people = {
      {{5, 175}, {1, 144}}, {{11, 168}, {13, 93}}, {{48, 462}, {31, 165}}, {{0, 862}, {0, 23}}
    };
    String[] classes = {"1st", "2nd", "3rd", "Crew"};
    String[] sexes = {"Male", "Female"};
    String[] ages = {"Child", "Adult"};
    StringBuilder csv = new StringBuilder("Class,Sex,Age\n");
    for (int c = 0; c < classes.length; c++) {
      for (int s = 0; s < sexes.length; s++) {
        for (int a = 0; a < ages.length; a++) {
          String line = classes[c] + "," + sexes[s] + "," + ages[a] + "\n";
          csv.append(line.repeat(people[c][s][a]));
        }
      }
    }
    SamplePaths paths = SamplePaths.of(forest, Models.utf8(csv.toString()));
    assertEquals(2201, paths.records());
    for (TreeModel tree : forest.trees()) {
      for (TreeNode node : Models.all(tree.root())) {
        assertEquals(node.recordCount(), paths.passing(tree, node),
            "tree " + tree.number() + " node " + node.path());
      }
    }
  }

  @Test
  void mistakesInTheRecordsAreNamed() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    assertEquals("The data has no column \"Petal.Width\"; its columns are Petal.Length.",
        message(iris, "Petal.Length\n1\n"));
    String message = message(iris, "Petal.Length,Petal.Width\nlong,1\n");
    assertTrue(message.startsWith(
        "CSV line 2, column \"Petal.Length\": found \"long\" where a number"), message);
    assertEquals(0, SamplePaths.of(iris, new byte[0]).records());
    assertEquals(0, SamplePaths.of(iris, Models.utf8("Petal.Length,Petal.Width\n")).records());
  }

  private static String message(TreeDocument document, String csv) {
    return assertThrows(
        ChartException.class, () -> SamplePaths.of(document, Models.utf8(csv))).getMessage();
  }
}
