// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Font;
import java.awt.Graphics2D;
import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.util.List;
import java.util.function.Consumer;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.zip.DataFormatException;
import java.util.zip.Inflater;
import javax.xml.parsers.DocumentBuilderFactory;
import org.junit.jupiter.api.Test;
import org.w3c.dom.Document;
import org.w3c.dom.Element;

class VectorFormatsTest {
  private static Element svg(Consumer<Graphics2D> drawing, double percent) throws Exception {
    byte[] bytes = PictureEncoder.encode(Pictures.of(drawing, percent), ImageType.SVG);
    DocumentBuilderFactory factory = DocumentBuilderFactory.newInstance();
    factory.setNamespaceAware(true);
    Document document = factory.newDocumentBuilder().parse(new ByteArrayInputStream(bytes));
    return document.getDocumentElement();
  }

  private static String pdf(Consumer<Graphics2D> drawing, double percent) {
    return new String(
        PictureEncoder.encode(Pictures.of(drawing, percent), ImageType.PDF), ISO_8859_1);
  }

  @Test
  void svgHasItsSizeAndAViewBoxInOwnPixels() throws Exception {
    Element root = svg(Pictures::squares, 250);
    assertEquals("http://www.w3.org/2000/svg", root.getNamespaceURI());
    assertEquals("svg", root.getLocalName());
    assertEquals("200", root.getAttribute("width"));
    assertEquals("100", root.getAttribute("height"));
    assertEquals("0 0 80 40", root.getAttribute("viewBox"));
    Element square = (Element) root.getElementsByTagName("rect").item(0);
    assertEquals("10", square.getAttribute("x"));
    assertEquals("20", square.getAttribute("width"));
    assertTrue(square.getAttribute("style").contains("rgb(0,114,178)"));
  }

  @Test
  void svgTextIsText() throws Exception {
    String text = "\"K\u00e4lte\" & <W\u00e4rme> \u20ac \uD83D\uDCC8";
    Element root = svg(Pictures.text(text, "Liberation Sans"), 100);
    Element found = (Element) root.getElementsByTagName("text").item(0);
    assertEquals(text, found.getTextContent());
    assertTrue(found.getAttribute("style").contains(
        "font-family: 'Liberation Sans', Arial, Helvetica, sans-serif"));
  }

  @Test
  void svgNamesFamiliesOfTheSameKind() throws Exception {
    String mono = ((Element) svg(Pictures.text("x", "DejaVu Sans Mono"), 100)
                       .getElementsByTagName("text").item(0)).getAttribute("style");
    assertTrue(mono.contains("'DejaVu Sans Mono', 'Courier New', Courier, monospace"), mono);
    String serif = ((Element) svg(Pictures.text("x", "Liberation Serif"), 100)
                        .getElementsByTagName("text").item(0)).getAttribute("style");
    assertTrue(serif.contains("'Liberation Serif', 'Times New Roman', Times, serif"), serif);
  }

  @Test
  void svgStaysWellFormedWithCharactersThatXmlDoesNotHave() throws Exception {
    Element root = svg(Pictures.text("a\u0001b\u000Bc\uFFFEd\uD800e", "Liberation Sans"), 100);
    assertEquals("a\uFFFDb\uFFFDc\uFFFDd\uFFFDe",
        root.getElementsByTagName("text").item(0).getTextContent());
  }

  @Test
  void svgIsTheSameForTheSamePicture() {
    Consumer<Graphics2D> clipped = graphics -> {
      graphics.clipRect(5, 5, 30, 30);
      Pictures.squares(graphics);
    };
    assertArrayEquals(PictureEncoder.encode(Pictures.of(clipped, 100), ImageType.SVG),
        PictureEncoder.encode(Pictures.of(clipped, 100), ImageType.SVG));
  }

  @Test
  void pdfIsOnePageAsLargeAsThePicture() {
    String pdf = pdf(Pictures::squares, 200);
    assertTrue(pdf.startsWith("%PDF-1."));
    assertTrue(pdf.stripTrailing().endsWith("%%EOF"));
    Matcher box = Pattern.compile("/MediaBox \\[\\s*0 0 (\\d+) (\\d+)\\s*\\]").matcher(pdf);
    assertTrue(box.find());
    assertEquals("120", box.group(1));
    assertEquals("60", box.group(2));
    assertEquals(1, count(pdf, "/Type /Page\n") + count(pdf, "/Type /Page\r"));
  }

  @Test
  void pdfEmbedsItsFonts() {
    String pdf = pdf(graphics -> {
      Pictures.text("Kälte € ≤ 5", "Liberation Sans").accept(graphics);
      graphics.setFont(graphics.getFont().deriveFont(Font.BOLD));
      Graphics2D rotated = (Graphics2D) graphics.create();
      rotated.rotate(-Math.PI / 2);
      rotated.drawString("Wärme", -30, 60);
      rotated.dispose();
    }, 100);
    assertEquals(2, count(pdf, "/FontFile2"));
    assertEquals(2, count(pdf, "/ToUnicode"));
    assertTrue(pdf.contains("+LiberationSans-Bold"));
    assertFalse(pdf.contains("/Helvetica"), "a font that is not embedded");
  }

  /** Text of a font that cannot be embedded, or lacks a character, is drawn all the same. */
  @Test
  void pdfDrawsOutlinesWhereItHasNoFont() throws DataFormatException {
    for (Consumer<Graphics2D> drawing : List.of(
             Pictures.text("Ag", "Dialog"), Pictures.text("A\u2654", "Liberation Sans"))) {
      String pdf = pdf(drawing, 100);
      assertFalse(pdf.contains("/FontFile2"));
      String page = content(pdf);
      assertFalse(page.contains(" Tj") || page.contains(" TJ"), page);
      assertTrue(count(page, " c\n") + count(page, " l\n") > 10, "outlines: " + page);
    }
  }

  @Test
  void pdfIsVector() throws DataFormatException {
    String pdf = pdf(Pictures::squares, 100);
    assertFalse(pdf.contains("/Subtype /Image"));
    assertTrue(content(pdf).contains(" re"), content(pdf));
  }

  /** The first stream of the file, which is what the page draws, unpacked. */
  private static String content(String pdf) throws DataFormatException {
    Matcher stream =
        Pattern.compile("/Filter /FlateDecode[^>]*>>\\s*stream\r?\n(.*?)endstream", Pattern.DOTALL)
            .matcher(pdf);
    StringBuilder all = new StringBuilder();
    while (stream.find()) {
      Inflater inflater = new Inflater();
      inflater.setInput(stream.group(1).getBytes(ISO_8859_1));
      ByteArrayOutputStream out = new ByteArrayOutputStream();
      byte[] buffer = new byte[4096];
      int length = inflater.inflate(buffer);
      while (length > 0) {
        out.write(buffer, 0, length);
        length = inflater.inflate(buffer);
      }
      inflater.end();
      all.append(out.toString(UTF_8));
    }
    return all.toString();
  }

  private static int count(String text, String part) {
    int count = 0;
    for (int at = text.indexOf(part); at >= 0; at = text.indexOf(part, at + 1)) {
      count++;
    }
    return count;
  }
}
