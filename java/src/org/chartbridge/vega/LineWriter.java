// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import org.chartbridge.draw.ElementFacts;

/** Writes lines, from left to right through the values of each colour; on a map in row order. */
final class LineWriter extends ElementWriter {
  private final boolean map;

  LineWriter(ChartParts parts, ElementFacts element, boolean map) {
    super(parts, element);
    this.map = map;
  }

  @Override
  MarkLayer write() {
    String order = map ? context.rowField()
        : x.isCategory() ? context.discrete(element.xColumn()).rank() : null;
    Sums sums =
        new Sums(context, element, List.of(), null, null, order == null ? List.of()
            : List.of(order));
    layer.addSteps(sums.steps);
    finish(sums);
    layer.tooltip().addAll(sums);
    ObjectNode mark = mark("line");
    ObjectNode encoding = Json.object();
    encodePlace(encoding, sums, map);
    if (order != null) {
      encoding.set("order", Json.set(Json.object("field", order), "type", "quantitative"));
    }
    mark.set("strokeWidth", Json.node(Json.pixels(context.look.lineWidth())));
    mark.put("strokeCap", "round");
    mark.put("strokeJoin", "round");
    fade(mark, "strokeOpacity");
    colors.encode(element, sums, mark, encoding);
    if (element.seriesIndex() >= 0 && element.element().color() == null) {
      List<Double> dash = context.look.dash(element.seriesIndex());
      if (!dash.isEmpty()) {
        mark.set("strokeDash", Json.array(dash));
      }
    }
    if (mark.has("strokeDash") || encoding.has("strokeDash")) {
      mark.put("strokeCap", "butt");
    }
    describeWhole(mark, sums);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.color == null ? List.of() : List.of(sums.color));
    addTargets(sums);
    if (sums.label != null) {
      addLabels(sums);
    }
    return layer;
  }

  /** A line is one mark, so that unseen points on it say its single values. */
  private void addTargets(Sums sums) {
    if (!context.tooltips()) {
      return;
    }
    ObjectNode mark = mark("point");
    mark.put("filled", true);
    mark.put("opacity", 0);
    double size = Math.max(8, context.look.markerSize());
    mark.set("size", Json.node(Json.pixels(size * size)));
    ObjectNode encoding = Json.object();
    encodePlace(encoding, sums, map);
    layer.tooltip().show(encoding);
    layer.addView(mark, encoding);
  }

  private void addLabels(Sums sums) {
    ObjectNode mark = Json.object("type", "text");
    mark.put("align", "left");
    mark.put("baseline", "middle");
    mark.set("dx", Json.node(
        Json.pixels(LABEL_GAP * context.look.factor() + context.look.lineWidth())));
    ObjectNode encoding = Json.object();
    encodePlace(encoding, sums, map);
    labelView(sums, mark, encoding);
  }
}
