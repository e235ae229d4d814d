// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.draw.ElementFacts;

/**
 * Writes areas. On top of each other, an area runs straight between the values of its own colour
 * where it lacks one that another colour has, and is nothing before the first and after the last.
 */
final class AreaWriter extends ElementWriter {
  private static final double SEE_THROUGH = 0.5;

  private final boolean stacks;
  private String rank;
  private Sums sums;
  private String at;
  private String v0;
  private String v1;
  /** The field of an area's own height, and that of its place where the height is given. */
  private String height;
  private String known;

  AreaWriter(ChartParts parts, ElementFacts element) {
    super(parts, element);
    boolean filled = element.element().arrangement() == Arrangement.FILLED;
    boolean several = element.element().color() != null
        && !(context.fixedRows
            && context.discrete(element.colorColumn()).values().size() == 1);
    stacks = filled || element.element().arrangement() == Arrangement.STACKED && several;
  }

  @Override
  MarkLayer write() {
    rank = x.isCategory() ? context.discrete(element.xColumn()).rank() : null;
    sums = new Sums(context, element, List.of(), null, null,
        rank == null ? List.of() : List.of(rank));
    layer.addSteps(sums.steps);
    at = sums.x;
    v1 = sums.y;
    if (stacks) {
      stack();
    }
    finish(sums);
    tooltip();
    ObjectNode mark = mark("area");
    ObjectNode encoding = Json.object();
    encodePosition(encoding, at);
    encodeMeasure(encoding, stacks ? v0 : v1);
    if (stacks) {
      encodeMeasureEnd(encoding, v1);
    } else {
      encodeBaseline(encoding);
    }
    if (rank != null) {
      // An order would be taken for one more thing that areas differ by.
      ObjectNode sort = Json.object("field", rank);
      ((ObjectNode) encoding.get("x")).set("sort", Json.set(sort, "op", "min"));
    }
    look(mark);
    colors.encode(element, sums, mark, encoding);
    describeWhole(mark, sums);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.color == null ? List.of() : List.of(sums.color));
    addTargets();
    if (sums.label != null) {
      addLabels();
    }
    return layer;
  }

  private void look(ObjectNode mark) {
    boolean overlaid = element.element().arrangement() == Arrangement.OVERLAID;
    if (!overlaid) {
      fade(mark, "fillOpacity");
      return;
    }
    mark.set("fillOpacity", Json.node(opacity() >= 1 ? SEE_THROUGH : opacity()));
    ObjectNode line = Json.object("strokeWidth", Json.node(
        Json.pixels(context.look.lineWidth())));
    line.put("strokeJoin", "round");
    mark.set("line", line);
  }

  private void stack() {
    String value = context.fields.unique("height");
    height = value;
    List<String> own = new ArrayList<>(context.panelFields());
    if (sums.color != null) {
      own.add(sums.color);
      own.add(sums.rank);
    }
    layer.addStep(Transforms.filter(Expr.isValid(sums.y)));
    mergeRows(value, own);
    String place = place();
    complete(value, place, own);
    v0 = context.fields.unique("lower");
    v1 = context.fields.unique("upper");
    List<String> by = new ArrayList<>(context.panelFields());
    by.add(at);
    boolean filled = element.element().arrangement() == Arrangement.FILLED;
    layer.addStep(Transforms.stack(value, by, sums.rank, v0, v1, filled));
  }

  /** Rows of one place and colour add up. */
  private void mergeRows(String value, List<String> own) {
    if (sums.aggregates()) {
      layer.addStep(Transforms.calculate(Expr.datum(sums.y), value));
      return;
    }
    List<String> by = new ArrayList<>(own);
    by.add(sums.x);
    if (rank != null) {
      by.add(rank);
    }
    List<ObjectNode> sum = new ArrayList<>(
        List.of(Transforms.operation("sum", sums.y, value)));
    if (sums.label != null && !by.contains(sums.label)) {
      sum.add(Transforms.operation("min", sums.label, sums.label));
    }
    layer.addStep(Transforms.aggregate(sum, by));
  }

  /** A field that grows along the axis. */
  private String place() {
    if (rank != null) {
      return rank;
    }
    if (x.kind() != ScaleKind.TIME) {
      return at;
    }
    String time = context.fields.unique("time");
    layer.addStep(Transforms.calculate("+" + Expr.datum(at), time));
    at = time;
    return time;
  }

  private void complete(String value, String place, List<String> own) {
    if (sums.color == null) {
      return;
    }
    ObjectNode impute = Json.object("impute", value);
    impute.put("key", at);
    impute.set("value", Json.node(null));
    layer.addStep(Json.set(impute, "groupby", own));
    if (rank != null) {
      layer.addStep(Transforms.joinAggregate(
          List.of(Transforms.operation("max", rank, rank)), List.of(at)));
    }
    known = context.fields.unique("known");
    String left = context.fields.unique("left");
    String right = context.fields.unique("right");
    String first = context.fields.unique("first");
    String last = context.fields.unique("last");
    layer.addStep(Transforms.calculate(
        Expr.isValid(value) + " ? " + Expr.datum(place) + " : null", known));
    layer.addStep(Transforms.joinAggregate(
        List.of(Transforms.operation("min", known, first),
            Transforms.operation("max", known, last)), context.panelFields()));
    // Other panels may have places that this one has not.
    layer.addStep(Transforms.filter(Expr.datum(place) + " >= " + Expr.datum(first) + " && "
        + Expr.datum(place) + " <= " + Expr.datum(last)));
    layer.addStep(Transforms.window(
        List.of(Transforms.operation("argmax", known, left)), null, 0, place, own));
    layer.addStep(Transforms.window(
        List.of(Transforms.operation("argmin", known, right)), 0, null, place, own));
    layer.addStep(Transforms.calculate(between(value, place, left, right), value));
  }

  private static String between(String value, String place, String left, String right) {
    String here = Expr.datum(place);
    String x0 = Expr.datum(left) + "[" + Expr.text(place) + "]";
    String y0 = Expr.datum(left) + "[" + Expr.text(value) + "]";
    String x1 = Expr.datum(right) + "[" + Expr.text(place) + "]";
    String y1 = Expr.datum(right) + "[" + Expr.text(value) + "]";
    String inner = y0 + " + (" + y1 + " - " + y0 + ") * (" + here + " - " + x0 + ") / (" + x1
        + " - " + x0 + ")";
    String has = Expr.datum(left) + " && " + Expr.datum(right) + " && isValid(" + y0
        + ") && isValid(" + y1 + ")";
    return Expr.isValid(value) + " ? " + Expr.datum(value) + " : " + has + " ? " + inner + " : 0";
  }

  private void tooltip() {
    Tooltip tooltip = layer.tooltip();
    tooltip.add(element.x(), element.xColumn(), at);
    tooltip.add(element.y(), element.yColumn(), stacks ? height : sums.y);
    if (element.element().arrangement() == Arrangement.FILLED) {
      tooltip.add("Share", Expr.shareText(
          "(" + Expr.datum(v1) + " - " + Expr.datum(v0) + ")"));
    }
    if (element.element().color() != null) {
      tooltip.add(element.colorTitle(), tooltip.text(element.element().color(),
          element.colorColumn(), sums.color));
    }
  }

  /** An area is one mark, so that unseen points on its edge say its single values. */
  private void addTargets() {
    if (!context.tooltips()) {
      return;
    }
    ObjectNode mark = mark("point");
    mark.put("filled", true);
    mark.put("opacity", 0);
    double size = Math.max(8, context.look.markerSize());
    mark.set("size", Json.node(Json.pixels(size * size)));
    ObjectNode encoding = Json.object();
    encodePosition(encoding, at);
    encodeMeasure(encoding, v1);
    layer.tooltip().show(encoding);
    ObjectNode view = layer.addView(mark, encoding);
    if (known != null) {
      view.set("transform", Json.array(Transforms.filter(Expr.isValid(known))));
    }
  }

  private void addLabels() {
    ObjectNode mark = Json.object("type", "text");
    mark.put("align", "left");
    mark.put("baseline", "middle");
    mark.set("dx", Json.node(Json.pixels(LABEL_GAP * context.look.factor() + 2)));
    ObjectNode encoding = Json.object();
    encodePosition(encoding, at);
    encodeMeasure(encoding, v1);
    labelView(sums, mark, encoding);
  }
}
