// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.HashSet;
import java.util.Set;
import org.chartbridge.chart.ChartException;
import org.chartbridge.draw.Style;
import org.chartbridge.image.ImageType;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.RandomPmml;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;
import org.junit.jupiter.api.Test;

/** Documents that nobody thought of. Each failure names its seed. */
class RandomTreesTest {
  private static final int DOCUMENTS = 120;
  /** Encoding takes most of the time, so only some go through all formats. */
  private static final int ENCODED = 12;

  private static TreeDisplay display(int seed) {
    TreeDisplay display = TreeDisplay.DEFAULT.withOrientation(seed % 2 == 0);
    return seed % 3 == 0 ? display.withDepth(1 + seed % 4) : display;
  }

  /** A message is an answer; anything else is a fault. */
  private static TreeDocument read(int seed) {
    return Models.read(RandomPmml.document(seed));
  }

  @Test
  void allTextsStandApartAndInsideTheirBoxes() {
    for (int seed = 0; seed < DOCUMENTS; seed++) {
      TreeDocument document = read(seed);
      TreeDisplay display = display(seed);
      Tidiness.check("seed " + seed,
          new TreePictures(document, display, null, SamplePaths.NONE).shown());
      TreeModel last = document.tree(document.trees().size());
      Tidiness.check("seed " + seed + ", tree " + last.number(), new TreePictures(
          document, display.withTree(last.number()), null, SamplePaths.NONE).shown());
    }
  }

  @Test
  void allFormatsAreWritten() {
    for (int seed = 0; seed < ENCODED; seed++) {
      TreeDocument document = read(seed);
      for (ImageType type : ImageType.values()) {
        try {
          TreePicture picture =
              new TreePictures(document, display(seed), null, SamplePaths.NONE).shown();
          assertTrue(TreeOutput.encode(picture, type, 50).length > 100, "seed " + seed + type);
        } catch (ChartException e) {
          assertTrue(e.getCause() == null, "seed " + seed + ", " + type + ": " + e);
        }
      }
    }
  }

  @Test
  void samplesFindTheirWayOrTheLegendSaysWhyNot() {
    byte[] csv = Models.utf8("x,y,a rather long name of a field,"
        + "a_long_name_with_underscores_and_no_space_at_all,Gr\u00F6\u00DFe,\u540D\u524D\n"
        + "1,0.5,1,1,,NA\n-3,,1,0.5,2,7\n");
    for (int seed = 0; seed < DOCUMENTS / 4; seed++) {
      TreeDocument document = read(seed);
      SamplePaths samples = SamplePaths.of(document, csv);
      for (TreeModel tree : document.trees()) {
        assertTrue(samples.passing(tree, tree.root()) <= 2, "seed " + seed);
        assertTrue(samples.lacking(tree).isEmpty() || samples.passing(tree, tree.root()) == 0,
            "seed " + seed);
      }
      Tidiness.check("seed " + seed,
          new TreePictures(document, display(seed), null, samples).shown());
    }
  }

  /** A generator that makes only one kind of tree would prove little. */
  @Test
  void theDocumentsAreOfManyKinds() {
    Set<String> kinds = new HashSet<>();
    for (int seed = 0; seed < DOCUMENTS; seed++) {
      TreeDocument document = read(seed);
      kinds.add(document.isSingleTree() ? "single" : "several");
      for (TreeModel tree : document.trees()) {
        kinds.add(tree.classification() ? "classification" : "regression");
        kinds.add(tree.missingValues().pmmlName());
        kinds.add(tree.remarks().isEmpty() ? "plain" : "remarks");
        Scene scene = new Scene(tree, tree, TreeDisplay.DEFAULT,
            new TreeStyle(Style.named("print"), 12), SamplePaths.NONE, document.classes());
        for (TreeNode node : Models.all(tree.root())) {
          kinds.add(scene.prediction(node) == null ? "no prediction" : "prediction");
          kinds.add(scene.statistics(node).hasCount() ? "count" : "no count");
          kinds.add(scene.statistics(node).probabilities() ? "probabilities" : "counts");
          kinds.add(scene.orderCounts(node) ? "ordered" : "unordered");
          kinds.add(node.embedded() == null ? "none" : node.embedded().getClass().getSimpleName());
          kinds.add(node.predicate() instanceof Predicate.Compound compound
              ? compound.join().name() : node.predicate().getClass().getSimpleName());
        }
      }
    }
    for (String kind : new String[] {"single", "several", "classification", "regression", "none",
        "lastPrediction", "nullPrediction", "defaultChild", "weightedConfidence", "aggregateNodes",
        "plain", "remarks", "no prediction", "prediction", "count", "no count", "probabilities",
        "counts", "ordered", "unordered", "Regression", "Tree", "AND", "OR", "XOR", "SURROGATE",
        "Simple", "Membership", "Constant"}) {
      assertTrue(kinds.contains(kind), kind);
    }
  }
}
