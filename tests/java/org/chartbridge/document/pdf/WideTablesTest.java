// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.model.Document;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** What gives way when a table is too wide, and in which order. */
class WideTablesTest {
  @TempDir Path folder;

  private static String table(int columns, String cell) {
    return "<table caption=\"Wide\"><header><row>" + "<cell>Head</cell>".repeat(columns)
        + "</row></header><row><cell header=\"true\">Key</cell>"
        + ("<cell>" + cell + "</cell>").repeat(columns - 1) + "</row></table>";
  }

  private static List<PageTable> parts(String table) {
    Document document = Documents.read(Documents.xml(table));
    return PageTable.of(document.tables().get(0), document);
  }

  @Test
  void breaksWordsThenTakesSmallerTypeThenTurnsThenGoesOnBelow() {
    PageTable broken = parts(table(6, "some_long_identifier_of_parts")).get(0);
    assertEquals(PageTable.SIZE, broken.size());
    PageTable small = parts(table(8, "-123,456,789")).get(0);
    assertTrue(small.size() < PageTable.SIZE && small.size() >= PageTable.SMALLEST);
    assertEquals(false, small.isTurned());
    PageTable turned = parts(table(11, "-123,456,789")).get(0);
    assertTrue(turned.isTurned());
    List<PageTable> several = parts(table(30, "-123,456,789"));
    assertTrue(several.size() > 2);
    int columns = 0;
    for (PageTable part : several) {
      assertEquals(1, part.table().rows().get(1).get(0).text().size());
      assertTrue(part.table().rows().get(1).get(0).header(), "each part names its rows");
      columns += part.table().columns().size() - 1;
    }
    assertEquals(29, columns);
  }

  @Test
  void measuresInTheWeightThatItSetsIn() {
    String rows = "<row><cell>%s</cell></row>";
    double plain = parts("<table>" + String.format(rows, "illi illi") + "</table>").get(0).width();
    double header = parts("<table><header>" + String.format(rows, "illi illi") + "</header>"
        + String.format(rows, "x") + "</table>").get(0).width();
    double bold = parts("<table>" + String.format(rows, "<strong>illi illi</strong>")
        + "</table>").get(0).width();
    double code = parts("<table>" + String.format(rows, "<code>illi illi</code>")
        + "</table>").get(0).width();
    assertTrue(header > plain + 1);
    assertEquals(header, bold, 0.001);
    assertTrue(code > header, "a fixed width is wider than either");
  }

  @Test
  void turnsOnlyThePagesOfTheTable() throws Exception {
    Path pdf = folder.resolve("out.pdf");
    Documents.export(Documents.xml("<paragraph>Before</paragraph><heading>Above</heading>"
        + table(11, "-123,456,789") + "<paragraph>Behind</paragraph>"), pdf, "");
    String info = PdfTool.run("pdfinfo", "-l", "9", pdf);
    assertTrue(info.contains("Pages:           3"), info);
    assertTrue(info.contains("1 size:  595.275 x 841.889"), info);
    assertTrue(info.contains("2 size:  841.889 x 595.275"), info);
    assertTrue(info.contains("3 size:  595.275 x 841.889"), info);
    String[] pages = PdfTool.run("pdftotext", "-raw", pdf, "-").split("\f");
    assertTrue(pages[0].startsWith("Before\n") && pages[0].strip().endsWith("1 / 3"), pages[0]);
    assertTrue(pages[1].startsWith("Above\nWide\n"), pages[1]);
    assertTrue(pages[2].startsWith("Behind\n"), pages[2]);
  }

  @Test
  void saysWhichTableIsTooWideAndWhy() throws Exception {
    Path pdf = folder.resolve("out.pdf");
    Files.writeString(pdf, "before");
    String message = assertThrows(ChartException.class, () -> Documents.export(
        Documents.xml(table(2, "1".repeat(250))), pdf, "")).getMessage();
    assertEquals("the table \"Wide\" is too wide for the page, even turned and in type of 6.5"
        + " points: \"" + "1".repeat(60) + "\u2026\" stays on one line. Put it into several cells, or into"
        + " text beside the table", message);
    assertEquals("before", Files.readString(pdf));
  }

  @Test
  void numbersItsParts() throws Exception {
    Path text = folder.resolve("out.txt");
    Documents.export(Documents.xml(table(12, "-123,456,789")), text, "");
    String lines = Files.readString(text);
    assertTrue(lines.startsWith("Wide (1/3)\n"), lines);
    assertTrue(lines.contains("\n\nWide (3/3)\n"), lines);
    assertEquals(4, lines.split("Key", -1).length, lines);
  }

  /** Also in a long report with pages of both kinds. */
  @Test
  void contentsNameThePagesOfHeadings() throws Exception {
    StringBuilder body = new StringBuilder("<contents depth=\"2\"/>");
    for (int i = 1; i <= 30; i++) {
      body.append("<heading level=\"").append(1 + i % 2).append("\">Chapter-").append(i)
          .append("</heading><paragraph>").append("Some words of a paragraph. ".repeat(40 + 7 * i))
          .append("</paragraph>");
      body.append(i % 5 == 0 ? Documents.CHART : i % 7 == 0 ? Documents.tree()
          : table(i % 3 == 0 ? 11 : 4, "-123,456,789"));
    }
    Path pdf = folder.resolve("out.pdf");
    Documents.export(Documents.xml(body.toString()), pdf, "");
    String[] pages = PdfTool.run("pdftotext", "-raw", pdf, "-").split("\f");
    assertTrue(pages.length >= 31, "pages: " + pages.length);
    for (int i = 1; i <= 30; i++) {
      String entry = "(?s).*Chapter-" + i + "[. ]+(\\d+)\n.*";
      assertTrue(pages[0].matches(entry), pages[0]);
      int page = Integer.parseInt(pages[0].replaceFirst(entry, "$1"));
      assertTrue(("\n" + pages[page - 1]).contains("\nChapter-" + i + "\n"),
          i + " is not on page " + page);
      assertTrue(pages[page - 1].strip().endsWith(page + " / " + pages.length), pages[page - 1]);
    }
  }
}
