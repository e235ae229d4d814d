// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.io.IOException;
import java.io.OutputStream;
import java.util.Arrays;
import java.util.List;
import org.apache.commons.csv.CSVFormat;
import org.apache.commons.csv.CSVPrinter;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;

/**
 * Writes the tables of a document as CSV (RFC 4180), with an empty line between two tables. The
 * text of a cell stands in the first of the places that it covers; the others are empty.
 */
public final class CsvTables implements DocumentWriter {
  @Override
  public void write(Document document, ExportSettings settings, OutputStream out)
      throws IOException {
    List<Table> tables = chosen(document.tables(), settings.table());
    StringBuilder text = new StringBuilder();
    for (Table table : tables) {
      if (text.length() > 0) {
        text.append("\r\n");
      }
      try (CSVPrinter printer = new CSVPrinter(text, CSVFormat.RFC4180)) {
        print(table, printer);
      }
    }
    EncodedText.write(text.toString(), settings.charset(), out);
  }

  private static List<Table> chosen(List<Table> tables, int number) {
    if (tables.isEmpty()) {
      throw new ChartException("the document has no table to write as CSV");
    }
    if (number > tables.size()) {
      throw new ChartException("there is no table " + number + "; the document has "
          + (tables.size() == 1 ? "one table" : tables.size() + " tables"));
    }
    return number == 0 ? tables : List.of(tables.get(number - 1));
  }

  private static void print(Table table, CSVPrinter printer) throws IOException {
    for (List<Table.Cell> row : table.rows()) {
      String[] fields = new String[table.columns().size()];
      Arrays.fill(fields, "");
      for (Table.Cell cell : row) {
        fields[cell.column()] = PlainText.of(cell.text(), '\n');
      }
      printer.printRecord((Object[]) fields);
    }
  }
}
