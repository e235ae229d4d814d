// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayInputStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import javax.xml.parsers.DocumentBuilderFactory;
import org.chartbridge.tree.Models;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;
import org.w3c.dom.Element;

/** Documents as other tools write them: what they say is in the picture, or said missing. */
class ForeignTreesTest {
  private static final int SVG = 5;
  private static final int PDF = 6;
  private static final int MAP = 7;
  private static final Pattern TEXT = Pattern.compile("<text [^>]*>([^<]*)</text>");

  private static String svg(byte[] model, int tree) {
    String display = "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" tree=\"" + tree
        + "\"/>";
    byte[] bytes = new TreeImager().renderToMemory(model, Models.utf8(display), SVG, 100);
    return new String(bytes, StandardCharsets.UTF_8);
  }

  private static List<String> texts(String svg) {
    List<String> texts = new ArrayList<>();
    Matcher matcher = TEXT.matcher(svg);
    while (matcher.find()) {
      texts.add(matcher.group(1).replace("&lt;", "<").replace("&gt;", ">").replace('\u00A0', ' '));
    }
    return texts;
  }

  private static List<String> texts(String name, int tree) {
    return texts(svg(Models.odd(name), tree));
  }

  private static String joined(String name) {
    return String.join(" ", texts(name, 1));
  }

  private static void assertHas(List<String> texts, String... wanted) {
    for (String text : wanted) {
      assertTrue(texts.contains(text), text + " in " + texts);
    }
  }

  private static void assertSays(String texts, String... wanted) {
    for (String text : wanted) {
      assertTrue(texts.contains(text), text + " in " + texts);
    }
  }

  /** What a document's image map says about its nodes. */
  private static String tooltips(String name) {
    byte[] blocks = new TreeImager().renderToMemory(Models.odd(name), Models.utf8(
        "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" tree=\"1\"/>"), MAP, 100);
    return new String(blocks, StandardCharsets.UTF_8);
  }

  @ParameterizedTest
  @ValueSource(ints = {1, 2, 3, 4, 5, 6, 7})
  void everyKindOfDocumentIsDrawnInEveryFormat(int type) {
    for (String name : Models.KINDS) {
      byte[] picture = new TreeImager().renderToMemory(Models.odd(name), null, type, 100);
      assertTrue(picture.length > 100, name);
    }
  }

  @Test
  void aNodeWithNeitherScoreNorCountsPredictsNothing() {
    List<String> texts = texts("neither-score-nor-count", 1);
    assertEquals(2, texts.stream().filter("no prediction"::equals).count());
    assertHas(texts, "oak", "elm", "colour in {red, green}");
  }

  @Test
  void whatFollowsFromCountsAtTheLeavesIsShown() {
    List<String> texts = texts("counts-at-leaves", 1);
    assertFalse(texts.contains("no prediction"));
    assertHas(texts, "n = 20 \u00B7 100\u2009%", "n = 8 \u00B7 40\u2009%");
    // Between whole numbers the half decides.
    assertHas(texts, "width < 1234.5", "width \u2265 1234.5");
    assertSays(tooltips("counts-at-leaves"), "Confidence of oak", "Probability of elm");
  }

  @Test
  void probabilitiesStandInForCountsThatAreNotThere() {
    List<String> texts = texts("probabilities", 1);
    assertHas(texts, "false", "true", "n = 8",
        "Bars show probabilities where the document gives no counts.");
    assertFalse(texts.contains("n = 0"));
  }

  /** The colours of the small trees mean what the legend of the overview says. */
  @Test
  void aClassThatNoValueDeclaresHasOneColourInAllTrees() {
    String svg = svg(Models.odd("undeclared-scores"), 0);
    Matcher swatch = Pattern.compile("<rect [^>]*fill: (rgb\\([^)]*\\))").matcher(svg);
    List<String> legend = new ArrayList<>();
    while (swatch.find()) {
      legend.add(swatch.group(1));
    }
    // The ground, then oak, elm and ash as they come up in the document.
    List<String> colours = legend.subList(1, 4);
    Matcher circle =
        Pattern.compile("<(?:ellipse|circle) [^>]*fill: (rgb\\([^)]*\\))").matcher(svg);
    List<String> nodes = new ArrayList<>();
    while (circle.find()) {
      nodes.add(circle.group(1));
    }
    assertEquals(List.of(colours.get(0), colours.get(1)), nodes.subList(1, 3));
    assertEquals(List.of(colours.get(2), colours.get(0)), nodes.subList(4, 6));
  }

  @Test
  void numericClassesAreComparedAsNumbers() {
    List<String> texts = texts("numeric-classes", 1);
    // Two in the legend, and one in each of three nodes.
    assertEquals(2, texts.stream().filter("0.0"::equals).count());
    assertEquals(3, texts.stream().filter("yes"::equals).count());
    assertFalse(texts.contains("1") || texts.contains("0") || texts.contains("0.00"));
    assertHas(texts, "grade = first", "grade = 2.0");
  }

  @Test
  void stringsThatLookLikeNumbersAreNotNumbers() {
    String text = new String(Models.odd("numeric-classes"), StandardCharsets.UTF_8)
        .replace("dataType=\"double\"", "dataType=\"string\"");
    assertHas(texts(svg(Models.utf8(text), 1)), "0.0", "yes", "1", "0", "0.00", "1e0");
  }

  @Test
  void aModelWithinANodeIsShown() {
    List<String> texts = texts("embedded-models", 1);
    assertHas(texts, "linear regression", "living area < 80");
    assertSays(joined("embedded-models"),
        "3.5 \u00B7 living area \u2212 rooms^2 + 20 \u00B7 [town = north]",
        "tree within the tree", "Predictions are then changed: multiplied by 2, lowered by 0.5.");
    assertSays(tooltips("embedded-models").replace('\u00A0', ' '), "linear regression",
        "0.125 \u00B7 living area \u00B7 rooms \u2212 12.25");
    // 40 records end at the node with branches, 10 at its leaf.
    assertHas(texts, "290", "\u00B1 20");
  }

  @Test
  void whatChangesPredictionsAndValuesIsSaid() {
    assertSays(joined("adjusted"), "this model is not for predictions",
        "Each missing value multiplies the confidence of the prediction by 0.8.",
        "Predictions are then changed: at least 0, at most 500, multiplied by 10, lowered by 2.5,"
            + " rounded to a whole number.",
        "Without a prediction it is 33.", "A missing age is read as 40.",
        "A missing region is read as south.", "age below 18 is read as 18.",
        "Computed by the model, how is not shown: log income.");
  }

  @Test
  void whatBecomesOfInvalidAndMissingValuesIsSaid() {
    assertSays(joined("adjusted"), "An invalid region is read as missing.");
    String text = new String(Models.odd("adjusted"), StandardCharsets.UTF_8);
    String age = "name=\"age\" invalidValueTreatment=\"";
    String changed = text.replace("name=\"age\"", age + "asValue\" invalidValueReplacement=\"50\""
        + " missingValueTreatment=\"returnInvalid\" missingValueReplacement=\"7\"");
    String said = String.join(" ", texts(svg(Models.utf8(changed), 1)));
    assertSays(said, "An invalid age is read as 50.", "No prediction when age is missing.");
    assertFalse(said.contains("is read as 7"), said);
    assertSays(String.join(" ", texts(svg(
        Models.utf8(text.replace("name=\"age\"", age + "asIs\"")), 1))),
        "An invalid age is read as it is.");
  }

  @Test
  void membersOfAChainSayHowTheyCount() {
    List<String> texts = texts("chain", 0);
    assertSays(String.join(" ", texts), "A part without a prediction is left out",
        "Predictions are then changed: raised by 0.5.", "weight: the value of trust",
        "when first guess < 5");
    assertSays(joined("chain"), "Predictions are then changed: raised by 0.5.");
  }

  @Test
  void treesThatDetectAnomaliesAreDrawn() {
    List<String> texts = texts("isolation-forest", 0);
    assertHas(texts, "path length", "Tree 1", "Tree 2");
    assertSays(String.join(" ", texts), "Anomaly detection: isolation forest",
        "samples of 256 records.");
    assertHas(texts("isolation-forest", 2), "7.75", "load > 80");
  }

  @Test
  void branchesWhoseOrderCountsAreNumbered() {
    List<String> texts = texts("ordered-branches", 1);
    assertHas(texts, "1. age \u2264 17", "2. age \u2264 26",
        "Where branches are numbered, a record takes the first that applies.");
    assertFalse(texts("counts-at-leaves", 1).stream().anyMatch(text -> text.contains("1. ")));
  }

  @Test
  void nodesAtWhichRecordsEndCountAsOutcomes() {
    List<String> texts = texts("ordered-branches", 1);
    assertHas(texts, "Classification tree \u00B7 5 nodes, 3 leaves, 5 outcomes, depth 2");
    assertEquals(2, texts.stream().filter("predicts when no branch applies"::equals).count());
    assertHas(texts("counts-at-leaves", 1),
        "Classification tree \u00B7 3 nodes, 2 leaves, depth 1 \u00B7 20 records");
  }

  @Test
  void withoutALastPredictionThePictureSaysThatThereIsNone() {
    String text = new String(Models.odd("ordered-branches"), StandardCharsets.UTF_8)
        .replace(" noTrueChildStrategy=\"returnLastPrediction\"", "");
    assertHas(texts(svg(Models.utf8(text), 1)), "When no branch applies: no prediction.");
    assertFalse(texts("neither-score-nor-count", 1).contains(
        "When no branch applies: no prediction."));
  }

  @Test
  void longNamesBreakWhereTheirPartsAreJoined() {
    List<String> texts = texts("ordered-branches", 1);
    assertHas(texts, "3. customer_lifetime_value_", "in_the_last_twelve_months",
        "premium_plan_for_families_", "with_children-and-");
    assertHas(texts, "> \u2212123456789.1");
  }

  @Test
  void anSvgIsOneImageWithATitleAndADescription() throws Exception {
    String svg = svg(Models.odd("counts-at-leaves"), 1);
    Element root = DocumentBuilderFactory.newInstance().newDocumentBuilder()
        .parse(new ByteArrayInputStream(svg.getBytes(StandardCharsets.UTF_8))).getDocumentElement();
    assertEquals("img", root.getAttribute("role"));
    assertEquals("title", root.getChildNodes().item(0).getNodeName());
    assertEquals("kind", root.getChildNodes().item(0).getTextContent());
    assertEquals("desc", root.getChildNodes().item(1).getNodeName());
    assertEquals("Classification tree, 3 nodes, 2 leaves, depth 1, 20 records. Classes: oak, elm.",
        root.getChildNodes().item(1).getTextContent());
    String odd = new String(Models.odd("counts-at-leaves"), StandardCharsets.UTF_8)
        .replace("name=\"kind\"", "name=\"a &lt;b&gt; &amp; c\"");
    assertSays(svg(Models.utf8(odd), 1), "<title>a &lt;b&gt; &amp; c</title>");
  }

  @Test
  void aPdfHasATitleAndALanguage() {
    byte[] bytes = new TreeImager().renderToMemory(Models.odd("counts-at-leaves"), null, PDF, 100);
    String pdf = new String(bytes, StandardCharsets.ISO_8859_1);
    assertSays(pdf, "/Title (kind)", "/Lang (en)", "/DisplayDocTitle true");
  }
}
