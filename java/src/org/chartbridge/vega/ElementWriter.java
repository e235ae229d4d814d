// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;

/** What the writers of all kinds of elements share. */
abstract class ElementWriter {
  /** Labels stand this far from their marks, in pixels. */
  static final double LABEL_GAP = 3;
  private static final double DAY = 86_400_000;

  final Context context;
  final ElementFacts element;
  final AxisJson x;
  final AxisJson y;
  final ColorJson colors;
  final MarkLayer layer;

  ElementWriter(ChartParts parts, ElementFacts element) {
    context = parts.context();
    x = parts.x();
    y = parts.y();
    colors = parts.colors();
    this.element = element;
    layer = new MarkLayer(context, element);
  }

  /** What is made once for a chart. */
  record ChartParts(Context context, AxisJson x, AxisJson y, ColorJson colors) {}

  abstract MarkLayer write();

  /** The name of the channel that positions stand in. */
  String p() {
    return element.horizontal() ? "y" : "x";
  }

  /** The name of the channel that measures stand in. */
  String m() {
    return element.horizontal() ? "x" : "y";
  }

  AxisJson positionAxis() {
    return element.horizontal() ? y : x;
  }

  AxisJson measureAxis() {
    return element.horizontal() ? x : y;
  }

  String position(Sums sums) {
    return element.horizontal() ? sums.y : sums.x;
  }

  String measure(Sums sums) {
    return element.horizontal() ? sums.x : sums.y;
  }

  void encodePosition(ObjectNode encoding, String field) {
    encoding.set(p(), positionAxis().encoding(field, element.positionColumn()));
  }

  void encodeMeasure(ObjectNode encoding, String field) {
    encoding.set(m(), measureAxis().encoding(field, element.measureColumn()));
  }

  /** The place of marks that can also lie on a map: x and y are longitude and latitude there. */
  void encodePlace(ObjectNode encoding, Sums sums, boolean map) {
    if (map) {
      encoding.set("longitude", MapPlace.of(sums.x));
      encoding.set("latitude", MapPlace.of(sums.y));
      return;
    }
    encodePosition(encoding, sums.x);
    encodeMeasure(encoding, sums.y);
  }

  /** The other end of marks along the positions. */
  void encodePositionEnd(ObjectNode encoding, String field) {
    encoding.set(p() + "2", Json.object("field", field));
  }

  /** The other end of marks along the measures. */
  void encodeMeasureEnd(ObjectNode encoding, String field) {
    encoding.set(m() + "2", Json.object("field", field));
  }

  /** Lets marks grow from zero, or from the start of an axis that has no zero. */
  void encodeBaseline(ObjectNode encoding) {
    AxisJson axis = measureAxis();
    ((ObjectNode) encoding.get(m())).set("stack", Json.node(null));
    if (axis.kind() != ScaleKind.LOG) {
      encoding.set(m() + "2", Json.object("datum", 0));
      return;
    }
    boolean start = element.horizontal() != axis.isReversed();
    Object edge = start ? 0 : element.horizontal() ? "width" : "height";
    encoding.set(m() + "2", Json.object("value", edge));
  }

  /** A mark that keeps within the axes where something could lie beyond them. */
  ObjectNode mark(String type) {
    ObjectNode mark = Json.object("type", type);
    boolean moves = context.options != null && context.options.zoom();
    if (x.clips() || y.clips() || moves) {
      mark.put("clip", true);
    }
    return mark;
  }

  double opacity() {
    return element.element().opacity();
  }

  void fade(ObjectNode mark, String property) {
    if (opacity() < 1) {
      mark.set(property, Json.node(opacity()));
    }
  }

  /** What is known about a mark besides how it looks. */
  void finish(Sums sums) {
    layer.addSteps(colors.seriesSteps(element));
    layer.setLegendField(colors.legendField(element, sums));
  }

  /** A mark of many values is told by what they have in common. */
  void describeWhole(ObjectNode mark, Sums sums) {
    if (sums.color == null) {
      mark.put("description", element.series());
      return;
    }
    Tooltip whole = new Tooltip(context, element);
    whole.add(element.colorTitle(), whole.text(
        element.element().color(), element.colorColumn(), sums.color));
    whole.describe(mark);
  }

  /** A text in the place of a mark's label; rows without one are left out. */
  ObjectNode labelView(Sums sums, ObjectNode mark, ObjectNode encoding) {
    String text = context.fields.unique("label");
    encoding.set("text", Json.set(Json.object("field", text), "type", "nominal"));
    ObjectNode view = layer.addView(mark, encoding);
    view.set("transform", Json.array(List.of(Transforms.calculate(sums.labelText(), text),
        Transforms.filter(Expr.isValid(text)))));
    return view;
  }

  /**
   * Steps that work out the ends of marks around positions on an axis of numbers or times.
   *
   * @param at the field of the position
   * @param share how much of the smallest distance between two positions the marks take together
   */
  void spread(String at, double share, Dodging.Part part, String from, String to) {
    String value = Expr.datum(at);
    String unit = addSmallestGap(at);
    boolean days = element.element().kind() == ElementKind.BAR
        && positionAxis().kind() == ScaleKind.TIME && isTime(element.positionColumn());
    double alone = days ? DAY : 1;
    String room = "(isValid(" + Expr.datum(unit) + ") ? " + Expr.datum(unit) + " : "
        + Expr.number(alone) + ") * " + Expr.number(share);
    layer.addSteps(part.steps());
    layer.addStep(Transforms.calculate(
        "+" + value + " + " + room + " * (" + part.from() + " - 0.5)", from));
    layer.addStep(
        Transforms.calculate(Expr.datum(from) + " + " + room + " * " + part.width(), to));
  }

  /** Adds a field with the smallest distance between two values of a field; null when alone. */
  String addSmallestGap(String field) {
    String before = context.fields.unique("before");
    String gap = context.fields.unique("gap");
    String unit = context.fields.unique("unit");
    String value = Expr.datum(field);
    layer.addStep(Transforms.window(List.of(lag(field, before)), null, 0, field, List.of()));
    layer.addStep(Transforms.calculate("isValid(" + Expr.datum(before) + ") && " + value + " > "
        + Expr.datum(before) + " ? " + value + " - " + Expr.datum(before) + " : null", gap));
    layer.addStep(Transforms.joinAggregate(
        List.of(Transforms.operation("min", gap, unit)), List.of()));
    return unit;
  }

  private static ObjectNode lag(String field, String as) {
    ObjectNode operation = Transforms.operation("lag", field, as);
    return Json.set(operation, "param", 1);
  }

  private static boolean isTime(Column column) {
    return column != null && column.kind() == ColumnKind.TIME;
  }
}
