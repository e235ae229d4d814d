// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.vega.InteractiveOptions.Selection;

/** Lets readers pick marks and zoom axes. What is not picked fades. */
final class Interaction {
  private static final double FADED = 0.15;

  private final Context context;
  private final List<MarkLayer> layers;
  private final boolean map;
  /** For each layer the names of the selections that its marks follow. */
  private final Map<MarkLayer, Set<String>> followed = new LinkedHashMap<>();

  Interaction(Context context, List<MarkLayer> layers, boolean map) {
    this.context = context;
    this.layers = layers;
    this.map = map;
    layers.forEach(layer -> followed.put(layer, new LinkedHashSet<>()));
  }

  /** Adds the selections to the views. */
  void add() {
    if (context.options.zoom() && !map) {
      addZoom();
    }
    switch (context.options.selection()) {
      case POINT -> {
        addLegends();
        addPicks();
      }
      case INTERVAL -> addBrush();
      case NONE -> { }
    }
    followed.forEach(this::light);
  }

  private static void addParameter(ObjectNode view, ObjectNode parameter) {
    ArrayNode parameters = view.get("params") instanceof ArrayNode known ? known
        : view.putArray("params");
    parameters.add(parameter);
  }

  /** The channels of a view that lie on axes of numbers or times. */
  private List<String> continuous(ObjectNode view) {
    List<String> channels = new ArrayList<>();
    for (String channel : List.of("x", "y")) {
      boolean category = context.isCategory(channel.equals("x"));
      if (view.path("encoding").has(channel) && !category) {
        channels.add(channel);
      }
    }
    return channels;
  }

  private void addZoom() {
    ObjectNode view = layers.get(0).main();
    List<String> channels = continuous(view);
    if (channels.isEmpty()) {
      return;
    }
    ObjectNode select = Json.object("type", "interval");
    select.set("encodings", Json.array(channels));
    boolean draws = context.options.selection() == Selection.INTERVAL;
    if (draws) {
      // Dragging draws the range, so moving takes the shift key.
      select.put("translate",
          "[pointerdown[event.shiftKey], window:pointerup] > window:pointermove!");
    }
    ObjectNode zoom = Json.object("name", "zoom");
    zoom.set("select", select);
    addParameter(view, Json.set(zoom, "bind", "scales"));
  }

  private void addLegends() {
    Map<String, String> names = new LinkedHashMap<>();
    for (MarkLayer layer : layers) {
      String field = layer.legendField();
      if (field == null) {
        continue;
      }
      String name = names.get(field);
      if (name == null) {
        name = "legend_" + (names.size() + 1);
        names.put(field, name);
        ObjectNode select = Json.object("type", "point");
        select.set("fields", Json.array(field));
        ObjectNode parameter = Json.object("name", name);
        parameter.set("select", select);
        addParameter(layer.main(), Json.set(parameter, "bind", "legend"));
      }
      followed.get(layer).add(name);
    }
  }

  private void addPicks() {
    int number = 0;
    for (MarkLayer layer : layers) {
      number++;
      if (layer.pickFields().isEmpty()) {
        continue;
      }
      ObjectNode select = Json.object("type", "point");
      select.set("fields", Json.array(layer.pickFields()));
      ObjectNode parameter = Json.object("name", "picked_" + number);
      addParameter(layer.main(), Json.set(parameter, "select", select));
      followed.get(layer).add("picked_" + number);
    }
  }

  private void addBrush() {
    ObjectNode view = layers.get(0).main();
    List<String> channels = map ? List.of("longitude", "latitude") : continuous(view);
    if (channels.isEmpty()) {
      return;
    }
    ObjectNode select = Json.object("type", "interval");
    select.set("encodings", Json.array(channels));
    if (context.options.zoom()) {
      select.put("zoom", false);
      select.put("translate",
          "[@brush_brush:pointerdown[!event.shiftKey], window:pointerup] > window:pointermove!");
      select.put("on", "[pointerdown[!event.shiftKey], window:pointerup] > window:pointermove!");
    }
    ObjectNode brush = Json.object("name", "brush");
    addParameter(view, Json.set(brush, "select", select));
    for (MarkLayer layer : layers) {
      boolean same = channels.stream().allMatch(channel -> field(layer.main(), channel)
          .equals(field(view, channel)));
      if (same) {
        followed.get(layer).add("brush");
      }
    }
  }

  private static String field(ObjectNode view, String channel) {
    return view.path("encoding").path(channel).path("field").asText();
  }

  private void light(MarkLayer layer, Set<String> names) {
    if (names.isEmpty()) {
      return;
    }
    List<ObjectNode> tests = new ArrayList<>();
    names.forEach(name -> tests.add(Json.object("param", name)));
    ObjectNode condition = Json.object();
    if (tests.size() == 1) {
      condition.setAll(tests.get(0));
    } else {
      condition.set("test", Json.object("and", tests));
    }
    condition.put("value", 1);
    ObjectNode opacity = Json.object("condition", condition);
    opacity.put("value", FADED);
    for (ObjectNode view : layer.lit()) {
      ((ObjectNode) view.get("encoding")).set("opacity", opacity.deepCopy());
    }
  }
}
