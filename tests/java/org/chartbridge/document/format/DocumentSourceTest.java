// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.chartbridge.document.figure.FigureRenderer;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.Paragraph;
import org.chartbridge.document.model.Table;
import org.chartbridge.tree.Models;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class DocumentSourceTest {
  @TempDir Path folder;

  private static List<Inline> text(String content) {
    Document document = Documents.read(Documents.xml("<paragraph>" + content + "</paragraph>"));
    return ((Paragraph) document.blocks().get(0)).text();
  }

  private DocumentSource fromFolder(String body) {
    return DocumentSource.read(
        Documents.xml(body).getBytes(StandardCharsets.UTF_8), SourceFolder.of(folder));
  }

  private String folderError(String body) {
    return assertThrows(ChartException.class, () -> fromFolder(body)).getMessage();
  }

  private static String figureError(String xml) {
    Figure figure = (Figure) Documents.read(xml).blocks().get(0);
    return assertThrows(ChartException.class,
        () -> new FigureRenderer(Locale.ROOT, null).render(figure)).getMessage();
  }

  @Test
  void collapsesBlanksAsTextDoes() {
    assertEquals(List.of(new Inline.Text("a b c")), text("\n  a\tb \n c  "));
    Inline bold = new Inline.Styled(
        org.chartbridge.document.model.TextStyle.STRONG, List.of(new Inline.Text("b")));
    assertEquals(List.of(new Inline.Text("a "), bold, new Inline.Text(" c")),
        text(" a <strong> b </strong> c "));
    assertEquals(List.of(new Inline.Text("a"), bold, new Inline.Text("c")),
        text("a<strong>b</strong>c"));
    assertEquals(
        List.of(new Inline.Text("a"), new Inline.LineBreak(), new Inline.Text("b")),
        text("a <break/> b"));
    assertEquals(List.of(new Inline.Text("a\u00A0 b")), text("a\u00A0 b"));
    assertEquals(List.of(), text("  "));
  }

  @Test
  void placesCellsOfSpans() {
    Document document = Documents.read(Documents.everything());
    Table table = document.tables().get(0);
    assertEquals(3, table.columns().size());
    assertEquals(2, table.headerRows());
    Table.Cell right = table.rows().get(1).get(1);
    assertEquals(1, right.row());
    assertEquals(2, right.column());
    assertEquals(1, table.rows().get(3).get(1).column());
    assertEquals(org.chartbridge.document.model.Alignment.RIGHT,
        table.rows().get(3).get(1).alignment());
    assertTrue(table.rows().get(0).get(0).header());
    assertFalse(table.rows().get(2).get(1).header());
  }

  @Test
  void givesHeadingsIdsThatNobodyHas() {
    Document document = Documents.read(Documents.xml("<heading>a</heading>"
        + "<heading id=\"section-2\">b</heading><heading>c</heading>"));
    assertEquals(List.of("section-1", "section-2", "section-3"),
        document.headings().stream().map(heading -> heading.id()).toList());
    Document late = Documents.read(
        Documents.xml("<heading>a</heading><heading id=\"section-1\">b</heading>"));
    assertEquals("section-2", late.headings().get(0).id());
  }

  @Test
  void keepsTheBytesOfCompleteDocuments() {
    byte[] bytes = Documents.everything().getBytes(StandardCharsets.UTF_8);
    assertArrayEquals(bytes, DocumentSource.read(bytes, SourceFolder.NONE).xml());
    assertArrayEquals(bytes,
        DocumentSource.read(DocumentBytes.compress(bytes), SourceFolder.NONE).xml());
  }

  @Test
  void takesFilesIn() throws IOException {
    Files.writeString(folder.resolve("c.gpl"), "size 300 by 200\ndraw bar: x a, y sum of b\n");
    Files.writeString(folder.resolve("d.csv"), "\uFEFFa,b\r\n\"x\r\ny\",1\r\n");
    Files.write(folder.resolve("t.pmml"), Models.example("iris"));
    Files.writeString(folder.resolve("s.xml"),
        "<tree-display xmlns=\"urn:chartbridge:tree-display:1\"><title>A &amp; B</title>"
            + "</tree-display>");
    Files.write(folder.resolve("p.png"), java.util.Base64.getDecoder().decode(Documents.PNG));
    DocumentSource built = fromFolder("<chart><description src=\"c.gpl\"/><data src=\"d.csv\"/>"
        + "</chart><tree><model src=\"t.pmml\"/><display src=\"s.xml\"/></tree>"
        + "<image src=\"p.png\" alt=\"dot\"/><paragraph>a <strong>b</strong></paragraph>");
    String xml = new String(built.xml(), StandardCharsets.UTF_8);
    assertFalse(xml.contains("src="), xml);
    assertTrue(xml.contains("<paragraph>a <strong>b</strong></paragraph>"), xml);

    Document finished = DocumentSource.read(built.xml(), SourceFolder.NONE).document();
    FigureRenderer renderer = new FigureRenderer(Locale.ROOT, null);
    for (int i = 0; i < 3; i++) {
      Illustration before = renderer.render((Figure) built.document().blocks().get(i));
      Illustration after = renderer.render((Figure) finished.blocks().get(i));
      assertEquals(before.width(), after.width());
      assertEquals(before.height(), after.height());
      assertEquals(before.title(), after.title());
    }
    assertEquals("A & B", renderer.render((Figure) finished.blocks().get(1)).title());
    byte[] data = ((org.chartbridge.document.model.FigureContent.ChartContent)
        ((Figure) finished.blocks().get(0)).content()).data().bytes();
    assertEquals("\na,b\r\n\"x\r\ny\",1\r\n", new String(data, StandardCharsets.UTF_8));
  }

  @Test
  void readsNothingOutsideOfTheFolder() throws IOException {
    Path inner = Files.createDirectory(folder.resolve("inner"));
    Files.writeString(folder.resolve("secret.gpl"), "x");
    Files.createSymbolicLink(inner.resolve("link.gpl"), folder.resolve("secret.gpl"));
    for (String name : List.of("../secret.gpl", folder.resolve("secret.gpl").toString(),
        "link.gpl", "./../inner/../secret.gpl")) {
      String xml = Documents.xml("<chart><description src=\"" + name + "\"/></chart>");
      String message = assertThrows(ChartException.class,
          () -> DocumentSource.read(xml.getBytes(StandardCharsets.UTF_8), SourceFolder.of(inner)))
              .getMessage();
      assertTrue(message.endsWith("is not in the folder of the document"), message);
    }
  }

  @Test
  void saysWhichFileIsMissingOrWrong() throws IOException {
    assertTrue(folderError("<chart><description src=\"no.gpl\"/></chart>")
        .endsWith("there is no file \"no.gpl\""));
    Files.createDirectory(folder.resolve("sub"));
    assertTrue(folderError("<chart><description src=\"sub\"/></chart>")
        .endsWith("\"sub\" is not a file"));
    Files.writeString(folder.resolve("bad.csv"), "a\u0001b");
    Files.writeString(folder.resolve("c.gpl"), "draw bar: x a, y count");
    assertTrue(folderError("<chart><description src=\"c.gpl\"/><data src=\"bad.csv\"/></chart>")
        .endsWith("bad.csv, line 1, column 2: the character U+0001 cannot stand in an XML"
            + " document"));
    Files.writeString(folder.resolve("bad.svg"), "<svg xmlns=\"http://www.w3.org/2000/svg\">"
        + "<script/></svg>");
    assertTrue(folderError("<image src=\"bad.svg\"/>").contains("bad.svg,"));
    assertThrows(ChartException.class, () -> SourceFolder.of(folder.resolve("none")));
  }

  @Test
  void saysWhereAChartIsWrong() {
    String open = "<document xmlns=\"urn:chartbridge:document:1\">\n<chart caption=\"C\">"
        + "<description>";
    String close = "</description><data>a\n1\n</data></chart></document>";
    assertTrue(figureError(open + "\n draw bor: x a" + close)
        .startsWith("line 3, column 7: "), figureError(open + "\n draw bor: x a" + close));
    String xmlChart = "<!-- > --><chart xmlns=\"urn:chartbridge:chart:2\">\n"
        + "<elements><bar><x colum='a>'/></bar></elements></chart>";
    assertTrue(figureError(open + xmlChart + close).startsWith("line 3, column 16: <x> "),
        figureError(open + xmlChart + close));
    assertTrue(figureError(open + "draw bar: x b, y count" + close)
        .startsWith("line 2, column 45: the chart \"C\": "));
    assertTrue(figureError(open + "draw bar: x a, y sum of a" + close.replace("1\n", "1,2\n"))
        .contains("CSV line 2 has"));
  }

  @Test
  void saysWhereATreeIsWrong() {
    String error = figureError(Documents.xml("\n<tree>\n<model><PMML"
        + " xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\">\n  <TreeModel/></PMML></model>"
        + "</tree>"));
    assertTrue(error.startsWith("line 2, column 1: the tree: "), error);
    assertTrue(error.contains("line 4, column 3"), error);
  }

  @Test
  void saysWhichFileOfAFigureIsWrong() throws IOException {
    Files.writeString(folder.resolve("c.gpl"), "\ndraw bor: x a");
    Figure figure = (Figure) fromFolder("<chart><description src=\"c.gpl\"/></chart>").document()
        .blocks().get(0);
    String message = assertThrows(ChartException.class,
        () -> new FigureRenderer(Locale.ROOT, null).render(figure)).getMessage();
    assertTrue(message.contains(": the chart: c.gpl, line 2, column 6"), message);
  }

  @Test
  void readsChartsWhoseNamespaceIsDeclaredFurtherOut() {
    String xml = "<document xmlns=\"urn:chartbridge:document:1\""
        + " xmlns:c=\"urn:chartbridge:chart:2\"><chart><description><c:chart><c:elements><c:bar>"
        + "<c:x column=\"a\"/></c:bar></c:elements></c:chart></description><data>a\n1\n</data>"
        + "</chart></document>";
    Figure figure = (Figure) Documents.read(xml).blocks().get(0);
    assertEquals(800, new FigureRenderer(Locale.ROOT, null).render(figure).width());
  }

  @Test
  void putsPicturesIn() {
    DocumentSource source = Documents.source(Documents.everything());
    byte[] pictured = source.xmlWithPictures();
    XmlElement root = SafeXml.parse(pictured);
    int pictures = 0;
    for (XmlElement block : root.children()) {
      XmlElement picture = block.child("picture");
      boolean drawn = block.name().equals("chart") || block.name().equals("tree");
      assertEquals(drawn, picture != null, block.name());
      if (picture != null) {
        pictures++;
        byte[] svg = PartReader.base64(picture);
        XmlElement svgRoot = SafeXml.parse(svg);
        assertEquals("svg", svgRoot.name());
        assertEquals(picture.attribute("width"), svgRoot.attribute("width"));
        assertEquals(picture.attribute("height"), svgRoot.attribute("height"));
      }
    }
    assertEquals(2, pictures);
    DocumentSource again = DocumentSource.read(pictured, SourceFolder.NONE);
    assertEquals(source.document().blocks().size(), again.document().blocks().size());
    assertArrayEquals(pictured, again.xmlWithPictures());
  }
}
