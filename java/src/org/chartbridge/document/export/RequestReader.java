// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.core.JsonToken;
import java.io.IOException;
import java.nio.charset.Charset;
import java.nio.charset.IllegalCharsetNameException;
import java.nio.charset.UnsupportedCharsetException;
import java.util.Arrays;
import java.util.Collection;
import java.util.HashMap;
import java.util.IllformedLocaleException;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.chart.Words;
import org.chartbridge.document.model.Paper;
import org.chartbridge.draw.Style;
import org.chartbridge.json.SafeJson;

/** Reads requests: JSON objects (docs/document-request.schema.json). */
public final class RequestReader {
  private static final JsonFactory JSON =
      SafeJson.factory().enable(JsonParser.Feature.STRICT_DUPLICATE_DETECTION);

  private static final List<String> TEXTS = List.of("document", "input", "to", "output", "base",
      "language", "style", "paper", "charset");
  private static final List<String> KEYS = Arrays.asList("document", "input", "to", "output",
      "base", "language", "style", "paper", "charset", "table", "release");

  private record Value(Object value, JsonLocation place) {}

  private final Map<String, Value> values = new HashMap<>();

  private RequestReader() {}

  /**
   * @throws ChartException when it is no request; the message says where and what is expected
   */
  public static ExportRequest read(String json) {
    if (json == null || json.isBlank()) {
      throw new ChartException("the request is empty; a JSON object is expected");
    }
    RequestReader reader = new RequestReader();
    try (JsonParser in = JSON.createParser(json)) {
      reader.read(in);
    } catch (JsonProcessingException e) {
      throw new ChartException(
          place(e.getLocation()) + SafeJson.reason(e, "this is not JSON: "), e);
    } catch (IOException e) {
      throw new ChartException("the request cannot be read: " + e.getMessage(), e);
    }
    return reader.request();
  }

  private void read(JsonParser in) throws IOException {
    if (in.nextToken() != JsonToken.START_OBJECT) {
      throw error(in.getTokenLocation(), "a JSON object is expected");
    }
    while (in.nextToken() == JsonToken.FIELD_NAME) {
      String key = in.currentName();
      JsonLocation keyPlace = in.getTokenLocation();
      JsonToken token = in.nextToken();
      if (!KEYS.contains(key)) {
        throw error(keyPlace,
            "there is no option \"" + key + "\"; " + Suggestions.expected(key, KEYS));
      }
      Object value = value(in, token, key);
      values.put(key, new Value(value, in.getTokenLocation()));
    }
    if (in.nextToken() != null) {
      throw error(in.getTokenLocation(), "nothing is expected behind the object");
    }
  }

  private static Object value(JsonParser in, JsonToken token, String key) throws IOException {
    if (token == JsonToken.VALUE_NULL) {
      return null;
    }
    if (TEXTS.contains(key)) {
      if (token != JsonToken.VALUE_STRING) {
        throw error(in.getTokenLocation(), "\"" + key + "\" is a string");
      }
      return in.getText();
    }
    if (key.equals("release")) {
      if (!token.isBoolean()) {
        throw error(in.getTokenLocation(), "\"release\" is true or false");
      }
      return in.getBooleanValue();
    }
    boolean whole = token == JsonToken.VALUE_NUMBER_INT
        && in.getNumberType() == JsonParser.NumberType.INT && in.getIntValue() >= 1;
    if (!whole) {
      throw error(in.getTokenLocation(), "\"" + key + "\" is a whole number from 1");
    }
    return in.getIntValue();
  }

  private ExportRequest request() {
    String document = text("document");
    String input = text("input");
    if (document != null && input != null) {
      throw error("input", "a request names a \"document\" or an \"input\", not both");
    }
    String base = text("base");
    if (base != null && input == null) {
      throw error("base", "\"base\" goes with an \"input\"");
    }
    String output = text("output");
    Target to = target(output);
    if (to == Target.CHECK && output != null) {
      throw error("output", "a check has no \"output\"");
    }
    if (to != Target.CHECK && (output == null || output.isEmpty())) {
      throw new ChartException("the request has no \"output\", the path of the file to write");
    }
    checkFormat(to);
    Value table = values.get("table");
    Value release = values.get("release");
    return new ExportRequest(document, input, to, output, base, language(), style(), paper(),
        charset(), table == null || table.value == null ? 0 : (Integer) table.value,
        release != null && Boolean.TRUE.equals(release.value));
  }

  /** Options that say nothing about the format would be passed over without a word. */
  private void checkFormat(Target to) {
    boolean isText = to == Target.CSV || to == Target.TEXT;
    if (isGiven("table") && to != Target.CSV) {
      throw error("table", "\"table\" goes with \"csv\"; " + to.word() + " has all tables");
    }
    if (isGiven("charset") && !isText) {
      throw error("charset", "\"charset\" goes with \"csv\" and \"text\"; " + to.word()
          + " has its own encoding");
    }
  }

  private boolean isGiven(String key) {
    Value value = values.get(key);
    return value != null && value.value != null;
  }

  private String text(String key) {
    Value value = values.get(key);
    return value == null ? null : (String) value.value;
  }

  private Target target(String output) {
    String word = text("to");
    if (word == null) {
      Target target = output == null ? null : Target.ofFile(output);
      if (target == null) {
        throw new ChartException("the request has no \"to\", and the output's ending does not say"
            + " it either; " + Suggestions.oneOf(Target.words()));
      }
      return target;
    }
    Target target = Target.named(word);
    if (target == null) {
      throw unknown("to", word, Target.words());
    }
    return target;
  }

  private Locale language() {
    String tag = text("language");
    if (tag == null) {
      return null;
    }
    try {
      return new Locale.Builder().setLanguageTag(tag.strip().replace('_', '-')).build();
    } catch (IllformedLocaleException e) {
      throw error("language",
          "the language \"" + tag + "\" is no BCP 47 tag; expected one such as de or pt-BR");
    }
  }

  private String style() {
    String style = text("style");
    if (style != null && !Style.NAMES.contains(style)) {
      throw unknown("style", style, Style.NAMES);
    }
    return style;
  }

  private Paper paper() {
    String word = text("paper");
    Paper paper = word == null ? null : Words.find(Paper.class, word);
    if (word != null && paper == null) {
      throw unknown("paper", word, Words.all(Paper.class));
    }
    return paper;
  }

  private Charset charset() {
    String name = text("charset");
    try {
      return name == null ? null : Charset.forName(name);
    } catch (IllegalCharsetNameException | UnsupportedCharsetException e) {
      throw error("charset", "the charset \"" + name + "\" is not known; expected one such as UTF-8"
          + " or ISO-8859-1");
    }
  }

  private ChartException unknown(String key, String found, Collection<String> known) {
    return error(
        key, "\"" + key + "\" is \"" + found + "\"; " + Suggestions.expected(found, known));
  }

  private ChartException error(String key, String message) {
    return error(values.get(key).place, message);
  }

  private static ChartException error(JsonLocation place, String message) {
    return new ChartException(place(place) + message);
  }

  private static String place(JsonLocation place) {
    return place == null
        ? "request: "
        : "request, line " + place.getLineNr() + ", column " + place.getColumnNr() + ": ";
  }
}
