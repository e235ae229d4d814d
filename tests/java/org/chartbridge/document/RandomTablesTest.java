// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Random;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Whatever is in a table: its numbers and dates stay whole, and its columns stay on the page. */
class RandomTablesTest {
  private static final int TABLES = 60;
  private static final double MARGIN = 25 * 72 / 25.4;
  private static final Pattern PAGE = Pattern.compile("<page width=\"([0-9.]+)\"");
  private static final Pattern WORD = Pattern.compile(
      "<word xMin=\"([0-9.-]+)\" yMin=\"[0-9.-]+\""
      + " xMax=\"([0-9.-]+)\" yMax=\"[0-9.-]+\">(.*)</word>");

  @TempDir Path folder;

  private final Random random = new Random(20241121);
  private final Map<String, Integer> numbers = new LinkedHashMap<>();

  private String number() {
    long value = (long) Math.pow(10, random.nextDouble() * 12);
    String text = switch (random.nextInt(6)) {
      case 0 -> String.format(Locale.ROOT, "%,d", value);
      case 1 -> String.format(Locale.ROOT, "-%,.2f", value / 100.0);
      case 2 -> String.format("%04d-%02d-%02d", 1900 + random.nextInt(200), 1 + random.nextInt(12),
          1 + random.nextInt(28));
      case 3 -> String.format(Locale.ROOT, "%02d/%02d/%d", 1 + random.nextInt(12),
          1 + random.nextInt(28), 1900 + random.nextInt(200));
      case 4 -> String.format(Locale.ROOT, "%.4e", value * random.nextDouble());
      default -> random.nextInt(28) + 1 + "-Mar-" + (1900 + random.nextInt(200));
    };
    numbers.merge(text, 1, Integer::sum);
    return text;
  }

  private String word() {
    StringBuilder word = new StringBuilder();
    for (int parts = 1 + random.nextInt(3); parts > 0; parts--) {
      word.append("abcdefghijklmnopqrstuvwxyz".substring(0, 1 + random.nextInt(12)));
      word.append(parts == 1 ? "" : List.of("_", "-", "/", "").get(random.nextInt(4)));
    }
    return word.toString();
  }

  private String cell() {
    if (random.nextInt(3) > 0) {
      return number();
    }
    StringBuilder text = new StringBuilder(word());
    for (int more = random.nextInt(4); more > 0; more--) {
      text.append(' ').append(random.nextBoolean() ? word() : number());
    }
    String weight = List.of("", "strong", "emphasis", "code").get(random.nextInt(4));
    return weight.isEmpty() ? text.toString() : "<" + weight + ">" + text + "</" + weight + ">";
  }

  private String table() {
    int columns = 1 + random.nextInt(18);
    StringBuilder xml = new StringBuilder("<table caption=\"Some table\">");
    boolean shares = random.nextInt(4) == 0;
    for (int i = 0; i < columns; i++) {
      xml.append(random.nextBoolean() ? "<column align=\"right\"" : "<column");
      xml.append(shares && i % 2 == 0 ? " width=\"" + (1 + random.nextInt(30)) + "\"/>" : "/>");
    }
    xml.append("<header>").append(row(columns, true)).append("</header>");
    for (int rows = 1 + random.nextInt(4); rows > 0; rows--) {
      xml.append(row(columns, false));
    }
    return xml.append("</table>").toString();
  }

  private String row(int columns, boolean spans) {
    StringBuilder xml = new StringBuilder("<row>");
    int column = 0;
    while (column < columns) {
      int span = spans && random.nextInt(4) == 0 ? Math.min(2, columns - column) : 1;
      xml.append("<cell colspan=\"").append(span).append("\">").append(cell()).append("</cell>");
      column += span;
    }
    return xml.append("</row>").toString();
  }

  private String document() {
    StringBuilder body = new StringBuilder();
    for (int i = 0; i < TABLES; i++) {
      body.append(table());
    }
    return Documents.xml(" language=\"en\"", body.toString());
  }

  private static String bounds(Path pdf) throws IOException, InterruptedException {
    Process process = new ProcessBuilder("pdftotext", "-bbox", pdf.toString(), "-").start();
    String text = new String(process.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
    assertEquals(0, process.waitFor());
    return text;
  }

  @Test
  void pagesKeepThemWhole() throws Exception {
    String xml = document();
    Path pdf = folder.resolve("out.pdf");
    Documents.export(xml, pdf, "");
    double width = 0;
    List<String> beyond = new ArrayList<>();
    Map<String, Integer> found = new LinkedHashMap<>();
    String written = "";
    double end = -1;
    for (String line : bounds(pdf).split("\n")) {
      Matcher page = PAGE.matcher(line);
      if (page.find()) {
        width = Double.parseDouble(page.group(1));
      }
      Matcher word = WORD.matcher(line);
      if (word.find()) {
        // Words that touch are one word, of pieces that are held together.
        double start = Double.parseDouble(word.group(1));
        if (Math.abs(start - end) > 0.01) {
          found.merge(written, 1, Integer::sum);
          written = "";
        }
        written += word.group(3);
        end = Double.parseDouble(word.group(2));
        boolean inside = start >= MARGIN - 1
            && Double.parseDouble(word.group(2)) <= width - MARGIN + 1;
        if (!inside) {
          beyond.add(line.strip());
        }
      }
    }
    found.merge(written, 1, Integer::sum);
    assertEquals(List.of(), beyond);
    assertWhole(found);
  }

  @Test
  void textKeepsThemWhole() throws Exception {
    String xml = document();
    Path file = folder.resolve("out.txt");
    Documents.export(xml, file, "");
    Map<String, Integer> found = new LinkedHashMap<>();
    for (String line : Files.readAllLines(file)) {
      assertTrue(line.length() <= 80, line);
      for (String word : line.split("[ |]+")) {
        found.merge(word, 1, Integer::sum);
      }
    }
    assertWhole(found);
  }

  /** Columns that are repeated in parts make numbers come more often than they were written. */
  private void assertWhole(Map<String, Integer> found) {
    assertTrue(numbers.size() > 500);
    List<String> broken = new ArrayList<>();
    numbers.forEach((number, count) -> {
      if (found.getOrDefault(number, 0) < count) {
        broken.add(number);
      }
    });
    assertEquals(List.of(), broken);
  }
}
