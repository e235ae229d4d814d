// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.core.JsonToken;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.json.SafeJson;
import org.chartbridge.xml.XmlEncoding;

/** Reads JSON (RFC 8259), strictly and with the places of all values. */
final class JsonReader {
  private static final int MAX_BYTES = 16 << 20;

  private static final JsonFactory FACTORY =
      SafeJson.factory().enable(JsonParser.Feature.STRICT_DUPLICATE_DETECTION);

  private final String source;
  private final JsonParser parser;

  private JsonReader(String source, JsonParser parser) {
    this.source = source;
    this.parser = parser;
  }

  /**
   * The values of a text that stand behind each other, mostly just one.
   *
   * @param bytes UTF-8
   * @throws ChartException with line and column, when it is not well-formed, nested more than 512
   *     levels deep or larger than 16 MiB
   */
  static List<JsonValue> read(byte[] bytes) {
    if (bytes.length > MAX_BYTES) {
      throw new ChartException(
          "the JSON text has " + bytes.length + " bytes; at most " + MAX_BYTES + " are accepted");
    }
    String source = XmlEncoding.decodeUtf8(bytes);
    try (JsonParser parser = FACTORY.createParser(source)) {
      return new JsonReader(source, parser).values();
    } catch (JsonProcessingException e) {
      throw malformed(source, e);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
  }

  private static ChartException malformed(String source, JsonProcessingException e) {
    JsonLocation location = e.getLocation();
    long offset = location == null ? source.length() : location.getCharOffset();
    int place = (int) Math.max(0, Math.min(source.length(), offset));
    String message = SafeJson.reason(e, "not well-formed JSON: ");
    return new ChartException(TextPosition.of(source, place) + ": "
            + message.replaceAll(" \\(code \\d+[^)]*\\)", ""),
        e);
  }

  private List<JsonValue> values() throws IOException {
    List<JsonValue> values = new ArrayList<>();
    while (parser.nextToken() != null) {
      values.add(value());
    }
    return values;
  }

  private JsonValue value() throws IOException {
    int offset = (int) parser.getTokenLocation().getCharOffset();
    JsonToken token = parser.currentToken();
    return switch (token) {
      case START_OBJECT -> object(offset);
      case START_ARRAY -> array(offset);
      case VALUE_STRING -> scalar(offset, JsonValue.Kind.TEXT);
      case VALUE_NUMBER_INT, VALUE_NUMBER_FLOAT -> scalar(offset, JsonValue.Kind.NUMBER);
      case VALUE_TRUE, VALUE_FALSE -> scalar(offset, JsonValue.Kind.BOOLEAN);
      case VALUE_NULL -> JsonValue.scalar(source, offset, JsonValue.Kind.NULL, null);
      default -> throw new IllegalStateException(token.name());
    };
  }

  private JsonValue scalar(int offset, JsonValue.Kind kind) throws IOException {
    return JsonValue.scalar(source, offset, kind, parser.getText());
  }

  private JsonValue object(int offset) throws IOException {
    Map<String, JsonValue> members = new LinkedHashMap<>();
    while (parser.nextToken() != JsonToken.END_OBJECT) {
      String name = parser.currentName();
      parser.nextToken();
      members.put(name, value());
    }
    return new JsonValue(source, offset, JsonValue.Kind.OBJECT, null, List.of(), members);
  }

  private JsonValue array(int offset) throws IOException {
    List<JsonValue> items = new ArrayList<>();
    while (parser.nextToken() != JsonToken.END_ARRAY) {
      items.add(value());
    }
    return new JsonValue(source, offset, JsonValue.Kind.ARRAY, null, items, Map.of());
  }
}
