// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.List;
import java.util.Random;
import org.apache.commons.csv.CSVFormat;
import org.apache.commons.csv.CSVParser;
import org.apache.commons.csv.CSVPrinter;
import org.apache.commons.csv.CSVRecord;
import org.apache.commons.csv.QuoteMode;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.junit.jupiter.api.Test;

/** Random tables, written and read by Apache Commons CSV, must read the same here. */
class CsvAgainstLibraryTest {
  private static final String[] PIECES = {"a", "\"", ",", "\n", "\r\n", " ", "\u00e4",
      "\u65e5\u672c", "\uD83D\uDCC8", "NA", "1.5", "'"};

  @Test
  void readsWhatTheLibraryWrites() throws IOException {
    Random random = new Random(20240229);
    for (int round = 0; round < 300; round++) {
      int columns = 2 + random.nextInt(4);
      String csv = randomCsv(random, columns, random.nextInt(40));
      try (CSVParser expected = CSVParser.parse(csv, CSVFormat.RFC4180)) {
        List<CSVRecord> records = expected.getRecords();
        Table table = CsvReader.read(buffer(csv, round), labels(columns), null);
        assertEquals(records.size() - 1, table.rowCount(), csv);
        for (int row = 0; row < table.rowCount(); row++) {
          for (int column = 0; column < columns; column++) {
            assertEquals(
                records.get(row + 1).get(column), table.column("c" + column).text(row), csv);
          }
        }
      }
    }
  }

  private static String randomCsv(Random random, int columns, int rows) throws IOException {
    StringBuilder csv = new StringBuilder();
    CSVFormat format = CSVFormat.RFC4180.builder()
                           .setQuoteMode(random.nextBoolean() ? QuoteMode.ALL : QuoteMode.MINIMAL)
                           .setRecordSeparator(random.nextBoolean() ? "\n" : "\r\n")
                           .build();
    try (CSVPrinter printer = new CSVPrinter(csv, format)) {
      List<String> record = new ArrayList<>();
      for (int column = 0; column < columns; column++) {
        record.add("c" + column);
      }
      printer.printRecord(record);
      for (int row = 0; row < rows; row++) {
        record.clear();
        for (int column = 0; column < columns; column++) {
          record.add(randomText(random));
        }
        printer.printRecord(record);
      }
    }
    return csv.toString();
  }

  /** Never NA by itself, which is missing here and a text for the library. */
  private static String randomText(Random random) {
    StringBuilder text = new StringBuilder();
    for (int i = random.nextInt(6); i > 0; i--) {
      text.append(PIECES[random.nextInt(PIECES.length)]);
    }
    return text.toString().equals("NA") ? "" : text.toString();
  }

  private static ByteBuffer buffer(String csv, int round) {
    byte[] bytes = csv.getBytes(UTF_8);
    ByteBuffer buffer = round % 2 == 0 ? ByteBuffer.allocate(bytes.length)
                                       : ByteBuffer.allocateDirect(bytes.length);
    return buffer.put(bytes).flip();
  }

  private static List<ColumnDeclaration> labels(int columns) {
    List<ColumnDeclaration> labels = new ArrayList<>();
    for (int column = 0; column < columns; column++) {
      labels.add(new ColumnDeclaration("c" + column, ColumnKind.CATEGORY, null, null, List.of()));
    }
    return labels;
  }
}
