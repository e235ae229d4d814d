// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.bench;

import com.fasterxml.jackson.core.JsonEncoding;
import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;

/** The least that an export of rows as JSON can do: write rows that lie ready. */
public final class RowsFloor {
  private static final JsonFactory JSON = new JsonFactory();

  private static double[] numbers;
  private static String[] groups;

  private RowsFloor() {}

  /** Makes the rows of the CSV data that the chart brings. */
  public static void prepare(int rows) {
    numbers = new double[rows];
    groups = new String[rows];
    for (int i = 0; i < rows; i++) {
      numbers[i] = i * 37 % 1000 / 10.0;
      groups[i] = "group " + i % 7;
    }
  }

  public static void write(String file) throws IOException {
    try (OutputStream out = Files.newOutputStream(Path.of(file));
        JsonGenerator json = JSON.createGenerator(out, JsonEncoding.UTF8)) {
      json.writeStartArray();
      for (int i = 0; i < numbers.length; i++) {
        json.writeStartObject();
        json.writeNumberField("x", (double) i);
        json.writeNumberField("y", numbers[i]);
        json.writeStringField("group", groups[i]);
        json.writeEndObject();
      }
      json.writeEndArray();
    }
  }
}
