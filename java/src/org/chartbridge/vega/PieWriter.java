// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/**
 * Writes pies: clockwise from the top, with names and shares beside the slices, or with shares in
 * the slices and names in the legend where a legend is asked for or panels are small.
 */
final class PieWriter extends ElementWriter {
  private static final double NAMED_RADIUS = 0.84;
  private static final double INSIDE = 0.66;
  private static final double LEAD = 12;
  private static final double EDGE = 1.2;
  /** Smaller slices have no room for their share, in shares of the whole. */
  private static final double LEAST_INSIDE = 14.0 / 360;

  private final boolean named;
  private String from;
  private String to;

  PieWriter(ChartParts parts, ElementFacts element) {
    super(parts, element);
    LegendPosition legend = context.chart.legend().position();
    named = (legend == null || legend == LegendPosition.NONE) && !context.hasFacet();
  }

  @Override
  MarkLayer write() {
    Discrete slices = context.discrete(element.xColumn());
    String rank = slices.rank();
    Sums sums = new Sums(context, element, List.of(), null, null, List.of(rank));
    layer.addSteps(sums.steps);
    from = context.fields.unique("slice start");
    to = context.fields.unique("slice end");
    layer.addStep(Transforms.filter(Expr.datum(sums.y) + " > 0"));
    layer.addStep(
        Transforms.stack(sums.y, context.panelFields(), rank, from, to, true));
    tooltip(sums);
    ObjectNode mark = Json.object("type", "arc");
    mark.put("stroke", context.look.background());
    mark.set("strokeWidth", Json.node(Json.pixels(EDGE * context.look.factor())));
    mark.set("outerRadius", radius(1, 0));
    fade(mark, "fillOpacity");
    ObjectNode encoding = Json.object("theta", angle(from));
    encoding.set("theta2", Json.object("field", to));
    encoding.set("color", colors.slices(slices, title(), !named));
    layer.tooltip().show(encoding);
    layer.tooltip().describe(mark);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.keys());
    if (!named && context.chart.legend().position() != LegendPosition.NONE) {
      layer.setLegendField(slices.field());
    }
    addTexts(sums, slices, rank);
    return layer;
  }

  private String title() {
    String given = context.chart.legend().title();
    return given == null ? context.facts.label(element.x()) : given;
  }

  private void tooltip(Sums sums) {
    layer.tooltip().addAll(sums);
    layer.tooltip().add("Share", Expr.shareText(share()));
  }

  private String share() {
    return "(" + Expr.datum(to) + " - " + Expr.datum(from) + ")";
  }

  private ObjectNode radius(double share, double more) {
    double part = named ? NAMED_RADIUS * share : share;
    String size = "min(" + context.panelPrefix() + "width, " + context.panelPrefix() + "height)";
    return Json.expression(size + " / 2 * " + Expr.number(part) + " + "
        + Expr.number(Json.pixels(more * context.look.factor())));
  }

  /** An angle as a share of the whole turn. */
  private static ObjectNode angle(String field) {
    ObjectNode theta = Json.object("field", field);
    theta.put("type", "quantitative");
    theta.set("stack", Json.node(null));
    ObjectNode scale = Json.object("domain", Json.array(0, 1));
    scale.set("range", Json.array(0, 2 * Math.PI));
    return Json.set(theta, "scale", scale);
  }

  private void addTexts(Sums sums, Discrete slices, String rank) {
    String middle = context.fields.unique("slice middle");
    layer.addStep(Transforms.calculate(
        "(" + Expr.datum(from) + " + " + Expr.datum(to) + ") / 2", middle));
    ObjectNode mark = Json.object("type", "text");
    ObjectNode encoding = Json.object("theta", angle(middle));
    ObjectNode color = Json.object("value", context.look.text());
    if (named) {
      mark.set("radius", radius(1, LEAD));
      String side = "abs(" + Expr.datum(middle) + " - 0.5) > 0.47 || abs("
          + Expr.datum(middle) + " - 0.5) < 0.03 ? 'center' : ";
      mark.set("align", Json.expression(
          side + Expr.datum(middle) + " < 0.5 ? 'left' : 'right'"));
      mark.put("baseline", "middle");
      mark.set("fontSize", Json.node(Json.pixels(context.look.legendSize())));
    } else {
      mark.set("radius", radius(INSIDE, 0));
      mark.put("align", "center");
      mark.put("baseline", "middle");
      contrast(color, slices, rank);
    }
    encoding.set("color", color);
    String text = context.fields.unique("label");
    encoding.set("text", Json.set(Json.object("field", text), "type", "nominal"));
    ObjectNode view = layer.addView(mark, encoding);
    String name = layer.tooltip().text(element.x(), element.xColumn(), sums.x);
    String share = "format(" + share() + ", " + share() + " < 0.0095 ? '.1~%' : '.0%')";
    String shown = named ? "(" + name + ") + '\u2002' + " + share : share;
    if (named && sums.label != null) {
      String label = "(" + sums.labelText() + ")";
      shown = "isValid(" + label + ") ? [" + shown + ", " + label + "] : " + shown;
    }
    ObjectNode write = Transforms.calculate(shown, text);
    view.set("transform", named ? Json.array(write)
        : Json.array(Transforms.filter(share() + " >= " + Expr.number(LEAST_INSIDE)), write));
  }

  private void contrast(ObjectNode color, Discrete slices, String rank) {
    if (!context.fixedRows) {
      return;
    }
    List<Object> dark = new ArrayList<>();
    for (int i = 0; i < slices.values().size(); i++) {
      if (Look.contrast(context.look.color(i)).equals("#ffffff")) {
        dark.add(i);
      }
    }
    color.put("value", "#1f1f1f");
    ObjectNode white = Json.object("test", Expr.indexOf(dark, rank) + " >= 0");
    white.put("value", "#ffffff");
    color.set("condition", white);
  }
}
