// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** What is said about documents that are wrong: where, what was found and what is expected. */
class DocumentErrorsTest {
  private static String error(String xml) {
    return assertThrows(ChartException.class, () -> Documents.source(xml)).getMessage();
  }

  /** The body begins in the second line. */
  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
    "<para/>|line 2, column 1: found <para> inside <document>; expected one of heading, paragraph",
    "text|line 1, column 1: <document> cannot hold the text \"text\"",
    "<heading/>|line 2, column 1: <heading> is empty",
    "<heading level=`7`>x</heading>|line 2, column 10: level of <heading> is \"7\"; expected a"
        + " whole number from 1 to 6",
    "<heading id=`a b`>x</heading>|line 2, column 10: id of <heading> is \"a b\"; expected a"
        + " letter",
    "<heading id=`a`>x</heading><heading id=`a`>y</heading>|line 2, column 37: another heading has"
        + " the id \"a\" too",
    "<heading colour=`a`>x</heading>|line 2, column 10: <heading> has no attribute \"colour\"",
    "<paragraph align=`middle`>x</paragraph>|line 2, column 12: align of <paragraph> is \"middle\";"
        + " expected one of start, left, center, right, justify",
    "<paragraph><b>x</b></paragraph>|line 2, column 12: found <b> inside <paragraph>; expected one"
        + " of emphasis, strong, code, link, break",
    "<paragraph><link>x</link></paragraph>|line 2, column 12: <link> needs the attribute to",
    "<paragraph><link to=`javascript:x`>x</link></paragraph>|line 2, column 18: to of <link> is"
        + " \"javascript:x\"; expected an address that begins with https:",
    "<paragraph><link to=`#no`>x</link></paragraph>|line 2, column 18: there is no heading with the"
        + " id \"no\"",
    "<paragraph>a<break>x</break></paragraph>|line 2, column 13: <break> cannot hold the text",
    "<list/>|line 2, column 1: <list> has no <item>",
    "<list kind=`roman`><item>x</item></list>|line 2, column 7: kind of <list> is \"roman\";"
        + " expected bullet or number",
    "<list start=`-1`><item>x</item></list>|line 2, column 7: start of <list> is \"-1\"",
    "<list><item><list><item>y</item></list>x</item></list>|line 2, column 13: <item> has text"
        + " behind <list>",
    "<table/>|line 2, column 1: <table> has no <row>",
    "<table><header/><row><cell/></row></table>|line 2, column 8: <header> has no <row>",
    "<table><row><cell/></row><column/></table>|line 2, column 26: <column> comes in front of the"
        + " rows",
    "<table><row><cell/></row><header><row><cell/></row></header></table>|line 2, column 26:"
        + " <header> comes once, in front of the rows",
    "<table><column/><column/><row><cell/></row></table>|line 2, column 26: the row fills 1 of 2"
        + " columns",
    "<table><row><cell/></row><row><cell/><cell/></row></table>|line 2, column 38: the cell reaches"
        + " beyond the 1 columns of the table",
    "<table><row><cell rowspan=`2`/></row></table>|line 2, column 13: the cell reaches beyond the"
        + " last row of its part of the table",
    "<table><header><row><cell rowspan=`2`/></row></header><row><cell/></row></table>|line 2,"
        + " column 21: the cell reaches beyond the last row",
    "<table><row><cell/><cell rowspan=`2`/></row><row><cell colspan=`2`/></row></table>|line 2,"
        + " column 50: the cell overlaps one that reaches down from above",
    "<table><row/></table>|line 2, column 8: the row fills 0 of 0 columns",
    "<table><row><cell colspan=`0`/></row></table>|line 2, column 19: colspan of <cell> is \"0\";"
        + " expected a whole number from 1 to 1000",
    "<table><column width=`0`/><row><cell/></row></table>|line 2, column 16: width of <column> is"
        + " \"0\"; expected a number above 0 and at most 100",
    "<chart/>|line 2, column 1: <chart> needs <description>",
    "<chart><description/></chart>|line 2, column 8: <description> is empty",
    "<chart><data>x</data><description>x</description></chart>|line 2, column 22: <description>"
        + " comes in front of <data>",
    "<chart width=`0`><description>x</description></chart>|line 2, column 8: width of <chart> is"
        + " \"0\"; expected a number of pixels from 1 to 10000",
    "<chart><description>a<b/></description></chart>|line 2, column 8: <description> has both text"
        + " and <b>",
    "<chart><description><a/><b/></description></chart>|line 2, column 25: <description> holds one"
        + " element only",
    "<chart><description src=`x.gpl`/></chart>|line 2, column 21: <description> refers to the file"
        + " \"x.gpl\"; a document that is not read from a file cannot refer to files",
    "<chart><description src=`x.gpl`>y</description></chart>|line 2, column 8: <description> has"
        + " both a file (src) and content",
    "<chart><description>x</description><data><a/></data></chart>|line 2, column 42: <data> holds"
        + " text only, but found <a>",
    "<tree/>|line 2, column 1: <tree> needs <model>",
    "<tree><model>***</model></tree>|line 2, column 7: the content of <model> is no base64",
    "<tree><model>abcd</model><display>x</display></tree>|line 2, column 26: <display> holds text;"
        + " XML is expected",
    "<image/>|line 2, column 1: <image> is empty",
    "<image>aGVsbG8=</image>|line 2, column 1: the image cannot be used: found neither a PNG nor a"
        + " JPEG nor an SVG",
    "<contents depth=`0`/>|line 2, column 11: depth of <contents> is \"0\"",
    "<contents>x</contents>|line 2, column 1: <contents> cannot hold the text \"x\"",
    "<page-break at=`1`/>|line 2, column 13: <page-break> has no attribute \"at\"",
    "<c:heading xmlns:c=`urn:x`>x</c:heading>|line 2, column 1: <heading> has the namespace"
        + " \"urn:x\"",
    "<paragraph>x|line 2, column 13: the document ends inside",
  })
  void saysWhereAndWhat(String body, String expected) {
    String open = "<document xmlns=\"urn:chartbridge:document:1\">\n";
    String close = body.endsWith(">x") ? "" : "</document>";
    String message = error(open + body.replace('`', '"') + close);
    assertTrue(message.startsWith(expected), message);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
    "date=\"today\"|date of <document> is \"today\"; expected a day such as 2024-01-31",
    "date=\"2024-02-30\"|<document> is not allowed like this",
    "language=\"12 34\"|language of <document> is \"12 34\"; expected a BCP 47 tag",
    "paper=\"a5\"|paper of <document> is \"a5\"; expected one of a4, letter",
    "titel=\"a\"|<document> has no attribute \"titel\"",
  })
  void saysWhatIsWrongWithTheDocumentItself(String attribute, String expected) {
    String message = error(Documents.xml(" " + attribute, "<page-break/>"));
    assertTrue(message.contains(expected), message);
    assertTrue(message.startsWith("line 1, column "), message);
  }

  @Test
  void namesTheRootThatIsExpected() {
    assertEquals("line 1, column 1: found <document> without a namespace, expected <document"
        + " xmlns=\"urn:chartbridge:document:1\">", error("<document/>"));
    assertTrue(error("<chart xmlns=\"urn:chartbridge:chart:2\"/>").startsWith(
        "line 1, column 1: found <chart> in the namespace urn:chartbridge:chart:2, expected"));
    assertEquals("line 1, column 1: <document> is empty", error(Documents.xml("")));
  }

  @Test
  void refusesEntities() {
    String message = error("<!DOCTYPE document [<!ENTITY a \"b\">]>"
        + Documents.xml("<paragraph>&a;</paragraph>"));
    assertTrue(message.contains("a document type declaration"), message);
  }

  @Test
  void refusesDamagedCompression() {
    byte[] whole = DocumentBytes.compress(
        Documents.xml("<page-break/>").getBytes(StandardCharsets.UTF_8));
    byte[] cut = Arrays.copyOf(whole, whole.length - 9);
    assertEquals("the compressed document is cut off", assertThrows(ChartException.class,
        () -> DocumentSource.read(cut, SourceFolder.NONE)).getMessage());
    byte[] damaged = whole.clone();
    damaged[whole.length - 6] ^= 0x55;
    assertTrue(assertThrows(ChartException.class,
        () -> DocumentSource.read(damaged, SourceFolder.NONE)).getMessage()
            .startsWith("the compressed document is damaged: "));
    byte[] bomb = DocumentBytes.compress(new byte[17 << 20]);
    assertEquals("the compressed document is larger than 16 MB, the most that is read",
        assertThrows(ChartException.class,
            () -> DocumentSource.read(bomb, SourceFolder.NONE)).getMessage());
  }
}
