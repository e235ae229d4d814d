// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_16BE;
import static java.nio.charset.StandardCharsets.UTF_16LE;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTimeout;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.net.ServerSocket;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.Duration;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class SafeXmlTest {
  @TempDir Path folder;

  private static XmlElement parse(String xml) {
    return SafeXml.parse(xml.getBytes(UTF_8));
  }

  private static String error(byte[] xml) {
    return assertThrows(ChartException.class, () -> SafeXml.parse(xml)).getMessage();
  }

  private static String error(String xml) {
    return error(xml.getBytes(UTF_8));
  }

  @Test
  void readsNamesAttributesAndContentInOrder() {
    XmlElement root = parse("<a xmlns='urn:n' z='1' b='&lt;&#10;x'><!-- c --><b/>t&amp;<c/></a>");
    assertEquals("urn:n", root.namespace());
    assertEquals("a", root.name());
    assertEquals(List.of("z", "b"), List.copyOf(root.attributes().keySet()));
    assertEquals("<\nx", root.attribute("b"));
    assertEquals(List.of("b", "c"), root.children().stream().map(XmlElement::name).toList());
    assertEquals(new XmlComment(" c "), root.content().get(0));
    assertEquals("t&", root.text());
  }

  @Test
  void namesForeignAttributesByTheirNamespace() {
    XmlElement root = parse("<a xmlns:f='urn:f' f:x='1' x='2'/>");
    assertEquals(Map.of("{urn:f}x", "1", "x", "2"), root.attributes());
  }

  @Test
  void keepsCommentsInFrontOfTheRoot() {
    assertEquals(List.of(new XmlComment("one"), new XmlComment("two")),
        parse("<!--one--><!--two--><a/><!--3-->").content());
  }

  @ParameterizedTest
  @ValueSource(strings = {"\n", "\r\n", "\r"})
  void knowsWhereElementsAndAttributesStand(String lineEnd) {
    String xml = String.join(
        lineEnd, "<a>", "  <b  x = 'a=\"1\"'", "     y=\"2\"/>\uD83D\uDE00<c", "/>", "</a>");
    XmlElement root = parse(xml);
    assertEquals(new TextPosition(1, 1), root.position());
    XmlElement b = root.child("b");
    assertEquals(new TextPosition(2, 3), b.position());
    assertEquals(new TextPosition(2, 7), b.position("x"));
    assertEquals(new TextPosition(3, 6), b.position("y"));
    assertEquals(new TextPosition(2, 3), b.position("none"));
    // The rocket before it is one code point, two UTF-16 units.
    assertEquals(new TextPosition(3, 14), root.child("c").position());
  }

  @Test
  void tellsAttributesApartWhoseNamesBeginAlike() {
    XmlElement root = parse("<a xy='1' x=' z=\"' z='3'/>");
    assertEquals(new TextPosition(1, 4), root.position("xy"));
    assertEquals(new TextPosition(1, 11), root.position("x"));
    assertEquals(new TextPosition(1, 20), root.position("z"));
  }

  @Test
  void knowsThePositionsInALargeDocument() {
    StringBuilder xml = new StringBuilder("<a>");
    for (int i = 0; i < 20_000; i++) {
      xml.append("<b n='").append(i).append("'>é</b>").append(i % 7 == 0 ? "\r\n" : " ");
    }
    List<XmlElement> children = parse(xml.append("</a>").toString()).children();
    assertEquals(20_000, children.size());
    String[] lines = xml.toString().split("\r\n");
    for (int i = 0; i < children.size(); i += 997) {
      TextPosition position = children.get(i).position();
      String rest = lines[position.line() - 1].substring(position.column() - 1);
      assertTrue(rest.startsWith("<b n='" + i + "'>"), () -> rest);
    }
  }

  @Test
  void readsEveryEncodingThatIsAnnounced() throws IOException {
    String xml = "<a x='größe'/>";
    assertEquals("größe", parse(xml).attribute("x"));
    assertEquals("größe", parse("\uFEFF" + xml).attribute("x"));
    assertEquals("größe", SafeXml.parse(("\uFEFF" + xml).getBytes(UTF_16LE)).attribute("x"));
    assertEquals("größe", SafeXml.parse(("\uFEFF" + xml).getBytes(UTF_16BE)).attribute("x"));
    assertEquals("größe", SafeXml.parse(xml.getBytes(UTF_16LE)).attribute("x"));
    assertEquals("größe", SafeXml.parse(xml.getBytes(UTF_16BE)).attribute("x"));
    String declared = "<?xml version='1.0' encoding='ISO-8859-1'?>" + xml;
    assertEquals("größe", SafeXml.parse(declared.getBytes(ISO_8859_1)).attribute("x"));
  }

  @Test
  void rejectsBytesThatAreNotInTheirEncoding() {
    byte[] latin = "<a>\n\n<b x='größe'/></a>".getBytes(ISO_8859_1);
    assertEquals("line 3: byte 13 is not valid UTF-8", error(latin));
    byte[] odd = Arrays.copyOf("\uFEFF<a/>".getBytes(UTF_16LE), 9);
    assertEquals("byte 8 is not valid UTF-16LE", error(odd));
    assertEquals(
        "line 1, column 1: the encoding \"klingon\" is not known here; use UTF-8",
        error("<?xml version='1.0' encoding='klingon'?><a/>"));
  }

  @Test
  void saysWhereATruncatedDocumentEnds() {
    assertEquals("line 2, column 4: the document ends inside <b>, which begins at line 1, column 4",
        error("<a><b>\nabc"));
    assertEquals("line 1, column 8: the document ends inside <a>, which begins at line 1, column 1",
        error("<a><b x"));
    assertTrue(error("<a").startsWith("line 1, column 3: not well-formed XML: "));
    assertEquals("the document is empty", error(""));
    assertEquals("the document is empty", error(" \n"));
  }

  @Test
  void saysSoWhenItIsNoXmlAtAll() {
    assertEquals(
        "line 2, column 3: found \"d\", expected \"<\": this is not XML",
        error("\n  draw bar: x a"));
    assertEquals(
        "line 1, column 1: found \"\uD83D\uDE00\", expected \"<\": this is not XML",
        error("\uD83D\uDE00"));
  }

  @Test
  void wordsOtherMistakesInEnglish() {
    assertEquals(
        "line 2, column 3: not well-formed XML: "
            + "The element type \"b\" must be terminated by the matching end-tag \"</b>\".",
        error("<a><b>\n</a>"));
    assertTrue(error("<a x='1' x='2'/>").contains("was already specified"));
    assertTrue(error("<a>&nbsp;</a>").contains("\"nbsp\" was referenced, but not declared"));
  }

  @Test
  void rejectsEveryDocumentTypeDeclaration() {
    assertEquals("line 2, column 1: a document type declaration (<!DOCTYPE) is not allowed",
        error("\n<!DOCTYPE a><a/>"));
    assertEquals(
        "line 1, column 1: a document type declaration (<!DOCTYPE) is not allowed",
        error("<!DOCTYPE a SYSTEM 'http://localhost:1/a.dtd'><a/>"));
  }

  @Test
  void aCommentAboutDocumentTypesIsJustAComment() {
    assertEquals("a", parse("<!-- no <!DOCTYPE here --><a/>").name());
    assertTrue(error("<!-- no <!DOCTYPE here --><a></b>").contains("not well-formed"));
  }

  @Test
  void anEntityBombIsRefusedAtOnce() {
    StringBuilder bomb = new StringBuilder("<!DOCTYPE a [<!ENTITY e0 'lol'>");
    for (int i = 1; i < 30; i++) {
      bomb.append("<!ENTITY e")
          .append(i)
          .append(" '")
          .append(("&e" + (i - 1) + ";").repeat(10))
          .append("'>");
    }
    bomb.append("]><a>&e29;</a>");
    String message = assertTimeout(Duration.ofSeconds(2), () -> error(bomb.toString()));
    assertEquals(
        "line 1, column 1: a document type declaration (<!DOCTYPE) is not allowed", message);
  }

  @Test
  void externalEntitiesAreNeitherReadNorFetched() throws IOException {
    Path secret = Files.writeString(folder.resolve("secret"), "secret");
    try (ServerSocket server = new ServerSocket(0)) {
      server.setSoTimeout(200);
      String http = "http://localhost:" + server.getLocalPort() + "/a";
      for (String uri : List.of(secret.toUri().toString(), http)) {
        String xml = "<!DOCTYPE a [<!ENTITY e SYSTEM '" + uri + "'>]><a>&e;</a>";
        assertFalse(error(xml).contains("secret"));
        String parameter = "<!DOCTYPE a [<!ENTITY % e SYSTEM '" + uri + "'>%e;]><a/>";
        assertTrue(error(parameter).endsWith("is not allowed"));
      }
      assertThrows(IOException.class, server::accept, "something came to fetch an entity");
    }
  }

  @Test
  void inclusionsAreNotFollowed() throws IOException {
    Path secret = Files.writeString(folder.resolve("secret.txt"), "secret");
    String include = "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include parse='text' href='"
        + secret.toUri() + "'/></a>";
    XmlElement root = parse(include);
    assertEquals("include", root.children().get(0).name());
    assertEquals("", root.text());
  }

  @Test
  void depthIsBounded() {
    int max = SafeXml.MAX_DEPTH;
    assertEquals("a", parse("<a>".repeat(max) + "</a>".repeat(max)).name());
    String message = error("<a>".repeat(100_000));
    assertEquals("line 1, column 1537: elements are nested more than 512 levels deep", message);
  }

  @Test
  void theNumberOfElementsIsBounded() {
    String most = "<b/>".repeat(SafeXml.MAX_ELEMENTS - 1);
    assertEquals(SafeXml.MAX_ELEMENTS - 1, parse("<a>" + most + "</a>").children().size());
    String message = error("<a>" + most + "\n<b/></a>");
    assertEquals("line 2, column 1: there are more than 100000 elements", message);
  }

  @Test
  void sizeIsBounded() {
    byte[] large = new byte[SafeXml.MAX_BYTES + 1];
    assertEquals("the document has 16777217 bytes; at most 16777216 are accepted", error(large));
  }
}
