// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.io.StringReader;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import javax.xml.XMLConstants;
import javax.xml.transform.stream.StreamSource;
import javax.xml.validation.Schema;
import javax.xml.validation.SchemaFactory;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;

class StyleTest {
  private static final String OPEN = "<style xmlns=\"urn:chartbridge:style:1\">\n";

  private static Style parse(String xml) {
    return Style.parse(xml.getBytes(StandardCharsets.UTF_8), Style.named("print"));
  }

  private static void fails(String message, String xml) {
    assertEquals(message, assertThrows(ChartException.class, () -> parse(xml)).getMessage());
  }

  private static Path docs() {
    return Path.of(System.getProperty("chartbridge.source"), "docs");
  }

  @Test
  void builtInStyles() {
    for (String name : Style.NAMES) {
      assertEquals(name, Style.named(name).name());
    }
    assertEquals("print", Style.named(null).name());
    assertEquals("print", Style.named("").name());
    assertEquals(Color.WHITE, Style.named("print").background());
    assertEquals("There is no style \"x\"; the styles are print, dark, mono, slides.",
        assertThrows(ChartException.class, () -> Style.named("x")).getMessage());
  }

  @Test
  void documentReplacesSingleSettings() {
    Style style = parse(OPEN + """
          <font family="DejaVu Sans"/>
          <sizes title="30" ticks="9.5"/>
          <colors background="#fafafa" plot="#ffffff" text="#000001"/>
          <grid color="#dedede" width="0.5"/>
          <axes width="0"/>
          <marks line-width="4" marker-size="12" patterns="true" shapes="1"/>
          <palette><color value="#AA0000"/><color value="#00aa00"/></palette>
          <sequential><color value="#ffffff"/><color value="#000000"/></sequential>
        </style>""");
    assertEquals("DejaVu Sans", style.fontFamily);
    assertEquals(30, style.titleSize);
    assertEquals(9.5, style.tickSize);
    assertEquals(Style.named("print").subtitleSize, style.subtitleSize);
    assertEquals(new Color(0xfafafa), style.background());
    assertEquals(Color.WHITE, style.plotBackground);
    assertEquals(0, style.axisWidth);
    assertEquals(Style.named("print").axisColor, style.axisColor);
    assertTrue(style.patterns && style.shapes);
    assertEquals(List.of(new Color(0xaa0000), new Color(0x00aa00)), style.palette());
    assertEquals(2, style.sequential.size());
  }

  @Test
  void documentMayNameItsBase() {
    Style style = parse("<style xmlns='urn:chartbridge:style:1' base='dark' name='night'/>");
    assertEquals("night", style.name());
    assertEquals(Style.named("dark").background(), style.background());
    byte[] empty = OPEN.concat("</style>").getBytes(StandardCharsets.UTF_8);
    Style kept = Style.parse(empty, Style.named("mono"));
    assertEquals("mono", kept.name());
  }

  @Test
  void mistakesNameTheirPlace() {
    fails("Style document: line 2, column 3: found <fnot>, expected one of font, sizes, colors, "
        + "grid, axes, "
        + "marks, palette, sequential.", OPEN + "  <fnot/></style>");
    fails("Style document: line 2, column 10: attribute title of <sizes>: found \"big\", "
        + "expected a number "
        + "from 4 to 200.", OPEN + "  <sizes title='big'/></style>");
    fails("Style document: line 2, column 10: attribute title of <sizes>: found \"NaN\", "
        + "expected a number "
        + "from 4 to 200.", OPEN + "  <sizes title='NaN'/></style>");
    fails("Style document: line 2, column 9: attribute color of <grid>: found \"red\", expected "
        + "a colour as "
        + "#rrggbb.", OPEN + "  <grid color='red'/></style>");
    fails("Style document: line 2, column 7: <font> has the attribute size, expected one of "
        + "family.",
        OPEN + "<font size='3'/></style>");
    fails("Style document: line 2, column 1: <font> needs the attribute family, the name of a "
        + "font family.",
        OPEN + "<font/></style>");
    fails("Style document: line 2, column 8: attribute shapes of <marks>: found \"maybe\", "
        + "expected true or "
        + "false.", OPEN + "<marks shapes='maybe' /></style>");
    fails("Style document: line 1, column 40: There is no style \"x\"; the styles are print, "
        + "dark, mono, "
        + "slides.", "<style xmlns='urn:chartbridge:style:1' base='x' name='n' />");
    fails("Style document: line 1, column 1: found <style>, expected <style "
        + "xmlns=\"urn:chartbridge:style:1\">.", "<style/>  ");
    fails("Style document: line 2, column 1: <palette> has 0 colours, expected 1 to 100.",
        OPEN + "<palette/></style>");
    fails("Style document: line 1, column 1: found text in <style>, expected elements only.",
        OPEN + "hello</style>");
    fails("Style document: line 2, column 7: found <b> in <grid>, where no element is allowed.",
        OPEN + "<grid><b/></grid></style>");
  }

  @Test
  void brokenAndHostileDocuments() {
    fails("Style document: line 2, column 17: the document ends inside <style>, which begins at "
        + "line 1, "
        + "column 1.", OPEN + "<sizes title='9'");
    String bomb = "<!DOCTYPE style [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;'>]>"
        + OPEN + "&b;</style>";
    String refused = assertThrows(ChartException.class, () -> parse(bomb)).getMessage();
    assertTrue(refused.contains("document type declaration"), refused);
    String outside = "<!DOCTYPE style [<!ENTITY a SYSTEM 'file:///etc/passwd'>]>"
        + OPEN + "&a;</style>";
    assertThrows(ChartException.class, () -> parse(outside));
    assertThrows(ChartException.class, () -> parse(""));
    assertEquals("Style document: it is larger than 1048576 bytes.",
        assertThrows(ChartException.class,
            () -> Style.parse(new byte[(1 << 20) + 1], null)).getMessage());
  }

  @Test
  void documentedExamplesAreValidAndRead() throws Exception {
    SchemaFactory factory = SchemaFactory.newDefaultInstance();
    factory.setProperty(XMLConstants.ACCESS_EXTERNAL_DTD, "");
    Schema schema = factory.newSchema(docs().resolve("chart-style.xsd").toFile());
    String text = Files.readString(docs().resolve("styles.md"));
    Matcher blocks = Pattern.compile("```xml\\n(.*?)```", Pattern.DOTALL).matcher(text);
    int count = 0;
    while (blocks.find()) {
      String xml = blocks.group(1);
      schema.newValidator().validate(new StreamSource(new StringReader(xml)));
      parse(xml);
      count++;
    }
    assertTrue(count >= 2, "examples: " + count);
    for (String name : Style.NAMES) {
      assertTrue(text.contains("`" + name + "`"), name);
    }
  }

  @Test
  void schemaRefusesWhatTheReaderRefuses() throws Exception {
    Schema schema = SchemaFactory.newDefaultInstance().newSchema(
        docs().resolve("chart-style.xsd").toFile());
    for (String body : List.of("<fnot/>", "<sizes title='big'/>", "<sizes title='1'/>", "<grid "
        + "color='red'/>",
        "<font/>", "<palette/>", "<sequential><color value='#000000'/></sequential>", "<marks "
            + "shapes='maybe'/>",
        "<axes width='21'/>")) {
      assertThrows(ChartException.class, () -> parse(OPEN + body + "</style>"), body);
      assertThrows(org.xml.sax.SAXException.class, () -> schema.newValidator().validate(
          new StreamSource(new StringReader(OPEN + body + "</style>"))), body);
    }
  }
}
