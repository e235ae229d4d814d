// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.time.LocalDate;
import org.chartbridge.chart.ChartException;
import org.chartbridge.data.CsvReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** How rows, texts and links are written. */
class WritingTest {
  private static final String TEXT = "\u00fc \u20ac \u0394 \ud83d\ude00 \"\\\n";

  private static String written(String codepage, boolean data) throws IOException {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    JsonNode node = Json.object("t", TEXT);
    if (data) {
      JsonText.in(codepage).writeData(node, bytes);
    } else {
      JsonText.in(codepage).writeDocument(node, bytes);
    }
    Charset charset = codepage.isEmpty() ? StandardCharsets.UTF_8 : Charset.forName(codepage);
    return bytes.toString(charset);
  }

  @ParameterizedTest
  @CsvSource({"UTF-8", "windows-1252", "ISO-8859-1", "US-ASCII", "UTF-16", "IBM1047", "Shift_JIS"})
  void nothingIsLostInAnyCharset(String codepage) throws IOException {
    assertEquals(TEXT, new ObjectMapper().readTree(written(codepage, false)).get("t").asText());
    assertEquals(TEXT, new ObjectMapper().readTree(written(codepage, true)).get("t").asText());
  }

  @Test
  void whatFitsACharsetIsNotEscaped() throws IOException {
    assertTrue(written("", false).contains("\u00fc \u20ac \u0394 \ud83d\ude00"));
    assertTrue(written("windows-1252", false).contains("\u00fc \u20ac \\u0394 \\ud83d\\ude00"));
    assertTrue(written("ISO-8859-1", false).contains("\u00fc \\u20ac \\u0394"));
    assertTrue(written("US-ASCII", false).contains("\\u00fc \\u20ac"));
    assertTrue(written("ISO-8859-1", true).contains("\\u00fc \\u20ac"),
        "viewers take data for UTF-8");
    assertTrue(written("UTF-8", true).contains("\u00fc \u20ac"));
  }

  @Test
  void halfACharacterIsEscaped() throws IOException {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    try (EscapingWriter writer = new EscapingWriter(bytes, StandardCharsets.UTF_8, false)) {
      writer.write("a\ud83db\ude00c\ud83d\ude00");
    }
    assertEquals("a\\ud83db\\ude00c\ud83d\ude00", bytes.toString(StandardCharsets.UTF_8));
  }

  @ParameterizedTest
  @CsvSource({"utf-42", "'?'", "x-JISAutoDetect", "ISO-2022-CN"})
  void codepagesThatDoNotDoAreNamed(String codepage) {
    String message = assertThrows(ChartException.class, () -> JsonText.in(codepage)).getMessage();
    assertTrue(message.contains("\"" + codepage + "\""), message);
  }

  @Test
  void rowsAreTyped() throws IOException {
    byte[] csv = """
        n,t,c,m
        1,2024-01-31,x,2024-01-31T10:30
        2.5,,"a ""b"" c",
        ,0099-02-03,,2024-01-31T10:30:01.250
        -1e20,9999-12-31,NA,1969-12-31T23:59:59.999
        """.getBytes(StandardCharsets.UTF_8);
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    JsonText.in("").writeData(new DataRows(CsvReader.read(csv)), bytes);
    assertEquals("""
        [
        {"n":1,"t":"2024-01-31","c":"x","m":"2024-01-31T10:30:00.000Z"},
        {"n":2.5,"t":null,"c":"a \\"b\\" c","m":null},
        {"n":null,"t":"0099-02-03","c":null,"m":"2024-01-31T10:30:01.250Z"},
        {"n":-1.0E20,"t":"9999-12-31","c":null,"m":"1969-12-31T23:59:59.999Z"}]
        """, bytes.toString(StandardCharsets.UTF_8));
  }

  @Test
  void yearsBeyondFourDigitsAreWrittenForEcmaScript() {
    assertEquals("+012000-01-01", DataRows.time(millis(LocalDate.of(12000, 1, 1))));
    assertEquals("-000001-12-31", DataRows.time(millis(LocalDate.of(-1, 12, 31))));
  }

  private static double millis(LocalDate date) {
    return date.toEpochDay() * 86_400_000.0;
  }

  @ParameterizedTest
  @CsvSource({
      "/a/chart.json,/a/data.json,data.json",
      "/a/b/chart.json,/a/data/x.json,../data/x.json",
      "/a/chart.json,/a/my data#1?.json,my%20data%231%3F.json",
      "/a/chart.json,/a/50%.json,50%25.json",
      "/a/chart.json,/a/d:1.json,./d:1.json",
      "/a/chart.json,/a/\u00fc.json,%C3%BC.json",
      "chart.json,./x/../data.json,data.json",
  })
  void dataAreReferredToByARelativeUrl(String document, String data, String url) {
    assertEquals(url, DataLink.between(Path.of(document), Path.of(data)));
  }

  @Test
  void dataNeedAFileOfTheirOwn() {
    ChartException e = assertThrows(ChartException.class,
        () -> DataLink.between(Path.of("/a/c.json"), Path.of("/a/b/../c.json")));
    assertTrue(e.getMessage().contains("is the chart's own file"), e.getMessage());
  }

  @Test
  void textsAreLiterals() {
    assertEquals("'a\\'b\\\\c\\u000ad\\u2028'", Expr.text("a'b\\c\nd\u2028"));
    assertEquals("['x', 2, 2.5]", Expr.list(java.util.List.of("x", 2.0, 2.5)));
    assertArrayEquals(new String[] {"3", "-0.125", "1.0E20"},
        new String[] {Expr.number(3), Expr.number(-0.125), Expr.number(1e20)});
  }
}
