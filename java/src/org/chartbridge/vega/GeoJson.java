// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.databind.DeserializationFeature;
import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import com.fasterxml.jackson.databind.json.JsonMapper;
import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.io.IOException;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.json.SafeJson;

/**
 * A GeoJSON document (RFC 7946) as features to draw. Rings are turned the way that Vega takes them:
 * it fills what lies to the right of an outer ring, where the standard has it to the left.
 */
public final class GeoJson {
  private static final int MOST_NESTED = 50;
  private static final double MOST_LONGITUDE = 360;
  private static final double MOST_LATITUDE = 90;
  private static final List<String> GEOMETRIES = List.of("Point", "MultiPoint", "LineString",
      "MultiLineString", "Polygon", "MultiPolygon", "GeometryCollection");
  private static final ObjectMapper JSON =
      JsonMapper.builder(SafeJson.factory())
          .enable(DeserializationFeature.FAIL_ON_TRAILING_TOKENS).build();

  private final int number;
  private final ArrayNode features = Json.array();
  private final MapExtent extent = new MapExtent();

  private GeoJson(int number) {
    this.number = number;
  }

  /**
   * Reads a document.
   *
   * @param bytes JSON in UTF-8
   * @param number its number among the documents, from 1, for messages
   * @throws ChartException when it is no GeoJSON; the message says which document, where in it, and
   *     what is expected
   */
  public static GeoJson read(byte[] bytes, int number) {
    GeoJson document = new GeoJson(number);
    document.root(document.parse(bytes == null ? new byte[0] : bytes));
    return document;
  }

  /** The features, ready to be drawn. */
  ArrayNode features() {
    return features;
  }

  /** What the features take of the map. */
  MapExtent extent() {
    return extent;
  }

  private ChartException error(String path, String text) {
    String where = path.isEmpty() ? "" : " " + path + ":";
    return new ChartException("GeoJSON document " + number + ":" + where + " " + text + ".");
  }

  private JsonNode parse(byte[] bytes) {
    try {
      return JSON.readTree(bytes);
    } catch (JsonProcessingException e) {
      JsonLocation place = e.getLocation();
      String where = place == null ? ""
          : "line " + place.getLineNr() + ", column " + place.getColumnNr() + ": ";
      ChartException error = error("", where + SafeJson.reason(e, "no JSON: "));
      error.initCause(e);
      throw error;
    } catch (IOException e) {
      ChartException error = error("", "no text: " + e.getMessage());
      error.initCause(e);
      throw error;
    }
  }

  private void root(JsonNode root) {
    if (!root.isObject()) {
      throw error("", root.isMissingNode() ? "it is empty"
          : "found " + describe(root) + ", expected a JSON object with a \"type\"");
    }
    String type = type("", root);
    if (type.equals("FeatureCollection")) {
      collection(root);
    } else if (type.equals("Feature")) {
      feature("", root);
    } else if (GEOMETRIES.contains(type)) {
      add("", root, Json.object(), 0);
    } else if (type.equals("Topology")) {
      throw error("/type", "this is TopoJSON; convert it to GeoJSON");
    } else {
      throw error("/type", "found \"" + type + "\", expected FeatureCollection, Feature or one of "
          + String.join(", ", GEOMETRIES));
    }
  }

  private String type(String path, JsonNode node) {
    JsonNode type = node.get("type");
    if (type == null || !type.isTextual()) {
      throw error(path + "/type", type == null ? "there is no \"type\""
          : "found " + describe(type) + ", expected a text");
    }
    return type.textValue();
  }

  private static String describe(JsonNode node) {
    if (node.isContainerNode()) {
      return node.isArray() ? "a list" : "an object";
    }
    String text = node.toString();
    return text.length() > 40 ? text.substring(0, 40) + "..." : text;
  }

  private void collection(JsonNode root) {
    JsonNode list = root.get("features");
    if (list == null || !list.isArray()) {
      throw error("/features", "a FeatureCollection has a list of features");
    }
    for (int i = 0; i < list.size(); i++) {
      String path = "/features/" + i;
      if (!list.get(i).isObject() || !type(path, list.get(i)).equals("Feature")) {
        throw error(path, "expected an object of type Feature");
      }
      feature(path, list.get(i));
    }
  }

  private void feature(String path, JsonNode source) {
    ObjectNode kept = Json.object();
    JsonNode properties = source.get("properties");
    if (properties != null && !properties.isNull() && !properties.isObject()) {
      throw error(path + "/properties", "found " + describe(properties)
          + ", expected an object or null");
    }
    if (properties != null) {
      for (Map.Entry<String, JsonNode> entry : (Iterable<Map.Entry<String, JsonNode>>)
               properties::fields) {
        if (entry.getValue().isValueNode()) {
          kept.set(entry.getKey(), entry.getValue());
        }
      }
    }
    JsonNode geometry = source.get("geometry");
    if (geometry == null) {
      throw error(path, "a Feature has a \"geometry\", which may be null");
    }
    if (!geometry.isNull()) {
      add(path + "/geometry", geometry, kept, 0);
    }
  }

  /** Adds a feature for each geometry, so that each is drawn the way its type asks for. */
  private void add(String path, JsonNode source, ObjectNode properties, int depth) {
    if (!source.isObject()) {
      throw error(path, "found " + describe(source) + ", expected a geometry");
    }
    String type = type(path, source);
    if (!GEOMETRIES.contains(type)) {
      throw error(path + "/type",
          "found \"" + type + "\", expected one of " + String.join(", ", GEOMETRIES));
    }
    if (type.equals("GeometryCollection")) {
      addAll(path + "/geometries", source, properties, depth);
      return;
    }
    JsonNode coordinates = source.get("coordinates");
    String place = path + "/coordinates";
    if (coordinates == null) {
      throw error(path, "a " + type + " has \"coordinates\"");
    }
    ObjectNode geometry = Json.object("type", type);
    geometry.set("coordinates", switch (type) {
      case "Point" -> point(place, coordinates);
      case "MultiPoint" -> positions(place, coordinates, 0);
      case "LineString" -> positions(place, coordinates, 2);
      case "MultiLineString" -> lines(place, coordinates);
      case "Polygon" -> polygon(place, coordinates);
      default -> polygons(place, coordinates);
    });
    ObjectNode feature = Json.object("type", "Feature");
    feature.set("properties", properties);
    features.add(Json.set(feature, "geometry", geometry));
  }

  private void addAll(String path, JsonNode source, ObjectNode properties, int depth) {
    JsonNode list = source.get("geometries");
    if (list == null || !list.isArray()) {
      throw error(path, "a GeometryCollection has a list of geometries");
    }
    if (depth > MOST_NESTED) {
      throw error(path, "collections nest more than " + MOST_NESTED + " deep");
    }
    for (int i = 0; i < list.size(); i++) {
      add(path + "/" + i, list.get(i), properties, depth + 1);
    }
  }

  private void checkList(String path, JsonNode node, String what) {
    if (!node.isArray()) {
      throw error(path, "found " + describe(node) + ", expected " + what);
    }
  }

  private double[] position(String path, JsonNode node) {
    checkList(path, node, "a position such as [13.4, 52.5]");
    if (node.size() < 2) {
      throw error(path, "a position has a longitude and a latitude");
    }
    for (int i = 0; i < node.size(); i++) {
      if (!node.get(i).isNumber() || !Double.isFinite(node.get(i).doubleValue())) {
        throw error(path + "/" + i, "found " + describe(node.get(i)) + ", expected a number");
      }
    }
    double longitude = node.get(0).doubleValue();
    double latitude = node.get(1).doubleValue();
    if (Math.abs(longitude) > MOST_LONGITUDE) {
      throw error(path + "/0", "the longitude " + node.get(0)
          + " is no number of degrees; GeoJSON has longitude and latitude (WGS 84)");
    }
    if (Math.abs(latitude) > MOST_LATITUDE) {
      throw error(path + "/1", "the latitude " + node.get(1)
          + " is not within -90 to 90 degrees; the longitude stands first");
    }
    return new double[] {longitude, latitude};
  }

  private ArrayNode point(String path, JsonNode node) {
    double[] position = position(path, node);
    extent.add(position[0], position[1]);
    return Json.array(position[0], position[1]);
  }

  private List<double[]> path(String path, JsonNode node, int least) {
    checkList(path, node, "a list of positions");
    if (node.size() < least) {
      throw error(path, "found " + node.size() + " positions, expected at least " + least);
    }
    List<double[]> positions = new ArrayList<>();
    for (int i = 0; i < node.size(); i++) {
      positions.add(position(path + "/" + i, node.get(i)));
    }
    return positions;
  }

  private static ArrayNode write(List<double[]> positions) {
    ArrayNode array = Json.array();
    positions.forEach(position -> array.add(Json.array(position[0], position[1])));
    return array;
  }

  /** @param least 2 for a line; 0 for single points */
  private ArrayNode positions(String path, JsonNode node, int least) {
    List<double[]> positions = path(path, node, least);
    if (least == 0) {
      positions.forEach(position -> extent.add(position[0], position[1]));
    } else {
      extent.addLine(positions);
    }
    return write(positions);
  }

  private ArrayNode lines(String path, JsonNode node) {
    checkList(path, node, "a list of lines");
    ArrayNode lines = Json.array();
    for (int i = 0; i < node.size(); i++) {
      lines.add(positions(path + "/" + i, node.get(i), 2));
    }
    return lines;
  }

  private ArrayNode polygon(String path, JsonNode node) {
    checkList(path, node, "a list of rings");
    ArrayNode rings = Json.array();
    for (int i = 0; i < node.size(); i++) {
      rings.add(ring(path + "/" + i, node.get(i), i == 0));
    }
    return rings;
  }

  private ArrayNode polygons(String path, JsonNode node) {
    checkList(path, node, "a list of polygons");
    ArrayNode polygons = Json.array();
    for (int i = 0; i < node.size(); i++) {
      polygons.add(polygon(path + "/" + i, node.get(i)));
    }
    return polygons;
  }

  private ArrayNode ring(String path, JsonNode node, boolean outer) {
    List<double[]> ring = path(path, node, 4);
    double[] first = ring.get(0);
    double[] last = ring.get(ring.size() - 1);
    if (first[0] != last[0] || first[1] != last[1]) {
      throw error(path, "the ring is not closed: its last position is not its first");
    }
    extent.addLine(ring);
    boolean clockwise = area(ring) < 0;
    if (clockwise != outer) {
      Collections.reverse(ring);
    }
    return write(ring);
  }

  /** Twice the area in square degrees; negative when the ring runs clockwise. */
  private static double area(List<double[]> ring) {
    double area = 0;
    double x = ring.get(0)[0];
    for (int i = 1; i < ring.size(); i++) {
      double[] from = ring.get(i - 1);
      double[] to = ring.get(i);
      // Over the antimeridian the shorter way.
      double step = Math.IEEEremainder(to[0] - from[0], 360);
      double next = Math.abs(to[0] - from[0]) > 180 ? x + step : x + to[0] - from[0];
      area += x * to[1] - next * from[1];
      x = next;
    }
    return area;
  }
}
