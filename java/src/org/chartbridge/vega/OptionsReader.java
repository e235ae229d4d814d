// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.databind.DeserializationFeature;
import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import com.fasterxml.jackson.databind.json.JsonMapper;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.Iterator;
import java.util.List;
import java.util.Locale;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.json.SafeJson;
import org.chartbridge.vega.InteractiveOptions.MapOptions;
import org.chartbridge.vega.InteractiveOptions.Selection;

/** Reads the options of interactive charts (docs/chart-json-options.schema.json). */
public final class OptionsReader {
  static final List<String> PROJECTIONS = List.of("mercator", "equirectangular", "equalEarth",
      "naturalEarth1", "orthographic", "albersUsa");
  private static final List<String> KEYS =
      List.of("tooltips", "zoom", "selection", "data", "map");
  private static final List<String> MAP_KEYS = List.of("projection", "fill", "stroke", "label");
  private static final Pattern COLOR = Pattern.compile("#[0-9a-fA-F]{6}");
  private static final ObjectMapper JSON =
      JsonMapper.builder(SafeJson.factory())
          .enable(DeserializationFeature.FAIL_ON_TRAILING_TOKENS)
          .enable(JsonParser.Feature.STRICT_DUPLICATE_DETECTION)
          .build();

  private OptionsReader() {}

  /**
   * Reads options.
   *
   * @param text a JSON object; null or blank for the defaults
   * @throws ChartException when it is none; the message names the key and what is expected
   */
  public static InteractiveOptions read(String text) {
    if (text == null || text.isBlank()) {
      return InteractiveOptions.DEFAULT;
    }
    JsonNode node = parse(text);
    if (!(node instanceof ObjectNode options)) {
      throw new ChartException("Options: found " + describe(node)
          + ", expected a JSON object such as {\"zoom\": false}.");
    }
    checkKeys("", options, KEYS);
    InteractiveOptions base = InteractiveOptions.DEFAULT;
    String selection =
        choice("", options, "selection", "point", List.of("point", "interval", "none"));
    String data = choice("", options, "data", "separate", List.of("separate", "inline"));
    return new InteractiveOptions(flag(options, "tooltips", base.tooltips()),
        flag(options, "zoom", base.zoom()),
        Selection.valueOf(selection.toUpperCase(Locale.ROOT)),
        data.equals("separate"), map(options.get("map")));
  }

  private static JsonNode parse(String text) {
    try {
      return JSON.readTree(text);
    } catch (JsonProcessingException e) {
      JsonLocation place = e.getLocation();
      String where = place == null ? ""
          : " line " + place.getLineNr() + ", column " + place.getColumnNr() + ":";
      throw new ChartException("Options:" + where + " " + SafeJson.reason(e, "no JSON: ") + ".", e);
    }
  }

  private static MapOptions map(JsonNode node) {
    MapOptions base = InteractiveOptions.DEFAULT.map();
    if (node == null) {
      return base;
    }
    if (!(node instanceof ObjectNode map)) {
      throw wrong("map", node, "a JSON object such as {\"projection\": \"equirectangular\"}");
    }
    checkKeys("map.", map, MAP_KEYS);
    return new MapOptions(choice("map.", map, "projection", base.projection(), PROJECTIONS),
        color(map, "fill"), color(map, "stroke"), text(map, "label"));
  }

  private static void checkKeys(String path, ObjectNode object, List<String> known) {
    Iterator<String> names = object.fieldNames();
    while (names.hasNext()) {
      String name = names.next();
      if (!known.contains(name)) {
        throw new ChartException("Options: there is no option \"" + path + name + "\"; "
            + Suggestions.expected(name, known) + ".");
      }
    }
  }

  private static ChartException wrong(String key, JsonNode found, String expected) {
    return new ChartException("Options: \"" + key + "\" is " + describe(found) + "; expected "
        + expected + ".");
  }

  private static String describe(JsonNode node) {
    if (node.isMissingNode()) {
      return "nothing";
    }
    return node.isContainerNode() ? (node.isArray() ? "a list" : "an object") : node.toString();
  }

  private static boolean flag(ObjectNode object, String key, boolean otherwise) {
    JsonNode value = object.get(key);
    if (value == null) {
      return otherwise;
    }
    if (!value.isBoolean()) {
      throw wrong(key, value, "true or false");
    }
    return value.booleanValue();
  }

  private static String choice(
      String path, ObjectNode object, String key, String otherwise, List<String> choices) {
    JsonNode value = object.get(key);
    if (value == null) {
      return otherwise;
    }
    if (!value.isTextual() || !choices.contains(value.textValue())) {
      throw wrong(path + key, value, "one of " + String.join(", ", choices));
    }
    return value.textValue();
  }

  private static String color(ObjectNode map, String key) {
    String color = text(map, key);
    if (color != null && !COLOR.matcher(color).matches()) {
      throw wrong("map." + key, map.get(key), "a colour such as \"#e4e4e4\"");
    }
    return color;
  }

  private static String text(ObjectNode map, String key) {
    JsonNode value = map.get(key);
    if (value == null) {
      return null;
    }
    if (!value.isTextual() || value.textValue().isBlank()) {
      throw wrong("map." + key, value, "a text");
    }
    return value.textValue();
  }
}
