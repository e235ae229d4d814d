// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.document.Documents;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Scripts from right to left, and those of East Asia, as they stand on the page. */
class ScriptsTest {
  private static final double MARGIN = 25 * 72 / 25.4;
  private static final double RIGHT = 210 * 72 / 25.4 - MARGIN;
  private static final Pattern WORD = Pattern.compile("<word xMin=\"([0-9.-]+)\""
      + " yMin=\"([0-9.-]+)\" xMax=\"([0-9.-]+)\" yMax=\"[0-9.-]+\">(.*)</word>");

  private record Word(double left, double top, double right, String text) {}

  @TempDir Path folder;

  private Path pdf(String xml) {
    Path file = folder.resolve("out.pdf");
    Documents.export(xml, file, "");
    return file;
  }

  private static List<Word> words(Path pdf) throws IOException, InterruptedException {
    List<Word> words = new ArrayList<>();
    Matcher word = WORD.matcher(PdfTool.run("pdftotext", "-bbox", pdf, "-"));
    while (word.find()) {
      words.add(new Word(Double.parseDouble(word.group(1)), Double.parseDouble(word.group(2)),
          Double.parseDouble(word.group(3)), word.group(4)));
    }
    return words;
  }

  private static Word find(List<Word> words, String text) {
    return words.stream().filter(word -> word.text().contains(text)).findFirst()
        .orElseThrow(() -> new AssertionError(text + " in " + words));
  }

  /** Letters that join have other shapes than letters that stand alone. */
  @Test
  void joinsArabicLetters() throws Exception {
    String text = PdfTool.run("pdftotext", "-raw", pdf(Documents.xml(
        "<heading>\u0645\u0631\u062D\u0628\u0627</heading><table caption=\"\u0639\u0631\u0628\u064A\">"
        + "<row><cell>\u0639\u062F\u062F</cell></row></table>")), "-");
    assertTrue(text.matches("(?s).*[\uFEE3\uFEE4].*"), "meem joins: " + text);
    assertTrue(text.matches("(?s).*[\uFECB\uFECC].*"), "ain joins: " + text);
    assertFalse(text.contains("\u0645"), "no letter stands alone: " + text);
  }

  @Test
  void setsADocumentFromRightToLeft() throws Exception {
    List<Word> words = words(pdf(Documents.xml(" language=\"he\"",
        "<contents title=\"\"/><heading>\u05D0\u05D1\u05D2 2024</heading>"
            + "<paragraph>\u05E9\u05DC\u05D5\u05DD 2023-01-31 (abc) -5</paragraph>"
            + "<table><row><cell>\u05D4\u05D5\u05D6</cell><cell>77</cell></row></table>"
            + "<list><item>\u05D8\u05D9\u05DB</item></list><paragraph>In English</paragraph>")));
    for (Word word : words) {
      assertTrue(word.left() >= MARGIN - 1 && word.right() <= RIGHT + 1, word.toString());
    }
    Word first = find(words, "\u05E9");
    assertEquals(RIGHT, first.right(), 1, "lines begin on the right");
    Word date = find(words, "2023");
    assertTrue(date.right() < first.left(), "what comes later is further left");
    assertTrue(find(words, "31").left() >= date.left(), "days do not change places");
    assertTrue(find(words, "77").right() < find(words, "\u05D4").left(), "columns from the right");
    assertEquals(RIGHT, find(words, "\u05D4").right(), 8, "tables on the right");
    assertTrue(find(words, "\u2022").left() > find(words, "\u05D8").right(), "bullets in front");
    assertEquals(MARGIN, find(words, "In").left(), 1, "English from the left");
    assertEquals(MARGIN, find(words, "1").left(), 1, "page numbers on the left");
    assertEquals(RIGHT, find(words, "\u05D0").right(), 1, "contents on the right");
  }

  @Test
  void tellsReadersOnlyLanguagesThatThereAre() throws Exception {
    String bytes = Files.readString(pdf(Documents.xml(" language=\"en\"",
        "<paragraph>a \u0639\u0631\u0628\u064A b</paragraph>")), StandardCharsets.ISO_8859_1);
    assertTrue(bytes.contains("/Lang (en)"));
    assertFalse(bytes.contains("/Lang (*)"));
  }

  @Test
  void setsChineseAndJapanese() throws Exception {
    String sentence = "\u3053\u308C\u306F\u9577\u3044\u6587\u7AE0\u3067\u3059\u3002";
    Path pdf = pdf(Documents.xml(" title=\"\u58F2\u4E0A\" language=\"ja\"",
        "<contents title=\"\u76EE\u6B21\"/><heading>\u6982\u8981</heading><paragraph>"
            + sentence.repeat(12) + "abc \u6F22 <strong>\u592A\u5B57</strong></paragraph>"
            + "<table caption=\"\u8868\"><row><cell>\u6771\u4EAC</cell><cell>" + sentence.repeat(12)
            + "</cell></row></table><list><item>\u7B2C\u4E00</item></list>"));
    String text = PdfTool.run("pdftotext", "-raw", pdf, "-");
    for (String part : List.of("\u58F2\u4E0A", "\u76EE\u6B21", "\u6982\u8981", "abc \u6F22 \u592A\u5B57",
        "\u6771\u4EAC", "\u7B2C\u4E00")) {
      assertTrue(text.contains(part), part + " in " + text);
    }
    for (Word word : words(pdf)) {
      assertTrue(word.right() <= RIGHT + 1, word.toString());
      assertFalse(word.text().startsWith("\u3002"), "no line begins with a full stop");
    }
    for (String font : PdfTool.run("pdffonts", pdf).split("\n")) {
      assertTrue(font.matches("name .*|-.*|.* yes yes yes +\\d+ +\\d+"), font);
    }
    String bytes = Files.readString(pdf, StandardCharsets.ISO_8859_1);
    assertTrue(bytes.contains("/Title <FEFF69828981>"), "a bookmark");
    assertTrue(Files.size(pdf) < 300_000, "only the characters that are used are embedded");
  }

  /** Blanks have no outline in any font, and some of them look to Java like letters. */
  @Test
  void setsWideBlanksAndWhatNobodySees() throws Exception {
    String xml = Documents.xml(" language=\"ja\"", "<paragraph>\u3000\u6771\u3000\u4EAC a\u3000b"
        + " \u3042\u3164\u3044 c\u3164d e\u2800f g\u1160h i\uFFA0j k\u034Fl"
        + " \u845B\uDB40\uDD00\u57CE m\uFE0Fn \u767D\u180Bq o\u2003p</paragraph>"
        + "<table><row><cell>\u8868\u3000\u3164\u8868</cell></row></table>");
    String text = PdfTool.run("pdftotext", "-raw", pdf(xml), "-");
    assertFalse(text.contains("#"), "nothing stands for what is missing: " + text);
    for (String part : List.of("\u6771", "\u4EAC", "\u3042", "\u3044", "\u845B\u57CE", "mn",
        "\u767Dq")) {
      assertTrue(text.contains(part), part + " in " + text);
    }
    List<Word> words = words(folder.resolve("out.pdf"));
    double size = 10;
    assertEquals(MARGIN + size, find(words, "\u6771").left(), 2, "a blank as wide as a letter");
  }

  @Test
  void takesSingleFontsOutOfCollections() throws Exception {
    Path single = org.chartbridge.image.FontFiles.find("DejaVuSans.ttf");
    byte[] font = Files.readAllBytes(single);
    java.nio.ByteBuffer collection = java.nio.ByteBuffer.allocate(font.length + 16);
    collection.put("ttcf".getBytes(StandardCharsets.US_ASCII)).putInt(0x10000).putInt(1).putInt(16);
    int tables = java.nio.ByteBuffer.wrap(font).getShort(4);
    java.nio.ByteBuffer moved = java.nio.ByteBuffer.wrap(font.clone());
    for (int i = 0; i < tables; i++) {
      moved.putInt(12 + 16 * i + 8, moved.getInt(12 + 16 * i + 8) + 16);
    }
    collection.put(moved.array());
    Path file = folder.resolve("collection.ttc");
    Files.write(file, collection.array());
    byte[] found = FontCollectionFiles.read(
        java.net.URI.create(file.toUri() + "?0"));
    java.awt.Font read = java.awt.Font.createFont(
        java.awt.Font.TRUETYPE_FONT, new java.io.ByteArrayInputStream(found));
    assertEquals("DejaVu Sans", read.getFontName());
    assertTrue(read.canDisplay('\u0639'));
  }
}
