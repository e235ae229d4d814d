// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertInstanceOf;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.List;
import org.chartbridge.tree.ClassCount;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.MissingValues;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.Operator;
import org.chartbridge.tree.OtherModel;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.Predicate.Compound;
import org.chartbridge.tree.Predicate.Constant;
import org.chartbridge.tree.Predicate.Join;
import org.chartbridge.tree.Predicate.Membership;
import org.chartbridge.tree.Predicate.Simple;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.EnumSource;

class PmmlReaderTest {
  private static TreeDocument odd(String name) {
    return PmmlReader.read(Models.odd(name));
  }

  private static String error(byte[] bytes) {
    return assertThrows(TreeException.class, () -> PmmlReader.read(bytes)).getMessage();
  }

  private static String error(String text) {
    return error(Models.utf8(text));
  }

  /** The predicate of the second node of a document. */
  private static Predicate predicate(String xml) {
    TreeDocument document = Models.read(
        Models.document("<Node score=\"A\"><True/><Node score=\"B\">" + xml + "</Node></Node>"));
    return document.tree(1).root().children().get(0).predicate();
  }

  @Test
  void readsTheIrisTree() {
    TreeDocument document = PmmlReader.read(Models.example("iris"));
    assertEquals("4.4", document.version());
    assertTrue(document.isSingleTree());
    TreeModel tree = document.tree(1);
    assertEquals("iris", tree.name());
    assertTrue(tree.classification());
    assertEquals("Species", tree.target());
    assertEquals(List.of("setosa", "versicolor", "virginica"), tree.classes());
    assertEquals(MissingValues.DEFAULT_CHILD, tree.missingValues());
    assertFalse(tree.returnsLastPrediction());
    TreeNode root = tree.root();
    assertEquals("1", root.id());
    assertEquals("1", root.path());
    assertEquals(150, root.recordCount());
    assertEquals("3", root.defaultChild());
    assertEquals(new Constant(true), root.predicate());
    assertEquals(new ClassCount("setosa", 50), root.distribution().get(0));
    TreeNode right = root.children().get(1);
    assertEquals("1.2", right.path());
    assertTrue(root.isDefault(right));
    assertFalse(root.isDefault(root.children().get(0)));
    assertEquals(new Compound(Join.SURROGATE, List.of(
        new Simple("Petal.Length", Operator.GREATER_OR_EQUAL, "2.45"),
        new Simple("Petal.Width", Operator.GREATER_OR_EQUAL, "0.8"))), right.predicate());
    assertEquals(5, Models.all(root).size());
  }

  @Test
  void readsTheForestAndTheBoostedEnsemble() {
    TreeDocument forest = PmmlReader.read(Models.example("titanic-forest"));
    assertEquals(9, forest.trees().size());
    Ensemble votes = assertInstanceOf(Ensemble.class, forest.model());
    assertEquals("majorityVote", votes.method());
    assertEquals("Survived", votes.target());
    assertEquals(List.of("No", "Yes"), forest.tree(9).classes());

    TreeDocument boosted = PmmlReader.read(Models.example("kyphosis-boosted"));
    assertEquals(12, boosted.trees().size());
    Ensemble chain = assertInstanceOf(Ensemble.class, boosted.model());
    assertEquals("modelChain", chain.method());
    Ensemble sum = assertInstanceOf(Ensemble.class, chain.segments().get(0).model());
    assertEquals("sum", sum.method());
    assertEquals("log odds", sum.target());
    assertEquals(new OtherModel("RegressionModel"), chain.segments().get(1).model());
    TreeModel last = boosted.tree(12);
    assertFalse(last.classification());
    assertEquals("log odds", last.target());
    assertNull(last.targetField());
    assertTrue(last.returnsLastPrediction());
    assertEquals(12, last.number());
  }

  @Test
  void readsPrefixesExtensionsAndForeignElementsOfAnOldVersion() {
    TreeDocument document = odd("prefixed-4.0");
    assertEquals("4.0", document.version());
    TreeModel tree = document.tree(1);
    assertEquals("kind", tree.target());
    assertEquals(List.of("a", "b"), tree.classes());
    assertEquals("Kind A", tree.classLabel("a"));
    assertEquals("b", tree.classLabel("b"));
    assertEquals(3, Models.all(tree.root()).size());
    assertEquals(new Simple("Gr\u00F6\u00DFe", Operator.LESS_THAN, "1e-3"),
        tree.root().children().get(0).predicate());
  }

  @Test
  void readsSetPredicatesWithQuotes() {
    TreeNode root = odd("sets-quotes").tree(1).root();
    assertEquals(
        new Membership("city", true, List.of("Rome", "New York", "say \"hi\"", "back\\slash")),
        root.children().get(0).predicate());
    assertEquals(new Membership("city", false, List.of("Rome", "New York", "a, b")),
        root.children().get(1).predicate());
  }

  @Test
  void readsCompoundPredicates() {
    TreeNode root = odd("surrogates").tree(1).root();
    TreeNode left = root.children().get(0);
    assertEquals(new Constant(false), left.children().get(0).predicate());
    assertEquals(new Simple("z", Operator.IS_MISSING, null), left.children().get(1).predicate());
    Compound or = (Compound) root.children().get(1).children().get(0).predicate();
    assertEquals(Join.OR, or.join());
    assertEquals(Join.AND, ((Compound) or.parts().get(0)).join());
    Compound xor = (Compound) root.children().get(1).children().get(1).predicate();
    assertEquals(Join.XOR, xor.join());
  }

  @Test
  void readsEnsemblesInEnsembles() {
    TreeDocument document = odd("nested-segments");
    assertEquals("4.4.1", document.version());
    assertEquals(3, document.trees().size());
    Ensemble top = (Ensemble) document.model();
    assertEquals("Prices & more", top.name());
    assertEquals(List.of("north", "rest", "other"),
        top.segments().stream().map(Ensemble.Segment::id).toList());
    assertEquals(2, top.segments().get(0).weight());
    assertEquals(1, top.segments().get(1).weight());
    Ensemble inner = (Ensemble) top.segments().get(0).model();
    assertEquals(0.25, inner.segments().get(0).weight());
    Predicate north = new Simple("region", Operator.EQUAL, "north");
    assertEquals(List.of(north), document.tree(1).conditions());
    assertEquals(List.of(), document.tree(3).conditions());
    assertEquals("price", document.tree(1).target());
    assertEquals(List.of("1", "1.1", "1.2"),
        Models.all(document.tree(3).root()).stream().map(TreeNode::path).toList());
  }

  @Test
  void modelsSideBySideAreAllRead() {
    String one = Models.document("<Node score=\"A\"><True/></Node>");
    String two = one.replace("</PMML>", "<TreeModel functionName=\"regression\"><MiningSchema/>"
        + "<Node score=\"2\"><True/></Node></TreeModel></PMML>");
    assertEquals(2, Models.read(two).trees().size());
    assertEquals(1, Models.read(one).trees().size());
  }

  @ParameterizedTest
  @EnumSource(Operator.class)
  void readsEveryOperator(Operator operator) {
    String value = operator.takesValue() ? " value=\"7\"" : "";
    assertEquals(new Simple("x", operator, operator.takesValue() ? "7" : null),
        predicate("<SimplePredicate field=\"x\" operator=\"" + operator.pmmlName() + "\"" + value
            + "/>"));
  }

  @ParameterizedTest
  @EnumSource(MissingValues.class)
  void readsEveryMissingValueStrategy(MissingValues strategy) {
    String text = Models.document("<Node score=\"A\"><True/></Node>").replace(
        "<TreeModel", "<TreeModel missingValueStrategy=\"" + strategy.pmmlName() + "\"");
    assertEquals(strategy, Models.read(text).tree(1).missingValues());
  }

  @Test
  void readsAnyEncodingAndGzip() {
    String text = Models.document("<Node score=\"\u00E4\u4E2D\"><True/></Node>");
    String declared = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n" + text;
    for (byte[] bytes : List.of(Models.utf8(text), Models.utf8("\uFEFF" + text),
        declared.getBytes(StandardCharsets.UTF_16), PmmlBytes.compress(Models.utf8(text)))) {
      assertEquals("\u00E4\u4E2D", PmmlReader.read(bytes).tree(1).root().score());
    }
  }

  @Test
  void readsEveryVersionFrom40To44() {
    String text = Models.document("<Node score=\"A\"><True/></Node>");
    for (String version : List.of("4.0", "4.1", "4.2", "4.2.1", "4.3", "4.4", "4.4.1")) {
      String minor = version.substring(2, 3);
      String document = text.replace("PMML-4_4", "PMML-4_" + minor)
          .replace("version=\"4.4\"", "version=\"" + version + "\"");
      assertEquals(version, Models.read(document).version());
    }
    for (String version : List.of("4.5", "4.10", "5.0", "4", "3.2", "four")) {
      assertEquals("PMML document, line 1, column 1: the PMML version is " + version
          + "; versions 4.0 to 4.4 are read.",
          error(text.replace("version=\"4.4\"", "version=\"" + version + "\"")));
    }
    for (String name : List.of("PMML-4_5", "PMML-3_2")) {
      String message = error(text.replace("PMML-4_4", name));
      assertTrue(message.endsWith("versions 4.0 to 4.4 are read."), message);
    }
    assertEquals("4.4", Models.read(text.replace(" version=\"4.4\"", "")).version());
    assertEquals("", Models.read(text.replace(" version=\"4.4\"", "")
        .replace(" xmlns=\"http://www.dmg.org/PMML-4_4\"", "")).version());
  }

  @Test
  void aChainOf200NodesIsNoProblem() {
    TreeDocument document = Models.read(Models.chain(200));
    assertEquals(199, Models.all(document.tree(1).root()).get(199).depth());
  }

  @Test
  void aDocumentThatIsTooDeepIsRefused() {
    assertEquals("PMML document, line 520, column 17: elements are nested more than 512 levels deep.",
        error(Models.chain(2000).replace("<Node", "\n<Node").replace("\n\n", "\n")));
  }

  @Test
  void whatIsNoPmmlIsRefused() {
    assertEquals("The PMML document is empty.", error(""));
    assertEquals("The PMML document is empty.", error(" \n "));
    assertEquals("PMML document, line 1, column 1: found <html>, expected <PMML>; this is no PMML"
        + " document.", error("<html><body/></html>"));
    assertEquals("PMML document, line 2, column 1: found <PMML> in the namespace urn:else, expected"
        + " <PMML>; this is no PMML document.", error("<!-- -->\n<PMML xmlns=\"urn:else\"/>"));
    assertEquals("PMML document, line 1, column 1: the PMML version is 3.2; versions 4.0 to 4.4 are"
        + " read.", error("<PMML version=\"3.2\"/>"));
    String notXml = error("x,y\n1,2\n");
    assertTrue(notXml.startsWith("PMML document, line 1, column 1: not well-formed XML: "), notXml);
    String binary = error(new byte[] {(byte) 0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13});
    assertEquals("PMML document, line 1: byte 0 is not valid UTF-8.", binary);
  }

  @Test
  void aDocumentWithoutTreesIsRefused() {
    assertEquals("PMML document, line 1, column 1: the document has no model; a <TreeModel> or a"
        + " <MiningModel> of trees is expected.", error("<PMML version=\"4.4\"><Header/></PMML>"));
    assertEquals("PMML document, line 1, column 1: the document has no tree; its model is a"
        + " <RegressionModel>.",
        error("<PMML version=\"4.4\"><RegressionModel><Node/></RegressionModel></PMML>"));
    assertEquals("PMML document, line 1, column 1: the document has no tree; its model is a"
        + " <MiningModel> without trees.",
        error("<PMML version=\"4.4\"><MiningModel><Segmentation multipleModelMethod=\"sum\">"
            + "<Segment><True/><NeuralNetwork/></Segment></Segmentation></MiningModel></PMML>"));
    assertEquals("PMML document, line 9, column 1: the tree has no <Node>.",
        error(Models.document("")));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<Node score='A'/>|line 11, column 1: <Node> has no predicate",
      "<Node id='7'><Extension/></Node>|line 11, column 1: <Node> with the id \"7\" has no"
          + " predicate",
      "<Node><True/><False/></Node>|line 11, column 14: <Node> has a second predicate",
      "<Node recordCount='many'><True/></Node>|line 11, column 1: attribute recordCount of <Node>:"
          + " found \"many\", expected a number",
      "<Node recordCount='-1'><True/></Node>|line 11, column 1: attribute recordCount of <Node>:"
          + " found \"-1\", expected a number that is not negative",
      "<Node recordCount='NaN'><True/></Node>|line 11, column 1: attribute recordCount of <Node>:"
          + " found \"NaN\", expected a number",
      "<Node><True/><ScoreDistribution value='A'/></Node>|line 11, column 14: <ScoreDistribution>"
          + " needs the attribute recordCount",
      "<Node><SimplePredicate field='x' operator='equals' value='1'/></Node>|line 11, column 7:"
          + " attribute operator of <SimplePredicate>: found \"equals\", expected one of equal,"
          + " notEqual, lessThan, lessOrEqual, greaterThan, greaterOrEqual, isMissing,"
          + " isNotMissing",
      "<Node><SimplePredicate field='x' operator='equal'/></Node>|line 11, column 7:"
          + " <SimplePredicate> with the operator equal needs the attribute value",
      "<Node><SimplePredicate operator='equal' value='1'/></Node>|line 11, column 7:"
          + " <SimplePredicate> needs the attribute field",
      "<Node><SimplePredicate field='x' value='1'/></Node>|line 11, column 7: <SimplePredicate>"
          + " needs the attribute operator",
      "<Node><CompoundPredicate booleanOperator='nor'><True/></CompoundPredicate></Node>|line 11,"
          + " column 7: attribute booleanOperator of <CompoundPredicate>: found \"nor\", expected"
          + " one of and, or, xor, surrogate",
      "<Node><CompoundPredicate booleanOperator='and'/></Node>|line 11, column 7:"
          + " <CompoundPredicate> has no predicates in it",
      "<Node><SimpleSetPredicate field='x' booleanOperator='in'/></Node>|line 11, column 7:"
          + " attribute booleanOperator of <SimpleSetPredicate>: found \"in\", expected one of"
          + " isIn,"
          + " isNotIn",
      "<Node><SimpleSetPredicate field='x' booleanOperator='isIn'/></Node>|line 11, column 7:"
          + " <SimpleSetPredicate> has no <Array>",
      "<Node><SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='3'>1 2</Array>"
          + "</SimpleSetPredicate></Node>|line 11, column 60: the <Array> has 2 values where n"
          + " says 3",
      "<Node><SimpleSetPredicate field='x' booleanOperator='isIn'><Array>\"1 2</Array>"
          + "</SimpleSetPredicate></Node>|line 11, column 60: a quote in the <Array> is not closed",
  })
  void mistakesInNodesAreNamedWithTheirPlace(String node, String message) {
    assertEquals("PMML document, " + message + ".",
        error(Models.document(node.replace('\'', '"'))));
  }

  @Test
  void mistakesInModelsAreNamedWithTheirPlace() {
    String good = Models.document("<Node score=\"A\"><True/></Node>");
    assertEquals("PMML document, line 9, column 1: attribute functionName of <TreeModel>: found"
        + " \"clustering\", expected one of classification, regression.",
        error(good.replace("functionName=\"classification\"", "functionName=\"clustering\"")));
    assertEquals("PMML document, line 9, column 1: <TreeModel> needs the attribute functionName.",
        error(good.replace(" functionName=\"classification\"", "")));
    assertEquals("PMML document, line 9, column 1: attribute missingValueStrategy of <TreeModel>:"
        + " found \"guess\", expected one of none, lastPrediction, nullPrediction, defaultChild,"
        + " weightedConfidence, aggregateNodes.",
        error(good.replace("<TreeModel", "<TreeModel missingValueStrategy=\"guess\"")));
    assertEquals("PMML document, line 9, column 1: attribute noTrueChildStrategy of <TreeModel>:"
        + " found \"x\", expected one of returnNullPrediction, returnLastPrediction.",
        error(good.replace("<TreeModel", "<TreeModel noTrueChildStrategy=\"x\"")));
    assertEquals("PMML document, line 3, column 1: <DataField> needs the attribute name.",
        error(good.replace("name=\"x\" ", "")));
    String segment = "<PMML version=\"4.4\"><MiningModel><Segmentation"
        + " multipleModelMethod=\"sum\">\n"
        + "%s</Segmentation></MiningModel></PMML>";
    assertEquals("PMML document, line 2, column 1: <Segment> with the id \"s\" has no model.",
        error(segment.formatted("<Segment id=\"s\"><True/></Segment>")));
    assertEquals("PMML document, line 2, column 1: <Segment> has no predicate.",
        error(segment.formatted("<Segment><NeuralNetwork/></Segment>")));
    assertEquals("PMML document, line 1, column 34: <Segmentation> needs the attribute"
        + " multipleModelMethod.", error(segment.formatted("").replace(
            " multipleModelMethod=\"sum\"", "")));
  }

  @Test
  void aConditionOnAFieldThatThereIsNotIsRefused() {
    String simple = "<SimplePredicate field=\"%s\" operator=\"lessThan\" value=\"1\"/>";
    String node = "<Node score=\"A\"><True/>\n<Node score=\"B\">" + simple + "</Node></Node>";
    assertEquals("PMML document, line 12, column 17: <SimplePredicate> asks for the field"
        + " \"petal width\", which the document does not define; a <DataField> in the"
        + " <DataDictionary> would.", error(Models.document(node.formatted("petal width"))));
    String renamed = Models.document(node.formatted("widht")).replace("\"x\"", "\"width\"");
    assertTrue(error(renamed).endsWith("\"widht\", which the document does not define; the nearest"
        + " that it defines is \"width\"."), error(renamed));
    String set = "<Node score=\"A\"><SimpleSetPredicate field=\"z\" booleanOperator=\"isIn\">"
        + "<Array>1</Array></SimpleSetPredicate></Node>";
    assertTrue(error(Models.document(set)).startsWith(
        "PMML document, line 11, column 17: <SimpleSetPredicate> asks for the field \"z\""));
    String segment = "<PMML version=\"4.4\"><MiningModel><Segmentation"
        + " multipleModelMethod=\"sum\"><Segment>" + simple.formatted("q")
        + "<NeuralNetwork/></Segment></Segmentation></MiningModel></PMML>";
    assertTrue(error(segment).contains("<SimplePredicate> asks for the field \"q\""));
  }

  /** Derived fields, wherever they stand, and what earlier models of a chain put out. */
  @Test
  void conditionsOnFieldsThatAModelMakesAreFine() {
    for (String name : Models.KINDS) {
      assertTrue(odd(name).trees().size() > 0, name);
    }
  }

  @Test
  void aTruncatedDocumentIsRefusedWhereverItEnds() {
    byte[] whole = Models.example("iris");
    int end = new String(whole, StandardCharsets.UTF_8).stripTrailing().length();
    for (int length = 60; length < end; length += 97) {
      String message = error(Arrays.copyOf(whole, length));
      assertTrue(message.startsWith("PMML document, line "), message);
    }
    String message = error(Arrays.copyOf(whole, whole.length - 10));
    assertEquals("PMML document, line 65, column 14: the document ends too early: XML document"
        + " structures must start and end within the same entity.", message);
    byte[] zipped = PmmlBytes.compress(whole);
    assertEquals("The compressed PMML document is cut off.",
        error(Arrays.copyOf(zipped, zipped.length - 20)));
    zipped[zipped.length / 2] ^= 0x55;
    assertTrue(error(zipped).startsWith("The compressed PMML document is "));
  }

  @Test
  void contentBehindTheRootIsRefused() {
    String good = Models.document("<Node score=\"A\"><True/></Node>");
    assertTrue(error(good + "<more/>").startsWith("PMML document, line 14, column "));
  }

  @Test
  void entitiesAndDocumentTypesAreRefused() {
    String bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE PMML [<!ENTITY a \"aaaaaaaaaa\">"
        + "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c"
        + " \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>\n"
        + "<PMML version=\"4.4\">&c;</PMML>";
    assertEquals("PMML document, line 2, column 1: a document type declaration (<!DOCTYPE) is not"
        + " allowed.", error(bomb));
    String external = "<!DOCTYPE PMML SYSTEM \"file:///etc/passwd\"><PMML version=\"4.4\"/>";
    assertEquals("PMML document, line 1, column 1: a document type declaration (<!DOCTYPE) is not"
        + " allowed.", error(external));
    String undeclared = error("<PMML version=\"4.4\">&x;</PMML>");
    assertEquals("PMML document, line 1, column 24: not well-formed XML: The entity \"x\" was"
        + " referenced, but not declared.", undeclared);
  }

  @Test
  void compressedBytesThatGrowTooLargeAreRefused() {
    byte[] zeros = PmmlBytes.compress(new byte[3 << 20]);
    assertEquals("The PMML document is larger than 1 MB, the most that is read.",
        assertThrows(TreeException.class, () -> PmmlBytes.inflate(zeros, 1 << 20)).getMessage());
  }

  @Test
  void compressionGivesTheSameBytesBack() {
    byte[] iris = Models.example("iris");
    byte[] once = PmmlBytes.compress(iris);
    assertTrue(PmmlBytes.isCompressed(once));
    assertFalse(PmmlBytes.isCompressed(iris));
    assertArrayEquals(iris, PmmlBytes.expand(once));
    assertArrayEquals(iris, PmmlBytes.expand(PmmlBytes.compress(once)));
  }

  @Test
  void aTreeThatIsNotThereIsNamed() {
    TreeDocument document = PmmlReader.read(Models.example("titanic-forest"));
    for (int number : new int[] {0, 10, -1}) {
      assertEquals("There is no tree " + number + "; the model has 9 trees.",
          assertThrows(TreeException.class, () -> document.tree(number)).getMessage());
    }
  }

  @Test
  void positionsHoldBehindCommentsAndSections() {
    String tricky = "<Node><True/><!-- <Node> --><Extension><![CDATA[ > <Node> ]]></Extension><?pi"
        + " <a>?>"
        + "<Extension value=\">\"/><Node/></Node>";
    int column = tricky.indexOf("<Node/>") + 1;
    assertEquals("PMML document, line 11, column " + column + ": <Node> has no predicate.",
        error(Models.document(tricky)));
  }

  @Test
  void positionsHoldInALargeDocument() {
    String nodes = "\n<Node score=\"A\"><SimplePredicate field=\"x\" operator=\"lessThan\""
        + " value=\"1\"/>"
        + "</Node>";
    String text = Models.document(
        "<Node><True/>" + nodes.repeat(20_000) + "\n  <Node score=\"bad\"/></Node>");
    assertEquals("PMML document, line 20012, column 3: <Node> has no predicate.", error(text));
  }
}
