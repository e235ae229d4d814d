// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.vega.InteractiveOptions.MapOptions;

/**
 * The map under the marks: GeoJSON documents as layers, and a projection that shows them and the
 * marks as large as the picture allows.
 */
final class MapView {
  private static final double MOST_MERCATOR = 85;
  private static final double ROOM = 0.95;
  private static final double LEAST = 0.002;
  private static final double MOST_ZOOM = 32;

  private final Context context;
  private final List<GeoJson> documents;
  private final MapOptions options;
  private final MapExtent extent = new MapExtent();

  MapView(Context context, List<GeoJson> documents) {
    this.context = context;
    this.documents = documents;
    options = context.options.map();
    check();
    documents.forEach(document -> extent.add(document.extent()));
    context.facts.elements().forEach(this::addRows);
    if (extent.isEmpty()) {
      throw new ChartException("The map is empty: the GeoJSON documents have no coordinates.");
    }
  }

  private void check() {
    if (context.hasFacet()) {
      throw context.chart.error("facet.column", "Facet: a map has no panels; drop the facet, or "
          + "export the chart without GeoJSON documents.");
    }
    for (ElementFacts element : context.facts.elements()) {
      ElementKind kind = element.element().kind();
      if (kind != ElementKind.POINT && kind != ElementKind.LINE) {
        throw context.chart.error(element.path(), element.name() + " has no place on a map, which "
            + "shows points and lines; choose one of them, or export the chart without GeoJSON "
            + "documents.");
      }
      checkNumbers(element, "x", "longitudes", element.xColumn());
      checkNumbers(element, "y", "latitudes", element.yColumn());
    }
  }

  private void checkNumbers(ElementFacts element, String channel, String what, Column column) {
    boolean category = context.isCategory(channel.equals("x"));
    if (column == null || column.kind() != ColumnKind.NUMBER || category) {
      String path = element.path() + "." + channel;
      throw context.chart.error(path, element.name() + ", " + channel + ": on a map it shows "
          + what + ", so it needs a column of numbers.");
    }
  }

  private void addRows(ElementFacts element) {
    for (int row = 0; row < element.xColumn().size(); row++) {
      if (element.xColumn().isMissing(row) || element.yColumn().isMissing(row)) {
        continue;
      }
      double longitude = element.xColumn().number(row);
      double latitude = element.yColumn().number(row);
      if (Math.abs(longitude) > 360) {
        throw context.chart.error(element.path() + ".x", element.name() + ", x: the value "
            + Expr.number(longitude) + " of column \"" + element.xColumn().name()
            + "\" is no longitude; on a map x is a number of degrees, -180 to 180 or 0 to 360.");
      }
      if (Math.abs(latitude) > 90) {
        throw context.chart.error(element.path() + ".y", element.name() + ", y: the value "
            + Expr.number(latitude) + " of column \"" + element.yColumn().name()
            + "\" is no latitude; on a map y is a number of degrees, -90 to 90.");
      }
      extent.add(longitude, latitude);
    }
  }

  /** The layers, the first document at the bottom. */
  List<ObjectNode> layers() {
    List<ObjectNode> layers = new ArrayList<>();
    for (GeoJson document : documents) {
      ObjectNode layer =
          Json.object("data", Json.object("values", document.features()));
      ObjectNode mark = Json.object("type", "geoshape");
      String lines = "indexof(datum.geometry.type, 'LineString') >= 0";
      String areas = "indexof(datum.geometry.type, 'Polygon') >= 0";
      mark.set("fill", Json.expression(lines + " ? null : " + areas + " ? "
          + Expr.text(fill()) + " : " + Expr.text(context.look.axisColor())));
      mark.set("stroke", Json.expression(lines + " ? " + Expr.text(context.look.axisColor())
          + " : " + Expr.text(stroke())));
      mark.set("strokeWidth", Json.node(Json.pixels(0.75 * context.look.factor())));
      mark.put("clip", true);
      mark.put("aria", false);
      layer.set("mark", mark);
      if (options.label() != null && context.tooltips()) {
        label(layer);
      }
      layers.add(layer);
    }
    return layers;
  }

  private String fill() {
    return options.fill() == null ? context.look.gridColor() : options.fill();
  }

  private String stroke() {
    return options.stroke() == null ? context.look.background() : options.stroke();
  }

  private void label(ObjectNode layer) {
    String field = "map label";
    layer.set("transform", Json.array(Transforms.calculate(
        "datum.properties[" + Expr.text(options.label()) + "]", field)));
    ObjectNode tooltip = Json.object("field", field);
    tooltip.put("type", "nominal");
    tooltip.put("title", options.label());
    layer.set("encoding", Json.object("tooltip", Json.array(tooltip)));
  }

  private boolean isPlane() {
    return options.projection().equals("mercator")
        || options.projection().equals("equirectangular");
  }

  private boolean zooms() {
    return context.options.zoom() && isPlane();
  }

  private double height(double latitude) {
    if (!options.projection().equals("mercator")) {
      return Math.toRadians(latitude);
    }
    double within = Math.max(-MOST_MERCATOR, Math.min(MOST_MERCATOR, latitude));
    return Math.log(Math.tan(Math.PI / 4 + Math.toRadians(within) / 2));
  }

  private double latitude(double height) {
    return options.projection().equals("mercator")
        ? Math.toDegrees(2 * Math.atan(Math.exp(height)) - Math.PI / 2)
        : Math.toDegrees(height);
  }

  private static double degrees(double value) {
    return Math.round(value * 1e4) / 1e4;
  }

  private double middleLongitude() {
    double[] ends = extent.longitudes();
    return degrees((ends[0] + ends[1]) / 2);
  }

  private double middleLatitude() {
    return degrees(latitude((height(extent.south()) + height(extent.north())) / 2));
  }

  /** Projections that are no plane grid are fitted by Vega. */
  ObjectNode projection() {
    ObjectNode projection = Json.object("type", options.projection());
    if (options.projection().equals("albersUsa")) {
      return projection;
    }
    if (!isPlane()) {
      double tilt = options.projection().equals("orthographic") ? -middleLatitude() : 0;
      return Json.set(projection, "rotate", Json.array(-middleLongitude(), tilt, 0));
    }
    double[] ends = extent.longitudes();
    double across = Math.max(LEAST, Math.toRadians(ends[1] - ends[0]));
    double along = Math.max(LEAST, height(extent.north()) - height(extent.south()));
    String scale = "min(width / " + Expr.number(across) + ", height / " + Expr.number(along)
        + ") * " + Expr.number(ROOM);
    boolean zooms = zooms();
    projection.set("scale", Json.expression(zooms ? scale + " * map_zoom" : scale));
    projection.set("translate", Json.expression("[width / 2, height / 2]"));
    projection.set("rotate", zooms ? Json.expression("[-map_longitude, 0, 0]")
                                   : Json.array(-middleLongitude(), 0, 0));
    projection.set("center", zooms ? Json.expression("[0, map_latitude]")
                                   : Json.array(0, middleLatitude()));
    return projection;
  }

  /** The sliders that zoom and move the map. */
  void addParameters(ArrayNode parameters) {
    if (!zooms()) {
      return;
    }
    double[] ends = extent.longitudes();
    parameters.add(slider("map_zoom", "Zoom ", 1, 1, MOST_ZOOM, 0.1));
    parameters.add(slider("map_longitude", "Longitude ", middleLongitude(),
        Math.floor(ends[0]), Math.ceil(ends[1]), 0.01));
    parameters.add(slider("map_latitude", "Latitude ", middleLatitude(),
        Math.floor(extent.south()), Math.ceil(extent.north()), 0.01));
  }

  private static ObjectNode slider(
      String name, String label, double value, double least, double most, double step) {
    ObjectNode bind = Json.object("input", "range");
    Json.set(bind, "min", least);
    Json.set(bind, "max", most);
    Json.set(bind, "step", step);
    bind.put("name", label);
    ObjectNode slider = Json.object("name", name);
    Json.set(slider, "value", value);
    return Json.set(slider, "bind", bind);
  }
}
