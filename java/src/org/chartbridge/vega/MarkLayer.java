// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.draw.ElementFacts;

/**
 * The layer of one element: the steps from the rows of the data to its marks, and one or more views
 * that draw them.
 */
final class MarkLayer {
  private final ElementFacts element;
  private final List<ObjectNode> steps = new ArrayList<>();
  private final List<ObjectNode> views = new ArrayList<>();
  private final List<ObjectNode> lit = new ArrayList<>();
  private final Tooltip tooltip;
  private ObjectNode data;
  private ObjectNode main;
  private List<String> pickFields = List.of();
  private String legendField;

  MarkLayer(Context context, ElementFacts element) {
    this.element = element;
    tooltip = new Tooltip(context, element);
  }

  ElementFacts element() {
    return element;
  }

  Tooltip tooltip() {
    return tooltip;
  }

  void addSteps(List<ObjectNode> more) {
    steps.addAll(more);
  }

  void addStep(ObjectNode step) {
    steps.add(step);
  }

  /** Gives the layer rows of its own. */
  void setData(ObjectNode rows) {
    data = rows;
  }

  /** Adds a view that picking highlights; the first one takes the selections. */
  ObjectNode addMarks(ObjectNode mark, ObjectNode encoding) {
    ObjectNode view = addView(mark, encoding);
    lit.add(view);
    if (main == null) {
      main = view;
    }
    return view;
  }

  /**
   * Adds a view. Those who do not see the chart are told of its marks only what is written for
   * them; the compiler would tell all fields, and takes titles as part of an expression.
   */
  ObjectNode addView(ObjectNode mark, ObjectNode encoding) {
    if (!mark.has("description")) {
      mark.put("aria", false);
    }
    ObjectNode view = Json.object("mark", mark);
    view.set("encoding", encoding);
    views.add(view);
    return view;
  }

  /** What tells the marks apart that are picked together. */
  void setPickFields(List<String> fields) {
    pickFields = List.copyOf(fields);
  }

  List<String> pickFields() {
    return pickFields;
  }

  void setLegendField(String field) {
    legendField = field;
  }

  /** The field by whose legend entries the marks can be picked; null for none. */
  String legendField() {
    return legendField;
  }

  /** The view that takes selections. */
  ObjectNode main() {
    return main;
  }

  /** The views whose marks are highlighted. */
  List<ObjectNode> lit() {
    return List.copyOf(lit);
  }

  /** The whole layer; its steps come first, each view may have more of its own. */
  ObjectNode json() {
    List<ObjectNode> all = new ArrayList<>(steps);
    all.addAll(tooltip.steps());
    ObjectNode layer = Json.object();
    if (data != null) {
      layer.set("data", data);
    }
    if (views.size() > 1) {
      if (!all.isEmpty()) {
        layer.set("transform", Json.array(all));
      }
      return Json.set(layer, "layer", views);
    }
    ObjectNode view = views.get(0);
    if (view.get("transform") instanceof ArrayNode own) {
      own.forEach(step -> all.add((ObjectNode) step));
    }
    if (!all.isEmpty()) {
      layer.set("transform", Json.array(all));
    }
    view.remove("transform");
    layer.setAll(view);
    return layer;
  }
}
