// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Random;
import org.chartbridge.tree.pmml.PmmlReader;

/** Models to test with. */
public final class Models {
  public static final Path SOURCE = Path.of(System.getProperty("chartbridge.source", "."));
  public static final List<String> EXAMPLES =
      List.of("iris", "airquality", "titanic-forest", "kyphosis-boosted");

  /** Documents of the test data, one for each kind that other tools write. */
  public static final List<String> KINDS = List.of("neither-score-nor-count", "counts-at-leaves",
      "probabilities", "undeclared-scores", "numeric-classes", "embedded-models", "adjusted",
      "chain", "isolation-forest", "ordered-branches");

  private Models() {}

  public static byte[] bytes(Path path) {
    try {
      return Files.readAllBytes(path);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
  }

  /** A fitted model of the examples. */
  public static byte[] example(String name) {
    return bytes(SOURCE.resolve("examples/trees/" + name + ".pmml"));
  }

  /** A document of the test data. */
  public static byte[] odd(String name) {
    return bytes(SOURCE.resolve("tests/data/pmml/" + name + ".pmml"));
  }

  public static byte[] utf8(String text) {
    return text.getBytes(StandardCharsets.UTF_8);
  }

  public static TreeDocument read(String text) {
    return PmmlReader.read(utf8(text));
  }

  /** A classification document with this root node. */
  public static String document(String rootNode) {
    return """
        <PMML xmlns="http://www.dmg.org/PMML-4_4" version="4.4">
        <DataDictionary>
        <DataField name="x" optype="continuous" dataType="double"/>
        <DataField name="c" optype="categorical" dataType="string"/>
        <DataField name="t" optype="categorical" dataType="string">
        <Value value="A"/><Value value="B"/><Value value="C"/>
        </DataField>
        </DataDictionary>
        <TreeModel functionName="classification">
        <MiningSchema><MiningField name="t" usageType="target"/></MiningSchema>
        """ + rootNode + "\n</TreeModel>\n</PMML>\n";
  }

  /** The same for regression. */
  public static String regression(String rootNode) {
    return document(rootNode).replace(
        "functionName=\"classification\"", "functionName=\"regression\"");
  }

  /**
   * A random document with so many nodes; every node has scores, counts and labels of varied
   * length.
   */
  public static String random(long seed, int nodes) {
    Random random = new Random(seed);
    List<List<Integer>> children = new ArrayList<>();
    List<Integer> open = new ArrayList<>();
    children.add(new ArrayList<>());
    open.add(0);
    while (children.size() < nodes) {
      int pick = random.nextInt(Math.min(open.size(), 40));
      int parent = open.remove(random.nextBoolean() ? pick : open.size() - 1 - pick);
      int count =
          Math.min(nodes - children.size(), 1 + random.nextInt(random.nextInt(6) == 0 ? 5 : 2));
      for (int i = 0; i < count; i++) {
        children.get(parent).add(children.size());
        open.add(children.size());
        children.add(new ArrayList<>());
      }
    }
    StringBuilder text = new StringBuilder();
    write(text, children, 0, random);
    return document(text.toString());
  }

  private static void write(
      StringBuilder text, List<List<Integer>> children, int node, Random random) {
    String[] classes = {"A", "B", "C"};
    text.append("<Node id=\"n")
        .append(node)
        .append("\" score=\"")
        .append(classes[random.nextInt(3)])
        .append("\" recordCount=\"")
        .append(random.nextInt(1_000_000))
        .append("\">");
    text.append(node == 0 ? "<True/>" : predicate(random));
    for (String value : classes) {
      text.append("<ScoreDistribution value=\"").append(value).append("\" recordCount=\"")
          .append(random.nextInt(100)).append("\"/>");
    }
    children.get(node).forEach(child -> write(text, children, child, random));
    text.append("</Node>");
  }

  private static String predicate(Random random) {
    return switch (random.nextInt(5)) {
      case 0 -> "<True/>";
      case 1 -> "<SimpleSetPredicate field=\"c\" booleanOperator=\"isIn\"><Array type=\"string\">"
          + "\"some value\" ".repeat(1 + random.nextInt(12)) + "</Array></SimpleSetPredicate>";
      case 2 -> "<CompoundPredicate booleanOperator=\"surrogate\">"
          + "<SimplePredicate field=\"x\" operator=\"lessThan\" value=\"1\"/>"
          + "<SimplePredicate field=\"c\" operator=\"equal\" value=\"a rather long"
          + " value\"/>".repeat(
              1 + random.nextInt(5)) + "</CompoundPredicate>";
      case 3 -> "<SimplePredicate field=\"c\" operator=\"notEqual\" value=\""
          + "w".repeat(1 + random.nextInt(60)) + "\"/>";
      default -> "<SimplePredicate field=\"x\" operator=\"greaterOrEqual\" value=\""
          + random.nextDouble() + "\"/>";
    };
  }

  /** A chain of so many nodes, each the only child of the one before. */
  public static String chain(int nodes) {
    StringBuilder text = new StringBuilder();
    for (int i = 0; i < nodes; i++) {
      text.append("<Node score=\"A\">").append(i == 0
          ? "<True/>" : "<SimplePredicate field=\"x\" operator=\"lessThan\" value=\"" + i + "\"/>");
    }
    return document(text + "</Node>".repeat(nodes));
  }

  /** The node at a path. */
  public static TreeNode node(TreeNode root, String path) {
    if (root.path().equals(path)) {
      return root;
    }
    for (TreeNode child : root.children()) {
      if (path.equals(child.path()) || path.startsWith(child.path() + ".")) {
        return node(child, path);
      }
    }
    throw new IllegalArgumentException("no node " + path);
  }

  public static List<TreeNode> all(TreeNode root) {
    List<TreeNode> nodes = new ArrayList<>();
    nodes.add(root);
    root.children().forEach(child -> nodes.addAll(all(child)));
    return nodes;
  }
}
