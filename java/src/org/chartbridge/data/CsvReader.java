// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;

/**
 * Reads CSV data (RFC 4180, UTF-8, the column names in the first record) into a {@link Table}. Only
 * the columns that are asked for are decoded. A column that is not declared is read by what it
 * holds: numbers when every value is one, else times when every value is an ISO 8601 one, else
 * labels.
 *
 * <p>An empty field is missing, and so is NA; in quotes, NA is missing among numbers and times and
 * a label like any other among labels. Every mistake in the data is a {@link ChartException} that
 * names the line and the column.
 */
public final class CsvReader {
  /** So much of a wrong value is told. */
  private static final int MAX_SHOWN = 40;

  private final ByteBuffer data;
  private final Map<String, ColumnDeclaration> declarations = new HashMap<>();
  private final Set<String> wanted;

  private CsvTokenizer fields;
  private List<String> names;
  /** The names with their positions; searching the list for each would take their square. */
  private Map<String, Integer> positions;
  /** By position in the header; null for a column that nobody asked for. */
  private ColumnBuilder[] builders;

  private int rowCount;

  private CsvReader(ByteBuffer data, List<ColumnDeclaration> declarations, Set<String> wanted) {
    this.data = data;
    this.wanted = wanted;
    for (ColumnDeclaration declaration : declarations) {
      this.declarations.put(declaration.name(), declaration);
    }
  }

  /** Reads all columns, each by what it holds. */
  public static Table read(byte[] data) {
    return read(ByteBuffer.wrap(data), List.of(), null);
  }

  /**
   * @param data the bytes from the buffer's position to its limit, direct or not; the buffer itself
   *     is left as it is
   * @param declarations what is known about columns; those of other columns are ignored
   * @param wanted the names of the columns to read, or null for all of them
   * @throws ChartException when the data are malformed or lack a wanted column
   */
  public static Table read(
      ByteBuffer data, List<ColumnDeclaration> declarations, Set<String> wanted) {
    return new CsvReader(data, declarations, wanted).read();
  }

  private Table read() {
    openAndReadHeader();
    checkWanted();
    builders = new ColumnBuilder[names.size()];
    for (int i = 0; i < builders.length; i++) {
      String name = names.get(i);
      if (wanted == null || wanted.contains(name)) {
        builders[i] = firstBuilder(name);
      }
    }
    // A value that does not fit what the column seemed to be changes its kind and starts the rows
    // again. That mostly happens within the first rows, and at most twice for a column.
    while (!readRows()) {
      openAndReadHeader();
    }
    List<Column> columns = new ArrayList<>();
    for (ColumnBuilder builder : builders) {
      if (builder != null) {
        columns.add(builder.build());
      }
    }
    return new Table(columns, rowCount);
  }

  private void openAndReadHeader() {
    fields = new CsvTokenizer(data);
    names = new ArrayList<>();
    positions = new HashMap<>();
    while (fields.next()) {
      checkForm(names.size());
      String name = columnName(names.size());
      positions.put(name, names.size());
      names.add(name);
      if (fields.endsRecord()) {
        return;
      }
    }
    throw new ChartException("The data are empty; the first line must name the columns.");
  }

  private String columnName(int index) {
    int invalid = Utf8.firstInvalid(fields.bytes(), fields.from(), fields.to());
    if (invalid >= 0) {
      throw new ChartException(
          "CSV line " + fields.line() + ", field " + (index + 1) + ": " + notUtf8(invalid));
    }
    String name = Utf8.decode(fields.bytes(), fields.from(), fields.to());
    if (name.isBlank()) {
      throw new ChartException("CSV line " + fields.line() + ": field " + (index + 1)
          + " of the header is empty; every column needs a name.");
    }
    Integer first = positions.get(name);
    if (first != null) {
      throw new ChartException("CSV line " + fields.line() + ": the column name \"" + name
          + "\" stands twice in the header, in fields " + (first + 1) + " and " + (index + 1)
          + ".");
    }
    return name;
  }

  private void checkWanted() {
    if (wanted == null) {
      return;
    }
    for (String name : wanted) {
      if (!positions.containsKey(name)) {
        throw Table.missingColumn(name, names);
      }
    }
  }

  private ColumnBuilder firstBuilder(String name) {
    ColumnDeclaration declaration = declarations.get(name);
    boolean declared = declaration != null && declaration.kind() != null;
    return builder(name, declared ? declaration.kind() : ColumnKind.NUMBER);
  }

  private ColumnBuilder builder(String name, ColumnKind kind) {
    ColumnDeclaration declaration = declarations.get(name);
    return switch (kind) {
      case NUMBER -> new NumberBuilder(name);
      case TIME -> new TimeBuilder(name, declaration == null ? null : declaration.pattern());
      case CATEGORY ->
          new CategoryBuilder(name, declaration == null ? List.of() : declaration.order());
    };
  }

  /** Reads all rows; false when a column turned out to be of another kind. */
  private boolean readRows() {
    rowCount = 0;
    while (fields.next()) {
      if (names.size() > 1 && fields.isBlank() && fields.endsRecord()) {
        continue;
      }
      int misfit = readRecord();
      if (misfit >= 0) {
        changeKind(misfit);
        return false;
      }
      rowCount++;
    }
    return true;
  }

  /**
   * Reads the record whose first field is the current one; gives a column that its field does not
   * fit, or -1.
   */
  private int readRecord() {
    int line = fields.line();
    int misfit = -1;
    ChartException error = null;
    int index = 0;
    for (;; index++) {
      checkForm(index);
      ColumnBuilder builder = index < builders.length ? builders[index] : null;
      if (builder != null && misfit < 0
          && !builder.add(fields.bytes(), fields.from(), fields.to(), fields.quoted())) {
        misfit = index;
        error = misfitError(index);
      }
      if (fields.endsRecord()) {
        break;
      }
      fields.next();
    }
    // A missing or an extra comma shifts the fields, so this mistake is told first.
    checkFieldCount(line, index + 1);
    if (error != null && !isInferred(misfit)) {
      throw error;
    }
    return misfit;
  }

  private boolean isInferred(int index) {
    ColumnDeclaration declaration = declarations.get(names.get(index));
    return (declaration == null || declaration.kind() == null)
        && builders[index].kind() != ColumnKind.CATEGORY;
  }

  private void changeKind(int misfit) {
    for (int i = 0; i < builders.length; i++) {
      if (builders[i] == null) {
        continue;
      }
      ColumnKind kind = builders[i].kind();
      if (i == misfit) {
        kind = kind == ColumnKind.NUMBER ? ColumnKind.TIME : ColumnKind.CATEGORY;
      }
      builders[i] = builder(names.get(i), kind);
    }
  }

  private void checkFieldCount(int line, int count) {
    int expected = names.size();
    if (count < expected) {
      throw new ChartException("CSV line " + line + " has " + fieldCount(count)
          + " where the header names " + expected + " columns; the field of column \""
          + names.get(count) + "\" is missing.");
    }
    if (count > expected) {
      throw new ChartException("CSV line " + line + " has " + fieldCount(count)
          + " where the header names " + (expected == 1 ? "1 column" : expected + " columns")
          + "; nothing may follow column \"" + names.get(expected - 1)
          + "\" (a text with a comma needs quotes around it).");
    }
  }

  private static String fieldCount(int count) {
    return count == 1 ? "1 field" : count + " fields";
  }

  private void checkForm(int index) {
    String problem =
        switch (fields.fault()) {
          case NONE -> null;
          case UNCLOSED_QUOTE -> "the quote that opens here is never closed.";
          case TEXT_AFTER_QUOTE ->
              "after the closing quote a comma or the end of the line is expected; a quote within"
                  + " a quoted text must be doubled.";
          case QUOTE_IN_TEXT ->
              "a quote stands within an unquoted text; put the whole text in quotes and double"
                  + " each quote in it.";
          case TOO_LONG -> "the field is longer than 16 MB; perhaps a quote is not closed.";
        };
    if (problem != null) {
      throw new ChartException(place(index) + problem);
    }
  }

  private ChartException misfitError(int index) {
    int invalid = Utf8.firstInvalid(fields.bytes(), fields.from(), fields.to());
    if (invalid >= 0) {
      return new ChartException(place(index) + notUtf8(invalid));
    }
    String found = Utf8.decode(fields.bytes(), fields.from(), fields.to());
    return new ChartException(
        place(index) + "found \"" + shortened(found) + "\" where "
            + builders[index].expectation() + ".");
  }

  private String notUtf8(int index) {
    return String.format(
        "the byte 0x%02X is not UTF-8; the data must be saved as UTF-8.",
        fields.bytes()[index] & 0xFF);
  }

  private static String shortened(String text) {
    return text.length() <= MAX_SHOWN ? text : text.substring(0, MAX_SHOWN) + "...";
  }

  /** Where the current field is, as the start of a message. */
  private String place(int index) {
    String column =
        index < names.size() ? "column \"" + names.get(index) + "\"" : "field " + (index + 1);
    return "CSV line " + fields.line() + ", " + column + ": ";
  }
}
