// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.Set;
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

  private static int[] passing(TreeDocument document, String csv, String... paths) {
    SamplePaths samples = SamplePaths.of(document, Models.utf8(csv));
    int[] found = new int[paths.length];
    for (int i = 0; i < paths.length; i++) {
      found[i] = samples.passing(
          document.tree(1), Models.node(document.tree(1).root(), paths[i]));
    }
    return found;
  }

  /** What stands in for missing, extreme and invalid values decides the way. */
  @Test
  void recordsGoWhereTheModelSendsTheirValues() {
    String text = new String(Models.odd("adjusted"), StandardCharsets.UTF_8)
        .replace("\"log income\" operator", "\"income\" operator");
    TreeDocument document = Models.read(text);
    String[] paths = {"1", "1.1", "1.1.1", "1.1.2", "1.2", "1.2.1", "1.2.2"};
    assertArrayEquals(new int[] {1, 1, 1, 0, 0, 0, 0},
        passing(document, "age,income,region\n20,5,north\n", paths));
    // No age, and -99, which means the same, are read as 40; no income is read as 1000.
    assertArrayEquals(new int[] {2, 0, 0, 0, 2, 0, 2},
        passing(document, "age,income,region\n,,north\n-99,,north\n", paths));
    // An invalid region counts as missing, and that is read as south.
    assertArrayEquals(new int[] {3, 3, 1, 2, 0, 0, 0}, passing(
        document, "age,income,region\n20,5,?\n20,5,\n20,5,north\n", paths));
    // The model has no result for an age that there cannot be.
    assertArrayEquals(new int[] {1, 1, 0, 1, 0, 0, 0},
        passing(document, "age,income,region\n131,5,north\n-5,5,north\n3,5,south\n", paths));
  }

  @Test
  void recordsThatTheModelRejectsHaveNoWay() {
    String text = new String(Models.odd("adjusted"), StandardCharsets.UTF_8)
        .replace("\"log income\" operator", "\"income\" operator")
        .replace("name=\"age\" outliers=\"asExtremeValues\"",
            "name=\"age\" missingValueTreatment=\"returnInvalid\" outliers=\"asMissingValues\"");
    String[] paths = {"1", "1.1", "1.2"};
    // Missing, by another name, and what counts as missing because it is an outlier.
    assertArrayEquals(new int[] {1, 1, 0}, passing(Models.read(text),
        "age,income,region\n,5,north\n-99,5,north\n17,5,north\n20,5,north\n", paths));
    String invalid = text.replace("missingValueTreatment",
        "invalidValueTreatment=\"asMissing\" missingValueTreatment");
    assertArrayEquals(new int[] {1, 1, 0}, passing(
        Models.read(invalid), "age,income,region\n131,5,north\n20,5,north\n", paths));
  }

  @Test
  void waysThroughComputedFieldsAreNotGuessed() {
    TreeDocument document = PmmlReader.read(Models.odd("adjusted"));
    SamplePaths samples = SamplePaths.of(document, Models.utf8("age,region\n20,north\n"));
    assertEquals(Set.of("log income"), samples.lacking(document.tree(1)));
    assertEquals(0, samples.passing(document.tree(1), document.tree(1).root()));
    SamplePaths given =
        SamplePaths.of(document, Models.utf8("age,region,log income\n50,north,7.25\n"));
    assertEquals(Set.of(), given.lacking(document.tree(1)));
    assertEquals(1, given.passing(
        document.tree(1), Models.node(document.tree(1).root(), "1.2.1")));
  }

  @Test
  void aTreeWithinANodeHasRulesOfItsOwn() {
    TreeModel tree = PmmlReader.read(Models.odd("embedded-models")).tree(1);
    assertEquals(List.of("1", "1.1"), walk(tree, Map.of("area", "90")));
    assertEquals(List.of("1", "1.2", "1.2.1"), walk(tree, Map.of("rooms", "4")));
    assertEquals(
        List.of("1", "1.2", "1.2.1", "1.2.1.1"), walk(tree, Map.of("rooms", "4", "area", "70")));
  }

  @ParameterizedTest
  @CsvSource({"iris, iris-samples, 3", "titanic-forest, titanic-samples, 4"})
  void theSamplesOfTheExamplesRunThroughEveryTree(String model, String samples, int records) {
    TreeDocument document = PmmlReader.read(Models.example(model));
    SamplePaths paths = SamplePaths.of(
        document, Models.bytes(Models.SOURCE.resolve("examples/trees/" + samples + ".csv")));
    assertEquals(records, paths.records());
    for (TreeModel tree : document.trees()) {
      int atLeaves = 0;
      for (TreeNode node : Models.all(tree.root())) {
        atLeaves += node.isLeaf() ? paths.passing(tree, node) : 0;
      }
      assertEquals(records, atLeaves, model + " tree " + tree.number());
    }
  }
}
