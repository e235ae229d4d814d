// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertDoesNotThrow;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayInputStream;
import java.util.List;
import java.util.Locale;
import java.util.Random;
import javax.xml.transform.stream.StreamSource;
import javax.xml.validation.Schema;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.tree.pmml.PmmlReader;
import org.chartbridge.xml.SafeXml;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class TreeDisplayTest {
  private static final String ALL = """
      <?xml version="1.0" encoding="UTF-8"?>
      <tree-display xmlns="urn:chartbridge:tree-display:1" orientation="left-to-right" \
      depth="3" tree="2" style="dark" font-size="13.5">
        <title>A &lt;b&gt; &amp; c</title>
        <numbers digits="6" locale="de-CH"/>
        <show counts="false" legend="false"/>
        <collapsed tree="2" path="1.2"/>
        <collapsed tree="1" id="n &quot;7&quot;"/>
        <open tree="2" path="1.1.3"/>
      </tree-display>
      """;

  private static TreeDisplay parse(String xml) {
    return TreeDisplay.parse(Models.utf8(xml));
  }

  @Test
  void noBytesStandForTheDefaults() {
    assertSame(TreeDisplay.DEFAULT, TreeDisplay.parse(new byte[0]));
    assertEquals(TreeDisplay.DEFAULT, parse("<tree-display"
        + " xmlns=\"urn:chartbridge:tree-display:1\"/>"));
  }

  @Test
  void everySettingIsReadAndWritten() {
    TreeDisplay display = parse(ALL);
    assertTrue(display.leftToRight());
    assertEquals(3, display.depth());
    assertEquals(2, display.tree());
    assertEquals("dark", display.style());
    assertEquals(13.5, display.fontSize());
    assertEquals("A <b> & c", display.title());
    assertEquals(6, display.digits());
    assertEquals(Locale.forLanguageTag("de-CH"), display.locale());
    assertEquals(new TreeDisplay.Parts(false, true, true, false, true), display.show());
    assertEquals(List.of(new NodeReference(2, null, "1.2"), new NodeReference(1, "n \"7\"", null)),
        display.collapsed());
    assertEquals(List.of(new NodeReference(2, null, "1.1.3")), display.open());
    assertEquals(display, TreeDisplay.parse(display.toXml()));
    assertEquals(ALL, new String(display.toXml(), java.nio.charset.StandardCharsets.UTF_8));
  }

  @Test
  void aNodeWithoutATreeIsOfTheTreeThatIsShown() {
    String xml = "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" %s><open"
        + " path=\"1\"/></tree-display>";
    assertEquals(4, parse(xml.formatted("tree=\"4\"")).open().get(0).tree());
    assertEquals(1, parse(xml.formatted("")).open().get(0).tree());
  }

  @Test
  void whatIsWrittenIsValidBySchemaAndComesBack() throws Exception {
    Schema schema = SafeXml.schema("tree-display.xsd");
    Random random = new Random(3);
    TreeModel tree = Models.read(Models.random(1, 40)).tree(1);
    List<TreeNode> nodes = Models.all(tree.root());
    TreeDisplay display = parse(ALL).withTree(1).withTitle("T\u0001 \u4E2D\uD83C\uDF33");
    for (int i = 0; i < 200; i++) {
      display = switch (random.nextInt(5)) {
        case 0 -> display.withDepth(random.nextInt(5));
        case 1 -> display.withOrientation(random.nextBoolean());
        default -> display.toggled(tree, nodes.get(random.nextInt(nodes.size())));
      };
      byte[] xml = display.toXml();
      assertDoesNotThrow(() -> schema.newValidator().validate(
          new StreamSource(new ByteArrayInputStream(xml))));
      TreeDisplay back = TreeDisplay.parse(xml);
      assertEquals(display.withTitle(null), back.withTitle(null));
      assertEquals("T  \u4E2D\uD83C\uDF33", back.title());
    }
  }

  @Test
  void theSchemaAndTheReaderAgreeOnMistakes() {
    Schema schema = SafeXml.schema("tree-display.xsd");
    for (String attributes : List.of("depth=\"-1\"", "depth=\"1001\"", "tree=\"-1\"", "style=\"x\"",
        "font-size=\"5\"", "font-size=\"49\"", "orientation=\"up\"", "color=\"red\"")) {
      byte[] xml = Models.utf8(
          "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" " + attributes + "/>");
      assertThrows(TreeException.class, () -> TreeDisplay.parse(xml), attributes);
      assertThrows(org.xml.sax.SAXException.class, () -> schema.newValidator().validate(
          new StreamSource(new ByteArrayInputStream(xml))), attributes);
    }
  }

  @Test
  void togglingCollapsesAndOpensWhateverTheDepth() {
    TreeModel tree = PmmlReader.read(Models.example("airquality")).tree(1);
    List<TreeNode> inner = Models.all(tree.root()).stream().filter(n -> !n.isLeaf()).toList();
    Random random = new Random(8);
    TreeDisplay display = TreeDisplay.DEFAULT;
    for (int i = 0; i < 500; i++) {
      if (i % 20 == 0) {
        display = display.withDepth(random.nextInt(4));
      }
      TreeNode node = inner.get(random.nextInt(inner.size()));
      boolean before = display.hidesChildren(tree, node);
      TreeDisplay after = display.toggled(tree, node);
      assertEquals(!before, after.hidesChildren(tree, node));
      for (TreeNode other : inner) {
        if (other != node) {
          assertEquals(display.hidesChildren(tree, other), after.hidesChildren(tree, other));
        }
      }
      display = after;
    }
    TreeNode leaf = Models.node(tree.root(), "1.2.2");
    assertSame(display, display.toggled(tree, leaf));
    assertFalse(display.hidesChildren(tree, leaf));
  }

  @Test
  void togglingTwiceLeavesNothingBehind() {
    TreeModel tree = PmmlReader.read(Models.example("iris")).tree(1);
    TreeDisplay collapsed = TreeDisplay.DEFAULT.toggled(tree, tree.root());
    assertEquals(List.of(new NodeReference(1, null, "1")), collapsed.collapsed());
    assertEquals(TreeDisplay.DEFAULT, collapsed.toggled(tree, tree.root()));
    TreeDisplay byId = parse("<tree-display xmlns=\"urn:chartbridge:tree-display:1\"><collapsed"
        + " id=\"1\"/>"
        + "</tree-display>");
    assertEquals(TreeDisplay.DEFAULT, byId.toggled(tree, tree.root()));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "depth='x'|2|attribute depth of <tree-display>: found \"x\", expected a whole number from 0"
          + " to 1000",
      "tree='1.5'|2|attribute tree of <tree-display>: found \"1.5\", expected a whole number, at"
          + " least 0",
      "style='neon'|2|attribute style of <tree-display>: found \"neon\", expected one of print,"
          + " dark,"
          + " mono, slides",
      "font-size='big'|2|attribute font-size of <tree-display>: found \"big\", expected a number"
          + " from 6"
          + " to 48",
      "orientation='up'|2|attribute orientation of <tree-display>: found \"up\", expected"
          + " top-down or"
          + " left-to-right",
      "deepth='1'|2|<tree-display> has the attribute deepth, expected one of orientation, depth,"
          + " tree,"
          + " style, font-size; did you mean \"depth\"?",
  })
  void mistakesInAttributesAreNamedWithTheirPlace(String attribute, int line, String message) {
    String xml = "<tree-display xmlns=\"urn:chartbridge:tree-display:1\"\n  "
        + attribute.replace('\'', '"') + "/>";
    assertEquals("Display data, line " + line + ", column 3: " + message + ".",
        assertThrows(TreeException.class, () -> parse(xml)).getMessage());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<colapsed path='1'/>|found <colapsed> in <tree-display>, expected one of title, numbers,"
          + " show,"
          + " collapsed, open; did you mean \"collapsed\"?",
      "<collapsed/>|<collapsed> needs one of the attributes id and path",
      "<open id='1' path='1'/>|<open> needs one of the attributes id and path",
      "<numbers><x/></numbers>|found <x> in <numbers>, expected nothing",
      "<show>yes</show>|<show> has text in it, where none is expected",
  })
  void mistakesInElementsAreNamedWithTheirPlace(String element, String message) {
    String xml = "<tree-display"
        + " xmlns=\"urn:chartbridge:tree-display:1\">\n" + element.replace('\'', '"')
        + "</tree-display>";
    String found = assertThrows(TreeException.class, () -> parse(xml)).getMessage();
    assertTrue(found.startsWith("Display data, line 2, column "), found);
    assertTrue(found.endsWith(": " + message + "."), found);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<collapsed path='2.1'/>|path|the path of a node, such as 1 for the root or 1.2",
      "<collapsed path='1' tree='0'/>|tree|a whole number, at least 1",
      "<numbers digits='0'/>|digits|a whole number from 1 to 15",
      "<numbers locale='not a tag'/>|locale|a language tag such as en or de-CH",
      "<show legend='maybe'/>|legend|true or false",
  })
  void valuesThatAreNoneAreNamed(String element, String attribute, String expected) {
    String xml = "<tree-display"
        + " xmlns=\"urn:chartbridge:tree-display:1\">\n" + element.replace('\'', '"')
        + "</tree-display>";
    String found = assertThrows(TreeException.class, () -> parse(xml)).getMessage();
    assertTrue(found.startsWith("Display data, line 2, column "), found);
    assertTrue(found.contains("attribute " + attribute + " of <"), found);
    assertTrue(found.endsWith(", expected " + expected + "."), found);
  }

  @Test
  void otherDocumentsAreRefused() {
    assertEquals("Display data, line 1, column 1: found <PMML>, expected <tree-display"
        + " xmlns=\"urn:chartbridge:tree-display:1\">.",
        assertThrows(TreeException.class, () -> parse("<PMML/>")).getMessage());
    String version2 = "<tree-display xmlns=\"urn:chartbridge:tree-display:2\"/>";
    assertThrows(TreeException.class, () -> parse(version2));
    String broken = assertThrows(TreeException.class, () -> parse("<tree-display")).getMessage();
    assertTrue(broken.startsWith("Display data, line 1, column "), broken);
    String doctype = assertThrows(TreeException.class, () -> parse("<!DOCTYPE"
        + " x><x/>")).getMessage();
    assertTrue(doctype.startsWith("Display data, line 1, column 1: "), doctype);
  }
}
