// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** What other programs find in the PDF. */
class PdfWriterTest {
  @TempDir Path folder;

  private Path pdf(String xml) {
    Path file = folder.resolve("out.pdf");
    Documents.export(xml, file, "");
    return file;
  }

  private static String text(Path pdf) throws IOException, InterruptedException {
    return PdfTool.run("pdftotext", "-raw", pdf, "-");
  }

  private static String info(Path pdf, String key) throws IOException, InterruptedException {
    Matcher line =
        Pattern.compile("(?m)^" + key + ":\\s*(.*)$").matcher(PdfTool.run("pdfinfo", pdf));
    assertTrue(line.find(), key);
    return line.group(1).strip();
  }

  @Test
  void showsTheTextOfEveryBlock() throws Exception {
    Path pdf = pdf(Documents.everything());
    String text = text(pdf).replaceAll("[ .]+", " ");
    for (String part : List.of("All & more\nEverything there is\nAnn · 2024-02-29", "Overview\n",
        "First part 1\n", "Second part 1\n", "Plain, slanted, bold and code <x>;\na way out and"
        + " one further down", "In the middle", "• bullet", "3 third", "4 fourth", "Figures",
        "Name", "Left Right", "\na 1 5\n", "x, \"y\"\n", "Sales by region", "North", "\nSales\n",
        "setosa",
        "\nIris\n", "Third level", "The end", "All & more 1 / ", "All & more 2 / ")) {
      assertTrue(text.contains(part),
          part + "\n is not in\n" + text);
    }
    int pages = Integer.parseInt(info(pdf, "Pages"));
    assertTrue(text.contains(" " + pages + " / " + pages), text);
    String[] page = text.split("\f");
    assertEquals(pages, page.length);
    assertTrue(page[pages - 1].stripLeading().startsWith("Third level"), page[pages - 1]);
  }

  @Test
  void embedsAllFonts() throws Exception {
    String fonts = PdfTool.run("pdffonts", pdf(Documents.everything()));
    List<String> lines = new ArrayList<>(List.of(fonts.split("\n")));
    List<String> rows = lines.subList(2, lines.size());
    assertTrue(rows.size() >= 4, fonts);
    for (String row : rows) {
      assertTrue(row.matches(".* yes yes yes +\\d+ +\\d+"), row);
    }
  }

  @Test
  void drawsChartsAndTreesAsVectors() throws Exception {
    String images = PdfTool.run("pdfimages", "-list", pdf(Documents.xml(
        Documents.CHART + Documents.tree())));
    assertEquals(2, images.split("\n").length, images);
    images = PdfTool.run("pdfimages", "-list", pdf(Documents.xml(
        "<image>" + Documents.PNG + "</image>")));
    assertTrue(images.split("\n").length > 2, images);
  }

  @Test
  void showsVectorImages() throws Exception {
    String svg = java.util.Base64.getEncoder().encodeToString(("<svg"
        + " xmlns=\"http://www.w3.org/2000/svg\" width=\"90\" height=\"40\"><text x=\"5\" y=\"20\""
        + " font-family=\"Liberation Sans\">inside</text></svg>").getBytes(StandardCharsets.UTF_8));
    String text = text(pdf(Documents.xml("<image>" + svg + "</image>")));
    assertTrue(text.contains("inside"), text);
  }

  @Test
  void saysWhatItIs() throws Exception {
    Path pdf = pdf(Documents.everything());
    assertEquals("All & more", info(pdf, "Title"));
    assertEquals("Ann", info(pdf, "Author"));
    assertEquals("Everything there is", info(pdf, "Subject"));
    assertEquals("chartbridge", info(pdf, "Producer"));
    assertEquals("yes", info(pdf, "Tagged"));
    assertTrue(info(pdf, "Page size").endsWith("(A4)"));
    Path letter = folder.resolve("letter.pdf");
    Documents.export(Documents.xml("<page-break/>"), letter, ",\"paper\":\"letter\"");
    assertTrue(info(letter, "Page size").endsWith("(letter)"));
    assertEquals("1", info(letter, "Pages"));
  }

  @Test
  void leadsToHeadings() throws Exception {
    String text = new String(
        Files.readAllBytes(pdf(Documents.everything())), StandardCharsets.ISO_8859_1);
    assertTrue(text.contains("/Outlines"), "bookmarks");
    Matcher titles = Pattern.compile("/Title \\(([^)]*)\\)").matcher(text);
    List<String> found = new ArrayList<>();
    while (titles.find()) {
      found.add(titles.group(1));
    }
    assertTrue(found.containsAll(List.of("First part", "Second part", "Third level")),
        found.toString());
    assertTrue(text.contains("https://example.org/?a=1&b=2"), "link");
  }

  @Test
  void repeatsTheHeaderOfATableOnEveryPage() throws Exception {
    StringBuilder table = new StringBuilder("<table><header><row><cell>Head</cell></row></header>");
    for (int i = 0; i < 120; i++) {
      table.append("<row><cell>row ").append(i).append("</cell></row>");
    }
    Path pdf = pdf(Documents.xml(table + "</table>"));
    String[] pages = text(pdf).split("\f");
    assertTrue(pages.length >= 3);
    for (String page : pages) {
      assertTrue(page.stripLeading().startsWith("Head"), page);
      assertTrue(page.split("row ").length > 2, page);
    }
  }

  @Test
  void keepsHeadingsWithWhatFollows() throws Exception {
    // Whatever the length of the text before it, the heading is never the last line of a page.
    for (int lines = 40; lines < 52; lines++) {
      String xml = Documents.xml("<paragraph>" + "x<break/>".repeat(lines)
          + "x</paragraph><heading>Head</heading><paragraph>Body</paragraph>");
      for (String page : text(pdf(xml)).split("\f")) {
        assertEquals(page.contains("Head"), page.contains("Body"), lines + " lines:" + page);
      }
    }
  }

  @Test
  void breaksWordsThatAreTooLong() throws Exception {
    Path pdf = pdf(Documents.xml("<table><row><cell>" + "abcdefghij".repeat(20) + "</cell><cell>"
        + "viele Worte ".repeat(30) + "</cell></row></table><paragraph>" + "klmnopqrst".repeat(30)
        + "</paragraph>"));
    for (String box : PdfTool.run("pdftotext", "-bbox", pdf, "-").split("\n")) {
      Matcher right = Pattern.compile("xMax=\"([0-9.]+)\"").matcher(box);
      if (right.find()) {
        assertTrue(Double.parseDouble(right.group(1)) <= 595 - 70 + 1, box);
      }
    }
  }

  @Test
  void saysWhichCharacterNoFontHas() throws IOException {
    Path file = folder.resolve("out.pdf");
    Files.writeString(file, "before");
    String message = assertThrows(ChartException.class, () -> Documents.export(
        Documents.xml("<paragraph>a \uDBFF\uDFFD \uDBFF\uDFFC b</paragraph>"), file, ""))
            .getMessage();
    assertEquals("no installed font that PDF can embed has the characters"
        + " \"\uDBFF\uDFFC\uDBFF\uDFFD\" (U+10FFFC, U+10FFFD); install a font package for the"
        + " language of the text", message);
    String rearranged = assertThrows(ChartException.class, () -> Documents.export(
        Documents.xml("<table><row><cell>\u0915</cell></row></table>"), file, "")).getMessage();
    assertEquals("PDF cannot set the character \"\u0915\" (U+0915), whose script needs its letters"
        + " rearranged; HTML and ODT can", rearranged);
    assertEquals("before", Files.readString(file));
  }

  @Test
  void takesCharactersFromTheOtherFont() throws Exception {
    String text = text(pdf(Documents.xml("<paragraph>a \u2192 b \u2713 c <code>\u2713</code>"
        + "</paragraph>")));
    assertTrue(text.contains("a \u2192 b \u2713 c \u2713"), text);
  }

  @Test
  void drawsWhatNoFontOfThePdfHasInAChart() throws Exception {
    String chart = Documents.CHART.replace("Sales by region", "Sales \u6F22");
    assertTrue(text(pdf(Documents.xml(chart))).contains("North"));
  }

  @Test
  void writesNothingToTheScreen() {
    PrintStream before = System.err;
    ByteArrayOutputStream seen = new ByteArrayOutputStream();
    System.setErr(new PrintStream(seen, true, StandardCharsets.UTF_8));
    try {
      pdf(Documents.everything());
    } finally {
      System.setErr(before);
    }
    assertEquals("", seen.toString(StandardCharsets.UTF_8));
  }

  @Test
  void forgetsItsFigures() {
    pdf(Documents.xml(Documents.CHART));
    for (int i = 1; i < 200; i++) {
      assertFalse(PdfFigures.find(PdfFigures.SCHEME + i) != null);
    }
  }
}
