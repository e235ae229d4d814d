// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class CsvReaderTest {
  private static Table read(String csv) {
    return CsvReader.read(csv.getBytes(UTF_8));
  }

  private static Table read(String csv, ColumnDeclaration... declarations) {
    return CsvReader.read(ByteBuffer.wrap(csv.getBytes(UTF_8)), List.of(declarations), null);
  }

  private static ColumnDeclaration declare(String name, ColumnKind kind) {
    return new ColumnDeclaration(name, kind, null, null, List.of());
  }

  private static List<String> texts(Table table, String column) {
    List<String> texts = new ArrayList<>();
    for (int row = 0; row < table.rowCount(); row++) {
      texts.add(table.column(column).text(row));
    }
    return texts;
  }

  private static String error(String csv, ColumnDeclaration... declarations) {
    return assertThrows(ChartException.class, () -> read(csv, declarations)).getMessage();
  }

  @Test
  void readsNumbersLabelsAndTimesByWhatTheyHold() {
    Table table = read("name,size,day\nAda,1.5,2024-02-29\nBob,-2,2024-03-01\n");
    assertEquals(2, table.rowCount());
    assertEquals(ColumnKind.CATEGORY, table.column("name").kind());
    assertEquals(ColumnKind.NUMBER, table.column("size").kind());
    assertEquals(ColumnKind.TIME, table.column("day").kind());
    assertEquals(List.of("Ada", "Bob"), table.column("name").categories());
    assertEquals(1, table.column("name").category(1));
    assertEquals(1.5, table.column("size").number(0));
    assertEquals(-2, table.column("size").number(1));
    assertEquals(1709164800000.0, table.column("day").number(0));
    assertEquals(List.of("2024-02-29", "2024-03-01"), texts(table, "day"));
  }

  @Test
  void leavesOutColumnsThatNobodyAskedFor() {
    ByteBuffer csv = ByteBuffer.wrap("a,b,c\n1,\"x\ny\",\u00ff3\n4,5,6\n".getBytes(ISO_8859_1));
    Table table = CsvReader.read(csv, List.of(), Set.of("a"));
    assertEquals(1, table.columns().size());
    assertEquals(4, table.column("a").number(1));
  }

  @Test
  void emptyFieldsAndNaAreMissing() {
    Table table = read("n,t,c\n1,2024-01-01,x\n,,\nNA,NA,NA\n\"\",\"\",\"\"\n");
    for (String column : List.of("n", "t", "c")) {
      assertEquals(4, table.column(column).size());
      assertTrue(!table.column(column).isMissing(0));
      for (int row = 1; row < 4; row++) {
        assertTrue(table.column(column).isMissing(row), column + " " + row);
        assertEquals("", table.column(column).text(row));
      }
    }
    assertTrue(Double.isNaN(table.column("n").number(2)));
    assertEquals(-1, table.column("c").category(2));
    assertEquals(List.of("x"), table.column("c").categories());
  }

  @Test
  void quotedNaIsALabelButNoNumber() {
    Table labels = read("country\n\"NA\"\nDE\nNA\n");
    assertEquals(List.of("NA", "DE"), labels.column("country").categories());
    assertTrue(labels.column("country").isMissing(2));
    Table numbers = read("n\n\"1\"\n\"NA\"\n");
    assertEquals(ColumnKind.NUMBER, numbers.column("n").kind());
    assertTrue(numbers.column("n").isMissing(1));
  }

  @Test
  void aColumnWithoutAnyValueCountsAsNumbers() {
    Table table = read("a,b\n,1\nNA,2\n");
    assertEquals(ColumnKind.NUMBER, table.column("a").kind());
    assertTrue(table.column("a").isMissing(0));
  }

  @Test
  void quotedFieldsKeepQuotesCommasAndLineBreaks() {
    Table table =
        read("\"the, name\",b\n\"say \"\"hi\"\", ok\",1\n\"two\r\nlines\",2\n\"\"\"\",3\n");
    assertEquals(List.of("say \"hi\", ok", "two\r\nlines", "\""), texts(table, "the, name"));
    assertEquals(3, table.column("b").number(2));
  }

  @ParameterizedTest
  @ValueSource(strings = {"\n", "\r\n", "\r"})
  void acceptsEveryLineEndWithAndWithoutTheLastOne(String end) {
    String csv = String.join(end, "a,b", "1,x", "2,y");
    for (String last : List.of("", end, end + end)) {
      Table table = read("\uFEFF" + csv + last);
      assertEquals(2, table.rowCount());
      assertEquals(List.of("1", "2"), texts(table, "a"));
      assertEquals(List.of("x", "y"), texts(table, "b"));
    }
  }

  @Test
  void aTrailingCommaAtTheEndIsAnEmptyField() {
    Table table = read("a,b\n1,");
    assertEquals(1, table.rowCount());
    assertTrue(table.column("b").isMissing(0));
  }

  @Test
  void emptyLinesAreMissingValuesOnlyInASingleColumn() {
    assertEquals(2, read("a,b\n1,2\n\n3,4\n\n").rowCount());
    Table single = read("a\n1\n\n3\n");
    assertEquals(3, single.rowCount());
    assertTrue(single.column("a").isMissing(1));
  }

  @Test
  void aHeaderAloneIsATableWithoutRows() {
    Table table = read("a,b");
    assertEquals(0, table.rowCount());
    assertEquals(2, table.columns().size());
    assertEquals(0, table.column("b").size());
  }

  @Test
  void spacesBelongToTextsButNotToNumbers() {
    Table table = read("a,b\n x , 1.5 \n");
    assertEquals(" x ", table.column("a").text(0));
    assertEquals(1.5, table.column("b").number(0));
  }

  @Test
  void readsADirectBufferBetweenPositionAndLimitAndLeavesItAsItIs() {
    byte[] csv = "garbage a,b\n1,x\n2,y\n,garbage".getBytes(UTF_8);
    ByteBuffer buffer = ByteBuffer.allocateDirect(csv.length).put(csv);
    buffer.position(8).limit(csv.length - 9);
    Table table = CsvReader.read(buffer, List.of(), null);
    assertEquals(List.of("1", "2"), texts(table, "a"));
    assertEquals(8, buffer.position());
    assertEquals(csv.length - 9, buffer.limit());
    Table readOnly = CsvReader.read(buffer.asReadOnlyBuffer(), List.of(), null);
    assertEquals(List.of("x", "y"), texts(readOnly, "b"));
  }

  /** Every position of a window's end relative to quotes, line ends and texts. */
  @Test
  void fieldsAcrossTheEndOfTheWindowStayWhole() {
    String tail = "\"a\"\"b\r\nc\",\"\",\u00e4\u20ac,12.5\r\n\"x\",y,z,1\r\n";
    int window = 1 << 16;
    for (int shift = -60; shift <= 4; shift++) {
      String filler = "f".repeat(window + shift - "p,q,r,s\n,1,2,3\n".length());
      Table table = read("p,q,r,s\n" + filler + ",1,2,3\n" + tail);
      assertEquals(3, table.rowCount(), "shift " + shift);
      assertEquals(List.of(filler, "a\"b\r\nc", "x"), texts(table, "p"));
      assertEquals(List.of("1", "", "y"), texts(table, "q"));
      assertEquals(List.of("2", "\u00e4\u20ac", "z"), texts(table, "r"));
      assertEquals(List.of("3", "12.5", "1"), texts(table, "s"));
      assertEquals("CSV line 6 has 1 field where the header names 4 columns; the field of column "
              + "\"q\" is missing.",
          error("p,q,r,s\n" + filler + ",1,2,3\n" + tail + "end\r\n"));
    }
  }

  @Test
  void aFieldMayBeLongerThanTheWindow() {
    String longText = "\""
        + "x,\"\"\n".repeat(60_000) + "\"";
    Table table = read("a,b\n" + longText + ",7\n1,8\n");
    assertEquals("x,\"\n".repeat(60_000), table.column("a").text(0));
    assertEquals(8, table.column("b").number(1));
  }

  @Test
  void aKindThatFailsLateIsReadAgain() {
    StringBuilder csv = new StringBuilder("a,b\n");
    for (int i = 0; i < 5000; i++) {
      csv.append(i).append(",2024-01-01\n");
    }
    Table table = read(csv + "x,y\n");
    assertEquals(ColumnKind.CATEGORY, table.column("a").kind());
    assertEquals(5001, table.column("a").categories().size());
    assertEquals("4999", table.column("a").text(4999));
    assertEquals(List.of("2024-01-01", "y"), table.column("b").categories());
    assertEquals(5001, table.rowCount());
  }

  @Test
  void aDeclaredKindHolds() {
    Table table = read("year,zip\n2001,01067\n2002,01069\n", declare("zip", ColumnKind.CATEGORY),
        declare("year", ColumnKind.TIME), declare("absent", ColumnKind.NUMBER));
    assertEquals(List.of("01067", "01069"), table.column("zip").categories());
    assertEquals(978307200000.0, table.column("year").number(0));
    assertEquals("2002-01-01", table.column("year").text(1));
  }

  @Test
  void declaredCategoriesComeFirstWhetherOrNotTheyOccur() {
    ColumnDeclaration size =
        new ColumnDeclaration("size", ColumnKind.CATEGORY, null, null, List.of("S", "M", "L"));
    Table table = read("size\nXL\nM\nS\nXL\nXS\n", size);
    assertEquals(List.of("S", "M", "L", "XL", "XS"), table.column("size").categories());
    assertEquals(List.of("XL", "M", "S", "XL", "XS"), texts(table, "size"));
  }

  @Test
  void timesOfAPattern() {
    ColumnDeclaration day =
        new ColumnDeclaration("day", ColumnKind.TIME, null, "d MMM uuuu", List.of());
    Table table = read("day\n1 Jan 1970\n2 FEB 2024\nNA\n", day);
    assertEquals(0, table.column("day").number(0));
    assertEquals("2024-02-02", table.column("day").text(1));
    assertTrue(table.column("day").isMissing(2));
    ColumnDeclaration month =
        new ColumnDeclaration("m", ColumnKind.TIME, null, "MM/uuuu", List.of());
    assertEquals("1999-12-01", read("m\n12/1999\n", month).column("m").text(0));
    ColumnDeclaration moment =
        new ColumnDeclaration("t", ColumnKind.TIME, null, "dd.MM.uuuu HH:mm xxx", List.of());
    assertEquals(
        "2024-01-31 22:30", read("t\n01.02.2024 00:30 +02:00\n", moment).column("t").text(0));
    ColumnDeclaration clock = new ColumnDeclaration("t", ColumnKind.TIME, null, "HH:mm", List.of());
    assertEquals("1970-01-01 08:15", read("t\n08:15\n", clock).column("t").text(0));
  }

  @Test
  void numbersAreWrittenWithoutNoise() {
    Table table = read("n\n12\n-0.5\n1e20\n1e-7\n123456789012\n");
    assertEquals(List.of("12", "-0.5", "1.0E20", "1.0E-7", "123456789012"), texts(table, "n"));
  }

  // ---- what can be wrong ----

  @Test
  void noDataAtAll() {
    assertEquals("The data are empty; the first line must name the columns.", error(""));
    assertEquals("The data are empty; the first line must name the columns.", error("\uFEFF"));
  }

  @Test
  void tooFewFields() {
    assertEquals("CSV line 3 has 2 fields where the header names 3 columns; the field of column "
            + "\"c\" is missing.",
        error("a,b,c\n1,2,3\n4,5\n"));
    assertEquals("CSV line 2 has 1 field where the header names 2 columns; the field of column "
            + "\"b\" is missing.",
        error("a,b\n1"));
  }

  @Test
  void tooManyFields() {
    assertEquals("CSV line 2 has 3 fields where the header names 2 columns; nothing may follow "
            + "column \"b\" (a text with a comma needs quotes around it).",
        error("a,b\nSmith, Jane,3\n"));
    assertEquals("CSV line 2 has 2 fields where the header names 1 column; nothing may follow "
            + "column \"a\" (a text with a comma needs quotes around it).",
        error("a\n1,\n"));
  }

  @Test
  void theFieldCountIsToldBeforeAWrongNumber() {
    assertEquals("CSV line 2 has 3 fields where the header names 2 columns; nothing may follow "
            + "column \"n\" (a text with a comma needs quotes around it).",
        error("name,n\nSmith, Jane,3\n", declare("n", ColumnKind.NUMBER)));
  }

  @Test
  void linesAreCountedAsAnEditorDoes() {
    assertEquals("CSV line 6 has 1 field where the header names 2 columns; the field of column "
            + "\"b\" is missing.",
        error("a,b\r\n\"one\ntwo\r\nthree\",1\n\n4\n"));
  }

  @Test
  void aQuoteThatIsNeverClosed() {
    assertEquals("CSV line 3, column \"b\": the quote that opens here is never closed.",
        error("a,b\n1,2\n3,\"x\n4,5\n6,7\n"));
    assertEquals(
        "CSV line 1, field 2: the quote that opens here is never closed.", error("a,\"b\n1,2\n"));
  }

  @Test
  void textAfterAClosingQuote() {
    assertEquals("CSV line 2, column \"a\": after the closing quote a comma or the end of the line "
            + "is expected; a quote within a quoted text must be doubled.",
        error("a,b\n\"x\"y,2\n"));
  }

  @Test
  void aQuoteWithinAText() {
    assertEquals("CSV line 2, column \"b\": a quote stands within an unquoted text; put the whole "
            + "text in quotes and double each quote in it.",
        error("a,b\n1,5'10\"\n"));
  }

  @Test
  void anEndlessFieldStops() {
    byte[] csv = ("a,b\n1,\""
        + "x".repeat((1 << 24) + 70_000))
                     .getBytes(UTF_8);
    ChartException e = assertThrows(ChartException.class, () -> CsvReader.read(csv));
    assertEquals("CSV line 2, column \"b\": the field is longer than 16 MB; perhaps a quote is not "
            + "closed.",
        e.getMessage());
  }

  @Test
  void headerMistakes() {
    assertEquals("CSV line 1: field 2 of the header is empty; every column needs a name.",
        error("a,,c\n1,2,3\n"));
    assertEquals(
        "CSV line 1: field 1 of the header is empty; every column needs a name.", error("\n1\n"));
    assertEquals("CSV line 1: the column name \"a\" stands twice in the header, in fields 1 and 3.",
        error("a,b,a\n1,2,3\n"));
  }

  @Test
  void aTextInAColumnOfNumbers() {
    assertEquals("CSV line 3, column \"n\": found \"twelve\" where a number such as 12.5 or 1e-3 "
            + "is expected, or nothing or NA where it is missing.",
        error("n,m\n1,2\ntwelve,3\n", declare("n", ColumnKind.NUMBER)));
    assertEquals("CSV line 2, column \"n\": found \""
            + "y".repeat(40) + "...\" where a number such "
            + "as 12.5 or 1e-3 is expected, or nothing or NA where it is missing.",
        error("n\n"
                + "y".repeat(41),
            declare("n", ColumnKind.NUMBER)));
  }

  @Test
  void theFirstOfSeveralWrongValuesIsTold() {
    assertEquals("CSV line 2, column \"n\": found \"x\" where a number such as 12.5 or 1e-3 is "
            + "expected, or nothing or NA where it is missing.",
        error("n,m\nx,y\nz,1\n", declare("n", ColumnKind.NUMBER), declare("m", ColumnKind.NUMBER)));
  }

  @Test
  void aTextInAColumnOfTimes() {
    assertEquals("CSV line 2, column \"t\": found \"2024-13-01\" where an ISO 8601 time such as "
            + "2024-03-31 or 2024-03-31T14:05:00Z is expected, or nothing or NA where it is "
            + "missing.",
        error("t\n2024-13-01\n", declare("t", ColumnKind.TIME)));
    assertEquals("CSV line 2, column \"t\": found \"2024-01-01\" where a time of the pattern "
            + "dd/MM/uuuu is expected, or nothing or NA where it is missing.",
        error("t\n2024-01-01\n",
            new ColumnDeclaration("t", ColumnKind.TIME, null, "dd/MM/uuuu", List.of())));
  }

  @Test
  void aPatternThatIsNone() {
    assertEquals("Column \"t\": \"bad {\" is not a date pattern: Unknown pattern letter: b.",
        error("t\n1\n", new ColumnDeclaration("t", ColumnKind.TIME, null, "bad {", List.of())));
  }

  @Test
  void bytesThatAreNotUtf8() {
    byte[] latin = "name,n\nAda,1\nJos\u00e9,2\n".getBytes(ISO_8859_1);
    ChartException e = assertThrows(ChartException.class, () -> CsvReader.read(latin));
    assertEquals("CSV line 3, column \"name\": the byte 0xE9 is not UTF-8; the data must be saved "
            + "as UTF-8.",
        e.getMessage());
    byte[] header = "a,gr\u00fc\u00dfe\n1,2\n".getBytes(ISO_8859_1);
    e = assertThrows(ChartException.class, () -> CsvReader.read(header));
    assertEquals(
        "CSV line 1, field 2: the byte 0xFC is not UTF-8; the data must be saved as UTF-8.",
        e.getMessage());
    byte[] number = "n\n1\n\u00bd\n".getBytes(ISO_8859_1);
    e = assertThrows(ChartException.class,
        ()
            -> CsvReader.read(
                ByteBuffer.wrap(number), List.of(declare("n", ColumnKind.NUMBER)), null));
    assertEquals("CSV line 3, column \"n\": the byte 0xBD is not UTF-8; the data must be saved as "
            + "UTF-8.",
        e.getMessage());
  }

  @Test
  void utf8SequencesAreCheckedToTheEnd() {
    byte[][] bad = {{(byte) 0xC3}, {(byte) 0xE2, (byte) 0x82}, {(byte) 0xC0, (byte) 0x80},
        {(byte) 0xED, (byte) 0xA0, (byte) 0x80}, {(byte) 0x80}};
    for (byte[] bytes : bad) {
      ByteBuffer csv = ByteBuffer.allocate(16).put("a\nok".getBytes(UTF_8)).put(bytes).flip();
      ChartException e =
          assertThrows(ChartException.class, () -> CsvReader.read(csv, List.of(), null));
      assertTrue(
          e.getMessage().startsWith("CSV line 2, column \"a\": the byte 0x"), e.getMessage());
    }
  }

  @Test
  void aColumnThatIsNotThere() {
    ByteBuffer csv = ByteBuffer.wrap("region,sales\nx,1\n".getBytes(UTF_8));
    ChartException e =
        assertThrows(ChartException.class, () -> CsvReader.read(csv, List.of(), Set.of("salse")));
    assertEquals("The data has no column \"salse\"; its columns are region, sales. "
            + "Did you mean \"sales\"?",
        e.getMessage());
    Table table = read("region,sales\nx,1\n");
    e = assertThrows(ChartException.class, () -> table.column("height"));
    assertEquals(
        "The data has no column \"height\"; its columns are region, sales.", e.getMessage());
  }

  @Test
  void aLongListOfColumnsIsCut() {
    StringBuilder header = new StringBuilder("c1");
    for (int i = 2; i <= 40; i++) {
      header.append(",c").append(i);
    }
    ChartException e =
        assertThrows(ChartException.class, () -> read(header + "\n").column("something else"));
    assertTrue(e.getMessage().endsWith("c29, c30 and 10 more."), e.getMessage());
  }
}
