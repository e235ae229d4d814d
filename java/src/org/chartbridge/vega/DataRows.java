// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import com.fasterxml.jackson.databind.JsonSerializable;
import com.fasterxml.jackson.databind.SerializerProvider;
import com.fasterxml.jackson.databind.jsontype.TypeSerializer;
import java.io.IOException;
import java.io.StringWriter;
import java.time.Instant;
import java.time.LocalDateTime;
import java.time.ZoneOffset;
import java.time.format.DateTimeFormatter;
import java.time.format.DateTimeFormatterBuilder;
import java.time.format.SignStyle;
import java.time.temporal.ChronoField;
import java.util.Locale;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;

/**
 * The rows of a table as a JSON array of objects: numbers as numbers, times as ISO 8601 texts in
 * UTC, categories as texts, missing values as null. They are written row by row and never held as
 * JSON as a whole.
 */
final class DataRows implements JsonSerializable {
  private static final JsonFactory FACTORY = new JsonFactory();
  private static final double DAY = 86_400_000;
  private static final double LARGEST_WHOLE = 1e15;
  /** ECMAScript reads years of four digits, or of six digits with a sign. */
  private static final DateTimeFormatter DATE = date(4).toFormatter(Locale.ROOT);
  private static final DateTimeFormatter LONG_DATE = date(6).toFormatter(Locale.ROOT);
  private static final DateTimeFormatter CLOCK =
      DateTimeFormatter.ofPattern("'T'HH:mm:ss.SSS'Z'", Locale.ROOT);

  private final Table table;

  DataRows(Table table) {
    this.table = table;
  }

  private static DateTimeFormatterBuilder date(int digits) {
    SignStyle sign = digits == 4 ? SignStyle.NEVER : SignStyle.ALWAYS;
    return new DateTimeFormatterBuilder()
        .appendValue(ChronoField.YEAR, digits, digits, sign)
        .appendPattern("-MM-dd");
  }

  @Override
  public void serialize(JsonGenerator json, SerializerProvider provider) throws IOException {
    json.writeStartArray();
    StringWriter text = new StringWriter();
    try (JsonGenerator line = FACTORY.createGenerator(text)) {
      // A line for each row, however the rest is laid out.
      line.setRootValueSeparator(null);
      for (int row = 0; row < table.rowCount(); row++) {
        text.append('\n');
        write(line, row);
        line.flush();
        json.writeRawValue(text.toString());
        text.getBuffer().setLength(0);
      }
    }
    json.writeEndArray();
  }

  private void write(JsonGenerator json, int row) throws IOException {
    json.writeStartObject();
    for (Column column : table.columns()) {
      json.writeFieldName(column.name());
      write(json, column, row);
    }
    json.writeEndObject();
  }

  @Override
  public void serializeWithType(JsonGenerator json, SerializerProvider provider,
      TypeSerializer type) throws IOException {
    serialize(json, provider);
  }

  private static void write(JsonGenerator json, Column column, int row) throws IOException {
    if (column.isMissing(row)) {
      json.writeNull();
      return;
    }
    switch (column.kind()) {
      case CATEGORY -> json.writeString(column.categories().get(column.category(row)));
      case TIME -> json.writeString(time(column.number(row)));
      case NUMBER -> {
        double value = column.number(row);
        if (value == Math.rint(value) && Math.abs(value) < LARGEST_WHOLE) {
          json.writeNumber((long) value);
        } else {
          json.writeNumber(value);
        }
      }
    }
  }

  /** A date where the time is midnight, which ECMAScript reads in UTC, else date and time. */
  static String time(double millis) {
    LocalDateTime time =
        LocalDateTime.ofInstant(Instant.ofEpochMilli((long) millis), ZoneOffset.UTC);
    boolean usual = time.getYear() >= 0 && time.getYear() <= 9999;
    String date = (usual ? DATE : LONG_DATE).format(time);
    return millis % DAY == 0 ? date : date + CLOCK.format(time);
  }
}
