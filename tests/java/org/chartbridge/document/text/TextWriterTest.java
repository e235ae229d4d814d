// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class TextWriterTest {
  @TempDir Path folder;

  private String text(String xml) throws IOException {
    Path file = folder.resolve("out.txt");
    Documents.export(xml, file, "");
    return Files.readString(file);
  }

  private String csv(String xml, String options) throws IOException {
    Path file = folder.resolve("out.csv");
    Documents.export(xml, file, options);
    return Files.readString(file);
  }

  @Test
  void writesEveryKindOfBlock() throws IOException {
    assertEquals("""
        ================================================================================
        All & more
        Everything there is
        Ann
        2024-02-29
        ================================================================================

        Overview
        --------
        First part
          Second part


        First part
        ==========

        Plain, _slanted_, **bold** and `code <x>`;
        a way out <https://example.org/?a=1&b=2> and one further down.

                                         In the middle


        Second part
        -----------

        - bullet
        - above
          3. third
          4. fourth

        Figures
        +------+---------------+
        | Name |          Both |
        |      +------+--------+
        |      | Left | Right  |
        +======+======+========+
        | a    |  1.5 | x, "y" |
        +------+------+        |
        | b    |   22 |        |
        |      |   33 |        |
        +------+------+--------+

        [Chart: Sales]

        [Decision tree: Iris]

        [Image: A dot]

                                             * * *

        Third level
        ~~~~~~~~~~~

        The end.
        """, text(Documents.everything()));
  }

  @Test
  void wrapsAtEightyColumns() throws IOException {
    String word = "zwölfzeichen ";
    String text = text(Documents.xml("<paragraph>" + word.repeat(20) + "</paragraph><list><item>"
        + word.repeat(20) + "</item></list><heading>" + word.repeat(20) + "</heading>"));
    for (String line : text.split("\n")) {
      assertTrue(line.codePointCount(0, line.length()) <= 80, line);
    }
    assertTrue(text.startsWith(word.repeat(6).strip() + "\n"), text);
    assertTrue(text.contains("- " + word.repeat(6).strip() + "\n  zwölf"), text);
  }

  @Test
  void fitsTablesIntoTheLine() throws IOException {
    String text = text(Documents.xml("<table><row><cell>" + "viele Worte ".repeat(20)
        + "</cell><cell>kurz</cell><cell>" + "x".repeat(100) + "</cell></row></table>"));
    int longest = 0;
    for (String line : text.split("\n")) {
      longest = Math.max(longest, line.length());
      assertTrue(line.matches("[+|].*[+|]"), line);
    }
    assertTrue(longest <= 80, text);
    assertEquals(100, text.chars().filter(c -> c == 'x').count());
  }

  @Test
  void givesColumnsTheirShare() throws IOException {
    String text = text(Documents.xml("<table><column width=\"25\"/><column/><column/><row>"
        + "<cell>a</cell><cell>b</cell><cell>cc</cell></row></table>"));
    // 70 columns without borders: 17, and the others two thirds and one third of the rest.
    assertEquals("+" + "-".repeat(19) + "+" + "-".repeat(19) + "+" + "-".repeat(37) + "+",
        text.split("\n")[0]);
  }

  @Test
  void makesRoomForCellsOverSeveralRows() throws IOException {
    assertEquals("""
        +---+---+
        | 1 | a |
        | 2 +---+
        | 3 | b |
        | 4 |   |
        +---+---+
        """, text(Documents.xml("<table><row><cell rowspan=\"2\">1<break/>2<break/>3<break/>4"
            + "</cell><cell>a</cell></row><row><cell>b</cell></row></table>")));
  }

  @Test
  void drawsNoLinesBetweenSimpleRows() throws IOException {
    assertEquals("""
        +---+---+
        | a | b |
        | 漢 | d |
        +---+---+
        """.replace("---+---", "----+---").replace("| a |", "| a  |"),
        text(Documents.xml("<table><row><cell>a</cell><cell>b</cell></row>"
            + "<row><cell>漢</cell><cell>d</cell></row></table>")));
  }

  @ParameterizedTest
  @CsvSource({"abc,3", "äöü,3", "a\u0301b,2", "漢字,4", "\uD83D\uDE00,2", "a\u200Bb,2", "'',0"})
  void knowsHowWideTextIs(String text, int width) {
    assertEquals(width, TextWidth.of(text));
  }

  @Test
  void writesInTheCharsetThatIsAskedFor() throws IOException {
    String xml = Documents.xml("<paragraph>größer</paragraph>");
    Path file = folder.resolve("latin.txt");
    Documents.export(xml, file, ",\"charset\":\"ISO-8859-1\"");
    assertArrayEquals("größer\n".getBytes(StandardCharsets.ISO_8859_1), Files.readAllBytes(file));
    Documents.export(xml, file, "", StandardCharsets.UTF_16LE);
    assertArrayEquals("größer\n".getBytes(StandardCharsets.UTF_16LE), Files.readAllBytes(file));
  }

  @Test
  void saysWhichCharacterACharsetLacks() throws IOException {
    Path file = folder.resolve("ascii.txt");
    Files.writeString(file, "before");
    String xml = Documents.xml("<paragraph>a ≥ b</paragraph>");
    String message = assertThrows(ChartException.class,
        () -> Documents.export(xml, file, ",\"charset\":\"US-ASCII\"")).getMessage();
    assertEquals("the charset US-ASCII lacks the character \"≥\" (U+2265); another \"charset\","
        + " such as UTF-8, has it", message);
    assertEquals("before", Files.readString(file));
  }

  @Test
  void writesTablesAsCsv() throws IOException {
    assertEquals("Name,Both,\r\n\"\",Left,Right\r\na,1.5,\"x, \"\"y\"\"\"\r\n"
        + "b,\"22\n33\",\r\n", csv(Documents.everything(), ""));
  }

  @Test
  void writesSeveralTablesWithAnEmptyLineBetween() throws IOException {
    String xml = Documents.xml("<table><row><cell>1</cell></row></table><table><row>"
        + "<cell>2</cell></row></table>");
    assertEquals("1\r\n\r\n2\r\n", csv(xml, ""));
    assertEquals("2\r\n", csv(xml, ",\"table\":2"));
    assertEquals("there is no table 3; the document has 2 tables", assertThrows(
        ChartException.class, () -> csv(xml, ",\"table\":3")).getMessage());
    assertEquals("the document has no table to write as CSV", assertThrows(ChartException.class,
        () -> csv(Documents.xml("<page-break/>"), "")).getMessage());
  }

  /** A broken chart does not keep anybody from the tables. */
  @Test
  void readsNoChartsForCsv() throws IOException {
    assertFalse(csv(Documents.xml("<chart><description>draw bor</description></chart>"
        + "<table><row><cell>1</cell></row></table>"), "").isEmpty());
  }
}
