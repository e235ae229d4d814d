// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import org.chartbridge.draw.ElementFacts;

/** Writes points: one marker for each value. */
final class PointWriter extends ElementWriter {
  private static final double EDGE = 0.8;
  private static final double EDGE_OPACITY = 0.85;
  private static final double CROWD = 0.7;

  private final boolean map;

  PointWriter(ChartParts parts, ElementFacts element, boolean map) {
    super(parts, element);
    this.map = map;
  }

  @Override
  MarkLayer write() {
    Sums sums = new Sums(context, element);
    layer.addSteps(sums.steps);
    finish(sums);
    layer.tooltip().addAll(sums);
    ObjectNode mark = mark("point");
    boolean moves = context.options != null && context.options.zoom();
    if (!moves && !map) {
      keepWithin(sums);
      mark.remove("clip");
    }
    mark.put("filled", true);
    if (!element.crowded()) {
      mark.put("stroke", context.look.background());
      mark.set("strokeWidth", Json.node(EDGE));
      mark.set("strokeOpacity", Json.node(EDGE_OPACITY));
    }
    mark.set("fillOpacity", Json.node(opacity()));
    if (element.element().color() == null && element.seriesIndex() >= 0) {
      mark.put("shape", colors.shape(element.seriesIndex()));
    } else {
      mark.put("shape", "circle");
    }
    ObjectNode encoding = Json.object();
    encodePlace(encoding, sums, map);
    colors.encode(element, sums, mark, encoding);
    if (encoding.has("shape")) {
      mark.remove("shape");
    }
    size(mark, encoding, sums);
    layer.tooltip().show(encoding);
    layer.tooltip().describe(mark);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.keys());
    if (sums.label != null) {
      addLabels(sums);
    }
    return layer;
  }

  /** Markers at the ends of an axis are whole, so that those beyond are left out, not cut off. */
  private void keepWithin(Sums sums) {
    String across = x.within(sums.x);
    String along = y.within(sums.y);
    if (across != null) {
      layer.addStep(Transforms.filter(across));
    }
    if (along != null) {
      layer.addStep(Transforms.filter(along));
    }
  }

  private double diameter() {
    return context.look.markerSize() * (element.crowded() ? CROWD : 1);
  }

  private void size(ObjectNode mark, ObjectNode encoding, Sums sums) {
    if (sums.size == null) {
      mark.set("size", Json.node(Json.pixels(diameter() * diameter())));
      return;
    }
    encoding.set("size", colors.size(element, sums));
    ObjectNode order = Json.object("field", sums.size);
    order.put("type", "quantitative");
    encoding.set("order", Json.set(order, "sort", "descending"));
  }

  private void addLabels(Sums sums) {
    ObjectNode mark = Json.object("type", "text");
    mark.put("align", "left");
    mark.put("baseline", "middle");
    double radius = sums.size == null ? diameter() / 2 : element.sizes().largest() / 2;
    mark.set("dx", Json.node(Json.pixels(LABEL_GAP * context.look.factor() + radius)));
    ObjectNode encoding = Json.object();
    encodePlace(encoding, sums, map);
    labelView(sums, mark, encoding);
  }
}
