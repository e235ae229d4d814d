// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_16;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class StyleSheetTest {
  private static final String DOCUMENT = "<r a='1'><x>ü</x><x>2</x></r>";
  private static final String OPEN =
      "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'"
      + " xmlns:o='http://xml.apache.org/xalan/java/java.lang.Runtime'"
      + " xmlns:w='http://xml.apache.org/xalan/redirect' extension-element-prefixes='w'>\n";

  @TempDir Path folder;

  private static byte[] sheet(String inside) {
    return (OPEN + inside + "</xsl:stylesheet>").getBytes(UTF_8);
  }

  private static byte[] template(String inside) {
    return sheet("<xsl:template match='/'>" + inside + "</xsl:template>");
  }

  private static String applied(byte[] sheet) {
    return new String(StyleSheet.apply(DOCUMENT.getBytes(UTF_8), sheet), UTF_8);
  }

  private static String error(byte[] document, byte[] sheet) {
    String message =
        assertThrows(ChartException.class, () -> StyleSheet.apply(document, sheet)).getMessage();
    assertEquals(-1, message.indexOf('\n'), message);
    return message;
  }

  private static String error(byte[] sheet) {
    return error(DOCUMENT.getBytes(UTF_8), sheet);
  }

  @Test
  void turnsADocumentIntoAnother() {
    assertEquals("<?xml version=\"1.0\" encoding=\"UTF-8\"?><n>2<y>ü</y></n>", applied(sheet(
        "<xsl:template match='/r'><n><xsl:value-of select='count(x)'/><y>"
            + "<xsl:value-of select='x[1]'/></y></n></xsl:template>"))
            .replaceAll(" xmlns:[^>]*", ""));
  }

  @Test
  void takesAChartInTheGraphLanguage() {
    byte[] chart = "title \"T\"\ndraw bar: x a\n".getBytes(UTF_8);
    byte[] sheet = sheet("<xsl:output method='text'/><xsl:template match='/' xmlns:c="
        + "'urn:chartbridge:chart:2'><xsl:value-of select='//c:titles/@title'/></xsl:template>");
    assertEquals("T", new String(StyleSheet.apply(chart, sheet), UTF_8));
    assertEquals("The document: line 2, column 9: found \";\", which has no meaning"
        + " here; put names with it in quotes",
        error("title \"T\"\ndraw bar;".getBytes(UTF_8), sheet));
  }

  @Test
  void writesInTheEncodingOfTheStyleSheet() {
    String body = "<xsl:template match='/'><xsl:value-of select='//x'/>€</xsl:template>";
    String text = "<xsl:output method='text' encoding='";
    byte[] document = DOCUMENT.getBytes(UTF_8);
    assertArrayEquals("ü€".getBytes(UTF_8),
        StyleSheet.apply(document, sheet("<xsl:output method='text'/>" + body)));
    assertArrayEquals("ü".getBytes(ISO_8859_1),
        StyleSheet.apply(document, sheet(text + "iso-8859-1'/>" + body.replace("€", ""))));
    byte[] wide = StyleSheet.apply(document, sheet(text + "UTF-16'/>" + body));
    assertEquals("ü€", new String(wide, UTF_16));
    assertEquals("The style sheet: line 2, column 27: the output encoding \"nope\" is not known",
        error(sheet(text + "nope'/>" + body)));
    assertEquals("The style sheet: line 2, column 27: the output encoding \"a b\" is not known",
        error(sheet(text + "a b'/>" + body)));
  }

  @Test
  void readsEveryEncoding() {
    byte[] wide = DOCUMENT.getBytes(UTF_16);
    byte[] latin = new String(template("<xsl:value-of select='//x'/>ü"))
        .replaceFirst("^", "<?xml version='1.0' encoding='ISO-8859-1'?>").getBytes(ISO_8859_1);
    String result = new String(StyleSheet.apply(wide, latin), UTF_8);
    assertTrue(result.endsWith("üü"), result);
  }

  @ParameterizedTest
  @ValueSource(strings = {"<xsl:output method='text'/>", "", "<xsl:output encoding='UTF-16'/>",
      "<xsl:output method='html'/>", "<xsl:output omit-xml-declaration='yes'/>"})
  void puttingOutNothingGivesNoBytes(String output) {
    assertEquals(0, StyleSheet.apply(DOCUMENT.getBytes(UTF_8),
        sheet(output + "<xsl:template match='/'/>")).length);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "<xsl:template match='/'>\\n <xsl:value-of select='$x'/></xsl:template>|line 3, column 16",
      "<xsl:template match='/'>\\n <a/><xsl:valueof select='.'/></xsl:template>|line 3, column 6",
      "<xsl:template match='/'><a/><xsl:value-of\\n  select='foo('/></xsl:template>"
          + "|line 3, column 3",
      "<xsl:template match='/'><a/><xsl:value-of select='no-such(1)'/></xsl:template>"
          + "|line 2, column 43",
      "<xsl:template match='/'>\\n<xsl:value-of/></xsl:template>|line 3, column 1",
      "<xsl:template match='/['/>|line 2, column 15",
  })
  void aMistakeHasAPlaceAndAReason(String inside, String place) {
    String message = error(sheet(inside.replace("\\n", "\n")));
    assertTrue(message.startsWith("The style sheet: " + place + ": "), message);
    assertTrue(message.length() > ("The style sheet: " + place + ": ").length() + 5, message);
  }

  @Test
  void tellsWhichOfTheTwoIsBroken() {
    byte[] fine = template("<a/>");
    assertEquals("The document: line 1, column 4: the document ends inside <r>, which begins at"
        + " line 1, column 1", error("<r>".getBytes(UTF_8), fine));
    assertEquals("The style sheet: line 1, column 4: the document ends inside <r>, which begins at"
        + " line 1, column 1", error("<r>".getBytes(UTF_8)));
    assertEquals("The document is empty.", error(new byte[0], fine));
    assertEquals("The document is empty.", error(null, fine));
    assertEquals("The style sheet is empty.", error(new byte[0]));
    assertEquals("The style sheet is empty.", error(null));
    String bomb = "<!DOCTYPE r [<!ENTITY a 'b'>]><r>&a;</r>";
    assertEquals("The document: line 1, column 1: a document type declaration (<!DOCTYPE) is not"
        + " allowed", error(bomb.getBytes(UTF_8), fine));
    assertEquals("The style sheet: line 1, column 1: a document type declaration (<!DOCTYPE) is not"
        + " allowed", error(bomb.getBytes(UTF_8)));
  }

  @Test
  void tellsWhatIsNoStyleSheet() {
    assertTrue(error("<r/>".getBytes(UTF_8)).startsWith("The style sheet: "));
    assertTrue(error("x".getBytes(UTF_8)).startsWith("The style sheet: line 1, column 1: found"));
  }

  @Test
  void aStyleSheetCanStopWithAReason() {
    assertEquals("The style sheet: line 2, column 25: it stops with the message \"no bars\"",
        error(template("<xsl:message terminate='yes'>no bars</xsl:message>")));
  }

  @Test
  void messagesGoNowhereElse() {
    PrintStream before = System.err;
    ByteArrayOutputStream printed = new ByteArrayOutputStream();
    System.setErr(new PrintStream(printed));
    try {
      assertTrue(applied(template("<xsl:message>just so</xsl:message><a/>")).contains("<a"));
      error(template("<xsl:value-of select='$x'/>"));
    } finally {
      System.setErr(before);
    }
    assertEquals("", printed.toString());
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "<xsl:include href='%s'/>", "<xsl:import href='%s'/>",
      "<xsl:template match='/'><xsl:copy-of select=\"document('%s')\"/></xsl:template>"})
  void loadsNothing(String inside) throws Exception {
    Path secret = Files.writeString(folder.resolve("secret.xml"),
        OPEN + "<xsl:template match='/'>secret</xsl:template></xsl:stylesheet>");
    for (String target : new String[] {secret.toString(), secret.toUri().toString(),
        "http://192.0.2.1/a.xsl"}) {
      String message = error(sheet(inside.formatted(target)));
      assertTrue(message.startsWith("The style sheet: line 2, column "), message);
      assertTrue(message.endsWith(
          ": it asks for \"" + target + "\"; a style sheet can load no other document"), message);
    }
  }

  @Test
  void callsNoJavaAndWritesNoFile() {
    String message = error(template("<xsl:value-of select='o:getRuntime()'/>"));
    assertTrue(message.contains("getRuntime"), message);
    Path file = folder.resolve("written.txt");
    error(template("<w:write file='" + file + "'>x</w:write>"));
    assertFalse(Files.exists(file));
    assertFalse(applied(template("<xsl:value-of select=\"system-property('xsl:vendor-url')\"/>"))
        .contains(System.getProperty("user.home")));
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "<xsl:template match='/' name='r'><xsl:call-template name='r'/><a/></xsl:template>",
      "<xsl:variable name='b' select='$c'/><xsl:variable name='c' select='$b'/>"
          + "<xsl:template match='/'><xsl:value-of select='$b'/></xsl:template>"})
  void endlessRecursionEnds(String inside) {
    String message = error(sheet(inside));
    assertTrue(message.startsWith("The style sheet: "), message);
  }

  @Test
  void aResultHasAnEnd() {
    String grow = "<xsl:template match='/'><xsl:call-template name='g'>"
        + "<xsl:with-param name='n' select='60'/></xsl:call-template></xsl:template>"
        + "<xsl:template name='g'><xsl:param name='n'/><xsl:value-of select='//x'/><xsl:if"
        + " test='$n > 0'><xsl:call-template name='g'><xsl:with-param name='n' select='$n - 1'/>"
        + "</xsl:call-template><xsl:call-template name='g'><xsl:with-param name='n'"
        + " select='$n - 1'/></xsl:call-template></xsl:if></xsl:template>";
    byte[] document = ("<r><x>" + "long ".repeat(20_000) + "</x></r>").getBytes(UTF_8);
    assertEquals("The style sheet: its result has more than 67108864 bytes.",
        error(document, sheet(grow)));
  }

  @Test
  void severalThreadsCanWorkAtOnce() throws Exception {
    Thread[] threads = new Thread[4];
    String[] results = new String[threads.length];
    for (int i = 0; i < threads.length; i++) {
      int me = i;
      threads[i] = new Thread(() -> results[me] = applied(template("<a n='" + me + "'/>")));
      threads[i].start();
    }
    for (int i = 0; i < threads.length; i++) {
      threads[i].join();
      assertTrue(results[i].contains("n=\"" + i + "\""), results[i]);
    }
  }
}
