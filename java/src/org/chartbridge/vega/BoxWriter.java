// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/**
 * Writes box plots out of their parts, so that they show just what a drawn one shows: quartiles
 * interpolated between values, whiskers to the last values within 1.5 interquartile ranges, never
 * ending within the box, and each value beyond them.
 */
final class BoxWriter extends ElementWriter {
  private static final double WHISKER = 1.5;
  private static final double CAP = 0.25;
  private static final double GAP = 0.12;
  private static final double THIN = 1.2;
  private static final double THICK = 2.6;
  private static final double OUTLIER = 1.1;
  private static final double OUTLIER_SIZE = 0.72;

  private final Dodging dodging;
  private final List<String> keys = new ArrayList<>();
  private String position;
  private Sums sums;
  private String from;
  private String to;
  private String middle;
  private String q1;
  private String median;
  private String q3;
  private String low;
  private String high;
  private String inside;

  BoxWriter(ChartParts parts, ElementFacts element) {
    super(parts, element);
    dodging = new Dodging(context, element);
  }

  /** The colours of a part of a box, from the colours of the groups. */
  private record Variant(Look look, boolean surface) implements ColorJson.BoxVariant {
    @Override
    public String apply(int index) {
      return of(look.color(index));
    }

    @Override
    public String of(String color) {
      return surface ? look.boxSurface(color) : look.boxInk(color);
    }
  }

  private boolean bands() {
    return positionAxis().isCategory();
  }

  @Override
  MarkLayer write() {
    sums = new Sums(context, element);
    layer.addSteps(sums.steps);
    position = position(sums);
    if (position == null) {
      position = context.fields.unique("all");
      layer.addStep(Transforms.calculate("''", position));
    }
    keys.addAll(context.panelFields());
    keys.add(position);
    if (sums.color != null) {
      keys.add(sums.color);
      keys.add(sums.rank);
    }
    finish(sums);
    fences();
    if (!bands()) {
      places();
    }
    addBoxes();
    addOutliers();
    layer.setPickFields(keys);
    return layer;
  }

  private void fences() {
    q1 = context.fields.unique("lower quartile");
    median = context.fields.unique("median");
    q3 = context.fields.unique("upper quartile");
    low = context.fields.unique("lower whisker");
    high = context.fields.unique("upper whisker");
    inside = context.fields.unique("inside");
    String value = measure(sums);
    String reach = Expr.number(WHISKER) + " * (" + Expr.datum(q3) + " - " + Expr.datum(q1) + ")";
    layer.addStep(Transforms.joinAggregate(
        List.of(Transforms.operation("q1", value, q1),
            Transforms.operation("median", value, median),
            Transforms.operation("q3", value, q3)), keys));
    layer.addStep(Transforms.calculate(
        Expr.datum(value) + " >= " + Expr.datum(q1) + " - " + reach + " && " + Expr.datum(value)
            + " <= " + Expr.datum(q3) + " + " + reach + " ? +" + Expr.datum(value) + " : null",
        inside));
  }

  /** On an axis of numbers boxes are as wide as the smallest distance allows. */
  private void places() {
    from = context.fields.unique("from");
    to = context.fields.unique("to");
    middle = context.fields.unique("middle");
    Dodging.Part part = dodging.part(sums, position);
    boolean groups = Dodging.groups(context, element);
    spread(position, positionAxis().band(element), part, from, to);
    if (groups) {
      String gap = "(" + Expr.datum(to) + " - " + Expr.datum(from) + ") * "
          + Expr.number(GAP / 2);
      String width = context.fields.unique("gap");
      layer.addStep(Transforms.calculate(gap, width));
      layer.addStep(Transforms.calculate(Expr.datum(from) + " + " + Expr.datum(width), from));
      layer.addStep(Transforms.calculate(Expr.datum(to) + " - " + Expr.datum(width), to));
    }
    layer.addStep(Transforms.calculate(
        "(" + Expr.datum(from) + " + " + Expr.datum(to) + ") / 2", middle));
  }

  /** A tooltip that says which box it is. */
  private Tooltip heading() {
    Tooltip tooltip = new Tooltip(context, element);
    tooltip.add(element.position(), element.positionColumn(), position);
    if (element.element().color() != null) {
      tooltip.add(element.colorTitle(), tooltip.text(
          element.element().color(), element.colorColumn(), sums.color));
    }
    return tooltip;
  }

  private String text(String field) {
    return layer.tooltip().text(element.measure(), element.measureColumn(), field);
  }

  private Tooltip boxTooltip(String count) {
    Tooltip tooltip = heading();
    tooltip.add("Upper whisker", text(high));
    tooltip.add("Upper quartile", text(q3));
    tooltip.add("Median", text(median));
    tooltip.add("Lower quartile", text(q1));
    tooltip.add("Lower whisker", text(low));
    tooltip.add("Count", Expr.numberText(Expr.datum(count)));
    return tooltip;
  }

  /** One row for each box. */
  private List<ObjectNode> boxSteps(String count) {
    List<String> by = new ArrayList<>(keys);
    by.addAll(List.of(q1, median, q3));
    if (!bands()) {
      by.addAll(List.of(from, to, middle));
    }
    List<ObjectNode> steps = new ArrayList<>();
    steps.add(Transforms.aggregate(
        List.of(Transforms.operation("min", inside, low),
            Transforms.operation("max", inside, high),
            Transforms.operation("count", null, count)), by));
    // The last value within reach can lie within the box, between a quartile and its neighbour.
    steps.add(Transforms.calculate(
        "min(" + Expr.datum(low) + ", " + Expr.datum(q1) + ")", low));
    steps.add(Transforms.calculate(
        "max(" + Expr.datum(high) + ", " + Expr.datum(q3) + ")", high));
    return steps;
  }

  private void addBoxes() {
    String count = context.fields.unique("count");
    Tooltip tooltip = boxTooltip(count);
    List<ObjectNode> steps = boxSteps(count);
    ObjectNode mark = mark(bands() ? "bar" : "rect");
    ObjectNode encoding = Json.object();
    place(mark, encoding, 1);
    encodeMeasure(encoding, q1);
    encodeMeasureEnd(encoding, q3);
    fade(mark, "fillOpacity");
    mark.set("strokeWidth", width(THIN));
    colors.encode(element, sums, mark, encoding, "fill", new Variant(context.look, true));
    colors.encode(element, sums, mark, encoding, "stroke", new Variant(context.look, false));
    tooltip.show(encoding);
    tooltip.describe(mark);
    List<ObjectNode> told = new ArrayList<>(steps);
    told.addAll(tooltip.steps());
    layer.addMarks(mark, encoding).set("transform", Json.array(told));
    addRule(steps, low, q1, THIN);
    addRule(steps, q3, high, THIN);
    addCap(steps, low, CAP, THIN);
    addCap(steps, high, CAP, THIN);
    addCap(steps, median, 1, THICK);
  }

  private JsonNode width(double width) {
    return Json.node(Json.pixels(width * context.look.factor()));
  }

  /** The room of a box. */
  private void place(ObjectNode mark, ObjectNode encoding, double share) {
    if (!bands()) {
      encodePosition(encoding, from);
      encodePositionEnd(encoding, to);
      return;
    }
    encodePosition(encoding, position);
    offset(encoding);
    String size = element.horizontal() ? "height" : "width";
    boolean groups = Dodging.groups(context, element);
    double relative = groups ? 1 : positionAxis().band(element) / positionAxis().band();
    mark.set(size, Json.object("band", Json.node(relative * share)));
  }

  private void offset(ObjectNode encoding) {
    if (!Dodging.groups(context, element)) {
      return;
    }
    Discrete groups = context.discrete(element.colorColumn());
    ObjectNode offset = Json.object("field", sums.color);
    offset.put("type", groups.type());
    ObjectNode scale = offset.putObject("scale");
    if (context.fixedRows) {
      scale.set("domain", Json.array(groups.values()));
    } else {
      groups.sort(offset);
    }
    scale.set("paddingInner", Json.node(GAP));
    scale.set("paddingOuter", Json.node(GAP / 2));
    encoding.set(p() + "Offset", offset);
  }

  private void addRule(List<ObjectNode> steps, String start, String end, double width) {
    ObjectNode mark = mark("rule");
    ObjectNode encoding = Json.object();
    encodePosition(encoding, bands() ? position : middle);
    if (bands()) {
      offset(encoding);
    }
    encodeMeasure(encoding, start);
    encodeMeasureEnd(encoding, end);
    addLine(steps, mark, encoding, "stroke", width);
  }

  /** A line across the box. */
  private void addCap(List<ObjectNode> steps, String at, double share, double width) {
    ObjectNode mark = mark(bands() ? "tick" : "rule");
    ObjectNode encoding = Json.object();
    List<ObjectNode> all = steps;
    if (bands()) {
      encodePosition(encoding, position);
      offset(encoding);
      mark.put("orient", element.horizontal() ? "vertical" : "horizontal");
      mark.set("size", Json.expression(room() + " * " + Expr.number(share)));
      mark.set("thickness", width(width));
    } else {
      String left = context.fields.unique("left");
      String right = context.fields.unique("right");
      String half = "(" + Expr.datum(to) + " - " + Expr.datum(from) + ") * "
          + Expr.number(share / 2);
      all = new ArrayList<>(steps);
      all.add(Transforms.calculate(Expr.datum(middle) + " - " + half, left));
      all.add(Transforms.calculate(Expr.datum(middle) + " + " + half, right));
      encodePosition(encoding, left);
      encodePositionEnd(encoding, right);
    }
    encodeMeasure(encoding, at);
    addLine(all, mark, encoding, bands() ? "color" : "stroke", width);
  }

  /** The width of a box as an expression. */
  private String room() {
    boolean lies = element.horizontal();
    double share = positionAxis().band(element) / positionAxis().band();
    if (!Dodging.groups(context, element)) {
      return context.bandwidth(!lies) + " * " + Expr.number(share);
    }
    int count = context.discrete(element.colorColumn()).values().size();
    return context.fixedRows
        ? context.bandwidth(!lies) + " * " + Expr.number((1 - GAP) / count)
        : "bandwidth('" + p() + "Offset')";
  }

  private void addLine(List<ObjectNode> steps, ObjectNode mark, ObjectNode encoding,
      String channel, double width) {
    if (channel.equals("stroke")) {
      mark.set("strokeWidth", width(width));
    }
    colors.encode(element, sums, mark, encoding, channel, new Variant(context.look, false));
    layer.addMarks(mark, encoding).set("transform", Json.array(steps));
  }

  private void addOutliers() {
    Tooltip tooltip = heading();
    tooltip.add(element.measure(), element.measureColumn(), measure(sums));
    List<ObjectNode> steps = new ArrayList<>();
    ObjectNode mark = mark("point");
    mark.put("filled", false);
    mark.put("shape", "circle");
    double diameter = context.look.markerSize() * OUTLIER_SIZE;
    double size = Json.pixels(diameter * diameter);
    if (context.fixedRows && !context.isFree(element.horizontal())) {
      steps.add(Transforms.filter("!" + Expr.isValid(inside)));
      mark.set("size", Json.node(size));
    } else {
      // Where ends of axes follow the marks, there must be some, or Vega warns.
      mark.set("size",
          Json.expression(Expr.isValid(inside) + " ? 0 : " + Expr.number(size)));
    }
    ObjectNode encoding = Json.object();
    encodePosition(encoding, bands() ? position : middle);
    if (bands()) {
      offset(encoding);
    }
    encodeMeasure(encoding, measure(sums));
    tooltip.show(encoding);
    tooltip.describe(mark);
    steps.addAll(tooltip.steps());
    addLine(steps, mark, encoding, "stroke", OUTLIER);
  }
}
