// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTimeout;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.nio.charset.StandardCharsets;
import java.time.Duration;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import org.chartbridge.draw.Mark;
import org.chartbridge.image.ImageType;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class TreePictureTest {
  private static final String OPEN = "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" ";

  private static TreeDisplay display(String attributes, String content) {
    return TreeDisplay.parse(Models.utf8(OPEN + attributes + ">" + content + "</tree-display>"));
  }

  private static TreePicture shown(TreeDocument document, TreeDisplay display) {
    return new TreePictures(document, display, null, SamplePaths.NONE).shown();
  }

  private static SingleTreePicture single(TreeDocument document, TreeDisplay display) {
    return (SingleTreePicture) shown(document, display);
  }

  private static RecordingGraphics recorded(TreePicture picture) {
    RecordingGraphics g = new RecordingGraphics();
    picture.draw(g);
    return g;
  }

  private static List<String> texts(TreePicture picture) {
    return recorded(picture).texts.stream().map(RecordingGraphics.Text::text).toList();
  }

  private static BufferedImage image(TreePicture picture) {
    BufferedImage image =
        new BufferedImage(picture.width(), picture.height(), BufferedImage.TYPE_INT_RGB);
    Graphics2D g = image.createGraphics();
    picture.draw(g);
    g.dispose();
    return image;
  }

  private static void assertTidy(String what, TreePicture picture) {
    Tidiness.check(what, picture);
  }

  @Test
  void nothingOverlapsOrIsClippedInRandomTrees() {
    for (int seed = 0; seed < 60; seed++) {
      TreeDocument document = Models.read(Models.random(seed, 1 + seed * 3));
      String depth = seed % 3 == 0 ? " depth=\"" + (1 + seed % 4) + "\"" : "";
      String orientation = seed % 2 == 0 ? "top-down" : "left-to-right";
      double size = 6 + seed % 20;
      TreeDisplay display = display(
          "orientation=\"" + orientation + "\" font-size=\"" + size + "\"" + depth, "");
      assertTidy("seed " + seed, shown(document, display));
    }
  }

  @Test
  void theRoomInWhichTheBranchesRunIsKeptFree() {
    for (int seed = 0; seed < 30; seed++) {
      TreeDocument document = Models.read(Models.random(seed, 80));
      boolean turned = seed % 2 == 0;
      TreeDisplay display = TreeDisplay.DEFAULT.withOrientation(turned);
      for (TreeNode node : Models.all(document.tree(1).root())) {
        boolean collapse = node.path().length() > 5 && node.id().endsWith("3");
        display = collapse ? display.toggled(document.tree(1), node) : display;
      }
      SingleTreePicture picture = single(document, display);
      assertTidy("seed " + seed, picture);
      checkLevels("seed " + seed, picture.layout(), turned);
    }
  }

  private static void checkLevels(String what, TreeLayout layout, boolean turned) {
    Map<Integer, double[]> gaps = new TreeMap<>();
    layout.nodes().forEach(
        node -> gaps.put(node.level, new double[] {node.gapStart, node.gapEnd}));
    for (TreeLayout.Placed node : layout.nodes()) {
      List<Rectangle2D> areas = new ArrayList<>(List.of(node.boxArea()));
      if (!node.box.label.isEmpty()) {
        areas.add(node.labelArea());
      }
      if (node.box.hidden > 0) {
        areas.add(node.badgeArea(turned));
      }
      double[] next = gaps.get(node.level + 1);
      for (Rectangle2D area : areas) {
        double from = turned ? area.getMinX() : area.getMinY();
        double to = turned ? area.getMaxX() : area.getMaxY();
        assertTrue(from >= gaps.get(node.level)[1], what + ": " + node.box.node.path());
        assertTrue(next == null || to <= next[0] + 1, what + ": " + node.box.node.path());
      }
    }
  }

  @ParameterizedTest
  @ValueSource(strings = {"top-down", "left-to-right"})
  void nothingOverlapsOrIsClippedInTheExamples(String orientation) {
    TreeDisplay display = display("orientation=\"" + orientation + "\"", "");
    for (String name : Models.EXAMPLES) {
      TreeDocument document = PmmlReader.read(Models.example(name));
      assertTidy(name, shown(document, display));
      for (int tree = 1; tree <= document.trees().size(); tree++) {
        assertTidy(name + " tree " + tree, shown(document, display.withTree(tree)));
      }
    }
    for (String name :
        List.of("prefixed-4.0", "sets-quotes", "surrogates", "nested-segments", "no-scores")) {
      assertTidy(name, shown(PmmlReader.read(Models.odd(name)), display));
    }
  }

  @Test
  void nothingOverlapsInAChainOf200AndInATreeOfOneNode() {
    TreeDisplay toTheRight = TreeDisplay.DEFAULT.withOrientation(true);
    for (TreeDisplay display : List.of(TreeDisplay.DEFAULT, toTheRight)) {
      assertTidy("chain", shown(Models.read(Models.chain(200)), display));
      SingleTreePicture one = single(Models.read(Models.chain(1)), display);
      assertTidy("one node", one);
      assertEquals(1, one.marks().size());
      assertTrue(texts(one).contains("Classification tree \u00B7 1 node, 1 leaf, depth 0"));
    }
  }

  @Test
  void aParentStandsOverTheMiddleOfItsChildrenAndChildrenKeepTheirOrder() {
    for (int seed = 100; seed < 130; seed++) {
      TreeDocument document = Models.read(Models.random(seed, 60));
      for (boolean turned : new boolean[] {false, true}) {
        SingleTreePicture picture =
            single(document, TreeDisplay.DEFAULT.withOrientation(turned));
        checkFamilies("seed " + seed, picture, turned);
      }
    }
  }

  private static void checkFamilies(String what, SingleTreePicture picture, boolean turned) {
    Map<TreeLayout.Placed, List<TreeLayout.Placed>> families = new java.util.IdentityHashMap<>();
    for (TreeLayout.Placed node : picture.layout().nodes()) {
      if (node.parent != null) {
        families.computeIfAbsent(node.parent, key -> new ArrayList<>()).add(node);
      }
    }
    families.forEach((parent, children) -> {
      double first = across(children.get(0), turned);
      double last = across(children.get(children.size() - 1), turned);
      // Boxes stand on whole pixels.
      assertEquals((first + last) / 2, across(parent, turned), 1.01, what);
      for (int i = 1; i < children.size(); i++) {
        assertTrue(across(children.get(i), turned) > across(children.get(i - 1), turned), what);
      }
      double parentEnd = turned ? parent.boxArea().getMaxX() : parent.boxArea().getMaxY();
      for (TreeLayout.Placed child : children) {
        assertTrue((turned ? child.x : child.y) > parentEnd, what + ": a child beside its parent");
      }
    });
  }

  private static double across(TreeLayout.Placed node, boolean turned) {
    return turned ? node.boxArea().getCenterY() : node.boxArea().getCenterX();
  }

  @Test
  void theTextsSayWhatTheTreeSays() {
    List<String> texts =
        texts(shown(PmmlReader.read(Models.example("iris")), TreeDisplay.DEFAULT));
    for (String text : List.of("Species", "Classification tree \u00B7 5 nodes, 3 leaves, depth 2"
        + " \u00B7 150 records", "When a value is missing: the default branch.", "setosa",
        "n = 54 \u00B7 36\u2009%", "Petal.Length < 2.45".replace("< 2", "<\u00A02"),
        "else Petal.Width \u2265\u00A00.8", "or missing")) {
      assertTrue(texts.contains(text), text + " in " + texts);
    }
    List<String> air =
        texts(shown(PmmlReader.read(Models.example("airquality")), TreeDisplay.DEFAULT));
    for (String text : List.of("Ozone", "42.13", "\u00B1 27.07", "n = 116 \u00B7 100\u2009%")) {
      assertTrue(air.contains(text), text + " in " + air);
    }
    List<String> odd = texts(shown(PmmlReader.read(Models.odd("surrogates")), TreeDisplay.DEFAULT));
    for (String text : List.of("never", "z is missing", "z is not missing",
        "When a value is missing: the default branch. When no branch applies: the node above"
        + " predicts.")) {
      assertTrue(odd.contains(text), text + " in " + odd);
    }
  }

  @Test
  void numbersFollowTheLocaleAndTheDigits() {
    TreeDocument air = PmmlReader.read(Models.example("airquality"));
    List<String> german = texts(shown(air, display("", "<numbers locale=\"de\" digits=\"3\"/>")));
    assertTrue(german.contains("42,1"), german.toString());
    assertTrue(german.contains("n = 79 \u00B7 68,1\u2009%"), german.toString());
  }

  @Test
  void partsCanBeLeftOut() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    List<String> few = texts(shown(iris, display("", "<title>My  title</title><show"
        + " counts=\"false\" shares=\"false\" distribution=\"false\" legend=\"false\""
        + " missing=\"false\"/>")));
    assertTrue(few.contains("My  title"), few.toString());
    for (String text : few) {
      assertFalse(text.contains("n =") || text.contains("%") || text.contains("else")
          || text.contains("missing"), text);
    }
    // The legend says each class once more than the nodes do.
    assertEquals(1, few.stream().filter("virginica"::equals).count());
    List<String> all = texts(shown(iris, TreeDisplay.DEFAULT));
    assertEquals(2, all.stream().filter("virginica"::equals).count());
    assertTrue(texts(shown(iris, display("", "<show shares=\"false\"/>"))).contains("n = 150"));
    assertTrue(texts(shown(iris, display("", "<show counts=\"false\"/>"))).contains("100\u2009%"));
  }

  @Test
  void collapsedNodesAndTheDepthHideWhatIsBelow() {
    TreeDocument air = PmmlReader.read(Models.example("airquality"));
    assertEquals(13, shown(air, TreeDisplay.DEFAULT).marks().size());
    TreePicture shallow = shown(air, display("depth=\"1\"", ""));
    assertEquals(3, shallow.marks().size());
    assertTrue(texts(shallow).containsAll(List.of("+6", "+4", "hidden nodes")));
    TreePicture byId = shown(air, display("", "<collapsed id=\"2\"/>"));
    TreePicture byPath = shown(air, display("", "<collapsed path=\"1.1\"/>"));
    assertEquals(7, byId.marks().size());
    assertEquals(texts(byPath), texts(byId));
    TreePicture opened = shown(air, display("depth=\"1\"", "<open path=\"1.2\"/>"));
    assertEquals(5, opened.marks().size());
    assertEquals(13, shown(air, display("", "<collapsed path=\"1.7.7\"/><collapsed id=\"x\"/>"
        + "<collapsed path=\"1\" tree=\"2\"/>")).marks().size());
    assertEquals(1, shown(air, display("", "<collapsed path=\"1\"/>")).marks().size());
  }

  @Test
  void whatLiesAtAPointIsTheNodeThatIsDrawnThere() {
    TreeDocument air = PmmlReader.read(Models.example("airquality"));
    SingleTreePicture picture = single(air, display("depth=\"1\"", ""));
    List<Mark> marks = picture.marks();
    for (int i = 0; i < marks.size(); i++) {
      Rectangle2D area = marks.get(i).area().getBounds2D();
      TreePicture.Hit hit = picture.hit(area.getCenterX(), area.getCenterY());
      assertEquals(picture.layout().nodes().get(i).box.node.path(), hit.node().path());
      assertEquals(1, hit.tree());
    }
    Rectangle2D left = marks.get(1).area().getBounds2D();
    assertEquals("1.1", picture.hit(left.getCenterX(), left.getMaxY() + 14).node().path());
    assertNull(picture.hit(1, 1));
    TreeDocument forest = PmmlReader.read(Models.example("titanic-forest"));
    TreePicture overview = shown(forest, TreeDisplay.DEFAULT);
    Rectangle2D card = overview.marks().get(4).area().getBounds2D();
    assertEquals(new TreePicture.Hit(5, null),
        overview.hit(card.getCenterX(), card.getCenterY()));
    assertNull(overview.hit(2, 2));
  }

  @Test
  void tooltipsSayEverything() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    Mark mark = shown(iris, TreeDisplay.DEFAULT).marks().get(2);
    assertEquals("""
        Node: 3
        Condition: Petal.Length \u2265\u00A02.45
        Surrogates: Petal.Width \u2265\u00A00.8
        Missing values: go here
        Prediction: versicolor
        Records: 100
        Share: 66.7\u2009%
        Records of versicolor: 50
        Records of virginica: 50""", mark.tooltip());
    assertEquals(0, mark.element());
    TreeDocument forest = PmmlReader.read(Models.example("titanic-forest"));
    Mark card = shown(forest, TreeDisplay.DEFAULT).marks().get(5);
    assertEquals("Tree: 6\nSize: 4 leaves, depth 3\nSegment: 6\nWeight: 1", card.tooltip());
    assertEquals(5, card.element());
  }

  @Test
  void aNodeHasTheColourOfItsClassAndItsBarTheSharesOfTheClasses() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    TreePicture picture = shown(iris, TreeDisplay.DEFAULT);
    BufferedImage image = image(picture);
    Rectangle2D root = picture.marks().get(0).area().getBounds2D();
    int y = (int) root.getMaxY() - 10;
    int blue = 0x0072B2;
    int orange = 0xE69F00;
    int green = 0x009E73;
    int left = (int) root.getX() + 9;
    int right = (int) root.getMaxX() - 9;
    int[] expected = {blue, orange, green};
    for (int third = 0; third < 3; third++) {
      int x = left + (int) ((third + 0.5) * (right - left) / 3);
      assertEquals(expected[third], image.getRGB(x, y) & 0xFFFFFF, "third " + third);
    }
    Rectangle2D virginica = picture.marks().get(4).area().getBounds2D();
    Color ground = new Color(image.getRGB((int) virginica.getX() + 4, (int) virginica.getY() + 6));
    assertTrue(ground.getGreen() > ground.getRed() && ground.getRed() > 200, ground.toString());
  }

  @Test
  void aRegressionNodeIsTheDarkerTheHigherItsPrediction() {
    TreeDocument air = PmmlReader.read(Models.example("airquality"));
    TreePicture picture = shown(air, TreeDisplay.DEFAULT);
    BufferedImage image = image(picture);
    List<Mark> marks = picture.marks();
    List<Double> predictions = new ArrayList<>();
    List<Integer> reds = new ArrayList<>();
    for (Mark mark : marks) {
      Rectangle2D area = mark.area().getBounds2D();
      predictions.add(Double.parseDouble(mark.values().get("Prediction")));
      reds.add(new Color(image.getRGB((int) area.getX() + 4, (int) area.getY() + 6)).getRed());
    }
    for (int i = 0; i < marks.size(); i++) {
      for (int j = 0; j < marks.size(); j++) {
        if (predictions.get(i) > predictions.get(j) + 4) {
          assertTrue(reds.get(i) < reds.get(j), predictions.get(i) + " and " + predictions.get(j));
        }
      }
    }
  }

  @Test
  void waysOfSamplesAreHighlightedAndCounted() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    byte[] one = Models.utf8("Petal.Length,Petal.Width\n5,2\n");
    TreePictures pictures =
        new TreePictures(iris, TreeDisplay.DEFAULT, null, SamplePaths.of(iris, one));
    TreePicture picture = pictures.shown();
    BufferedImage image = image(picture);
    boolean[] passed = {true, false, true, false, true};
    for (int i = 0; i < passed.length; i++) {
      Rectangle2D area = picture.marks().get(i).area().getBounds2D();
      int edge = image.getRGB((int) area.getCenterX(), (int) area.getMaxY() - 1) & 0xFFFFFF;
      assertEquals(passed[i], edge == 0, "node " + i + ": " + Integer.toHexString(edge));
      assertEquals(passed[i] ? "1 of 1" : "0 of 1",
          picture.marks().get(i).values().get("Sample records"));
    }
    assertTrue(texts(picture).contains("way of the sample record"));
    byte[] three = Models.utf8("Petal.Length,Petal.Width\n5,2\n1,1\n1,2\n");
    List<String> texts = texts(new TreePictures(
        iris, TreeDisplay.DEFAULT, null, SamplePaths.of(iris, three)).shown());
    assertTrue(texts.containsAll(
        List.of("3 of 3 samples", "2 of 3 samples", "1 of 3 samples", "ways of 3 sample records")));
  }

  @Test
  void ensemblesShowMethodWeightsAndConditions() {
    TreeDocument nested = PmmlReader.read(Models.odd("nested-segments"));
    List<String> overview = texts(shown(nested, TreeDisplay.DEFAULT));
    for (String text : List.of("price",
             "Ensemble of 3 trees \u00B7 the first of 3 models that applies", "Part 1: price",
             "weighted average of 2 models \u00B7 weight 2 \u00B7 when region =\u00A0north",
             "weight 0.25", "weight 0.75", "RegressionModel, no", "on a condition")) {
      assertTrue(overview.contains(text), text + " in " + overview);
    }
    List<String> first = texts(shown(nested, TreeDisplay.DEFAULT.withTree(1)));
    for (String text : List.of(
        "Part 1, the first of 3 models that applies, weight 2, used when region =\u00A0north",
        "Part 1, weighted average of 2 models, weight 0.25")) {
      assertTrue(first.contains(text), text + " in " + first);
    }
  }

  @Test
  void aBranchHasItsOwnPicture() {
    TreeDocument air = PmmlReader.read(Models.example("airquality"));
    TreeNode branch = air.tree(1).root().children().get(1);
    TreePicture picture = new TreePictures(air, display("depth=\"1\"", ""), null, SamplePaths.NONE)
        .branch(air.tree(1), branch);
    assertEquals(3, picture.marks().size());
    List<String> texts = texts(picture);
    assertTrue(texts.contains("The branch of 5 nodes at node 1.2"), texts.toString());
    // The shares stay those of the whole tree.
    assertTrue(texts.contains("n = 37 \u00B7 31.9\u2009%"), texts.toString());
    assertTrue(texts.contains("Temp \u2265\u00A082.5"), texts.toString());
  }

  @Test
  void everyStyleAndFontSizeIsHonoured() {
    TreeDocument iris = PmmlReader.read(Models.example("iris"));
    TreePicture print = shown(iris, TreeDisplay.DEFAULT);
    TreePicture dark = shown(iris, display("style=\"dark\"", ""));
    assertEquals(0xFFFFFF, image(print).getRGB(1, 1) & 0xFFFFFF);
    assertEquals(0x1B1E23, image(dark).getRGB(1, 1) & 0xFFFFFF);
    assertEquals(print.width(), dark.width());
    TreePicture large = shown(iris, display("font-size=\"24\"", ""));
    assertEquals(2, (double) large.width() / print.width(), 0.05);
    assertEquals(2, (double) large.height() / print.height(), 0.05);
  }

  @Test
  void twoThousandNodesAreDrawnInTimeAndStayReadable() {
    TreeDocument document = Models.read(Models.random(5, 2000));
    TreePicture picture = assertTimeout(Duration.ofSeconds(10), () -> {
      TreePicture made = shown(document, TreeDisplay.DEFAULT);
      TreeOutput.encode(made, ImageType.SVG, 100);
      return made;
    });
    assertTidy("2000 nodes", picture);
    String svg = new String(TreeOutput.encode(picture, ImageType.SVG, 100), StandardCharsets.UTF_8);
    assertEquals(2000, picture.marks().size());
    assertTrue(
        svg.contains("width=\"" + picture.width() + "\" height=\"" + picture.height() + "\""));
  }

  @Test
  void onlyWhatTheClipLetsThroughIsDrawn() {
    TreePicture picture = shown(Models.read(Models.random(7, 300)), TreeDisplay.DEFAULT);
    RecordingGraphics all = recorded(picture);
    RecordingGraphics part = new RecordingGraphics();
    part.clipRect(0, picture.height() - 200, 400, 200);
    picture.draw(part);
    assertTrue(part.texts.size() < all.texts.size() / 4, part.texts.size() + " texts");
    Rectangle2D clip = new Rectangle2D.Double(0, picture.height() - 200, 400, 200);
    for (RecordingGraphics.Text text : all.texts) {
      if (clip.intersects(text.area())) {
        assertTrue(part.texts.contains(text), text.toString());
      }
    }
  }

  @Test
  void lettersThatTheFontLacksAreShownInAnother() {
    String text = Models.document("<Node score=\"\u4E2D\u6587\"><True/></Node>");
    assertNotNull(TreeStyle.fitting(new java.awt.Font("Liberation Sans", 0, 12), "\u4E2D"));
    assertTidy("CJK", shown(Models.read(text), TreeDisplay.DEFAULT));
  }
}
