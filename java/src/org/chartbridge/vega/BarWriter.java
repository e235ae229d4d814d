// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ChartException;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/** Writes bars and histograms: side by side, on top of each other, or over each other. */
final class BarWriter extends ElementWriter {
  private static final double SEE_THROUGH = 0.6;
  private static final double NARROW = 4;
  private static final double HAIR = 0.5;
  private static final double TEMPLATE_BINS = 20;

  private final boolean histogram;
  private final Arrangement arrangement;
  private final Dodging dodging;
  private Sums sums;
  private Dodging.Part part;
  /** The fields of a bar's ends. */
  private String p0;
  private String p1;
  private String v0;
  private String v1;

  BarWriter(ChartParts parts, ElementFacts element, boolean histogram) {
    super(parts, element);
    this.histogram = histogram;
    arrangement = element.element().arrangement();
    dodging = new Dodging(context, element);
  }

  private boolean stacks() {
    return arrangement == Arrangement.STACKED || arrangement == Arrangement.FILLED;
  }

  private boolean bands() {
    return positionAxis().isCategory();
  }

  @Override
  MarkLayer write() {
    sums = histogram ? binned() : new Sums(context, element);
    layer.addSteps(sums.steps);
    boolean parts = arrangement == Arrangement.GROUPED;
    part = parts ? dodging.part(sums, position(sums))
                 : new Dodging.Part(List.of(), "0", "1");
    v1 = measure(sums);
    if (stacks()) {
      stack();
    }
    if (histogram) {
      partsOfBins();
    } else if (!bands()) {
      p0 = context.fields.unique("from");
      p1 = context.fields.unique("to");
      spread(position(sums), positionAxis().band(element) == 0 ? 0.7 : band(), part, p0, p1);
    } else if (dodging.splits(sums)) {
      layer.addSteps(part.steps());
    }
    finish(sums);
    tooltip();
    ObjectNode mark = mark(bands() ? "bar" : "rect");
    ObjectNode encoding = Json.object();
    look(mark);
    place(mark, encoding, false);
    encodeMeasure(encoding, stacks() ? v0 : v1);
    if (stacks()) {
      encodeMeasureEnd(encoding, v1);
    } else {
      encodeBaseline(encoding);
    }
    colors.encode(element, sums, mark, encoding);
    order(encoding);
    layer.tooltip().show(encoding);
    layer.tooltip().describe(mark);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.keys());
    if (sums.label != null) {
      label();
    }
    return layer;
  }

  private double band() {
    return positionAxis().band(element);
  }

  private Sums binned() {
    String value = context.fields.of(element.positionColumn());
    p0 = context.fields.unique("bin start");
    p1 = context.fields.unique("bin end");
    List<ObjectNode> steps = context.knownRows
        ? BinSteps.of(element.bins(), value, p0, p1)
        : BinSteps.open(context.fields, value, templateBins(), p0, p1);
    boolean lies = element.horizontal();
    return new Sums(context, element, steps, lies ? null : p0, lies ? p0 : null, List.of(p1));
  }

  private double templateBins() {
    Integer given = element.element().bins();
    return given == null ? TEMPLATE_BINS : given;
  }

  /** Bars side by side share the width of their bin. */
  private void partsOfBins() {
    if (!Dodging.groups(context, element)) {
      return;
    }
    String from = context.fields.unique("from");
    String to = context.fields.unique("to");
    String width = "(" + Expr.datum(p1) + " - " + Expr.datum(p0) + ")";
    layer.addSteps(part.steps());
    layer.addStep(Transforms.calculate(
        Expr.datum(p0) + " + " + width + " * " + part.from(), from));
    layer.addStep(
        Transforms.calculate(Expr.datum(from) + " + " + width + " * " + part.width(), to));
    p0 = from;
    p1 = to;
  }

  private void stack() {
    v0 = context.fields.unique("lower");
    String upper = context.fields.unique("upper");
    List<String> by = new ArrayList<>(context.panelFields());
    by.add(histogram ? p0 : position(sums));
    boolean filled = arrangement == Arrangement.FILLED;
    layer.addStep(Transforms.stack(v1, by, sums.rank, v0, upper, filled));
    v1 = upper;
  }

  private void look(ObjectNode mark) {
    boolean through = histogram && arrangement == Arrangement.OVERLAID
        && element.element().color() != null && opacity() >= 1;
    if (through) {
      mark.put("fillOpacity", SEE_THROUGH);
    } else {
      fade(mark, "fillOpacity");
    }
    if (histogram && isWide()) {
      mark.set(p() + "Offset", Json.node(HAIR));
      mark.set(p() + "2Offset", Json.node(-HAIR));
    }
  }

  /** Whether bins are so wide that a hair of ground between them does no harm. */
  private boolean isWide() {
    if (!context.knownRows) {
      return true;
    }
    boolean lies = element.horizontal();
    double[] ends = context.facts.ends(!lies);
    double room = context.facts.panelSize()[lies ? 1 : 0];
    return element.bins().width() / (ends[1] - ends[0]) * room >= NARROW;
  }

  private void place(ObjectNode mark, ObjectNode encoding, boolean text) {
    if (!bands()) {
      encodePosition(encoding, p0);
      if (!text) {
        encodePositionEnd(encoding, p1);
      }
      return;
    }
    encodePosition(encoding, position(sums));
    String size = element.horizontal() ? "height" : "width";
    double relative = band() / positionAxis().band();
    if (dodging.splits(sums)) {
      String room = context.bandwidth(!element.horizontal()) + " * " + Expr.number(relative);
      if (!text) {
        mark.set(size, Json.expression(room + " * " + part.width()));
      }
      mark.set(p() + "Offset", Json.expression(
          room + " * (" + part.from() + " + " + part.width() + " / 2 - 0.5)"));
    } else if (Dodging.groups(context, element)) {
      encoding.set(p() + "Offset", offset());
    } else if (!text) {
      mark.set(size, Json.object("band", Json.node(relative)));
    }
  }

  private ObjectNode offset() {
    Discrete groups = context.discrete(element.colorColumn());
    ObjectNode offset = Json.object("field", sums.color);
    offset.put("type", groups.type());
    if (context.fixedRows) {
      offset.set("scale", Json.object("domain", groups.values()));
    } else {
      groups.sort(offset);
    }
    return offset;
  }

  /** Over each other, the largest bars stand behind the others. */
  private void order(ObjectNode encoding) {
    if (arrangement != Arrangement.OVERLAID) {
      return;
    }
    if (histogram) {
      if (sums.rank != null) {
        encoding.set("order", Json.set(Json.object("field", sums.rank), "type", "quantitative"));
      }
      return;
    }
    String size = context.fields.unique("length");
    layer.addStep(Transforms.calculate("abs(" + Expr.datum(v1) + ")", size));
    ObjectNode order = Json.object("field", size);
    order.put("type", "quantitative");
    encoding.set("order", Json.set(order, "sort", "descending"));
  }

  private void tooltip() {
    Tooltip tooltip = layer.tooltip();
    if (!histogram) {
      tooltip.addAll(sums);
    } else {
      String bin = tooltip.interval(element.positionColumn(), element.horizontal() ? sums.y
          : sums.x, binEnd());
      String label = context.facts.label(element.position());
      if (element.horizontal()) {
        tooltip.add(element.x(), element.xColumn(), sums.x);
        tooltip.add(label, bin);
      } else {
        tooltip.add(label, bin);
        tooltip.add(element.y(), element.yColumn(), sums.y);
      }
      tooltip.addRest(sums);
    }
    if (arrangement == Arrangement.FILLED) {
      tooltip.add("Share", Expr.shareText(
          "(" + Expr.datum(v1) + " - " + Expr.datum(v0) + ")"));
    }
  }

  private String binEnd() {
    return sums.keys().stream().filter(key -> key.startsWith("bin end")).findFirst()
        .orElseThrow(() -> new ChartException("bins without an end"));
  }

  private void label() {
    String at = context.fields.unique("label at");
    String inside = v0 == null ? "false" : Expr.datum(v0) + " !== 0";
    String place = v0 == null ? Expr.datum(v1) : inside + " ? (" + Expr.datum(v0) + " + "
        + Expr.datum(v1) + ") / 2 : " + Expr.datum(v1);
    layer.addStep(Transforms.calculate(place, at));
    ObjectNode mark = Json.object("type", "text");
    String below = Expr.datum(v1) + " < 0";
    double gap = LABEL_GAP * context.look.factor();
    if (element.horizontal()) {
      mark.set("align", Json.expression(inside + " ? 'center' : " + below
          + " ? 'right' : 'left'"));
      mark.set("dx", Json.expression(shift(inside, below, -gap, gap)));
      mark.put("baseline", "middle");
    } else {
      mark.set("baseline", Json.expression(inside + " ? 'middle' : " + below
          + " ? 'top' : 'bottom'"));
      mark.set("dy", Json.expression(shift(inside, below, gap, -gap)));
    }
    ObjectNode encoding = Json.object();
    if (!bands()) {
      String middle = context.fields.unique("middle");
      layer.addStep(Transforms.calculate(
          "(" + Expr.datum(p0) + " + " + Expr.datum(p1) + ") / 2", middle));
      encodePosition(encoding, middle);
    } else {
      place(mark, encoding, true);
    }
    encodeMeasure(encoding, at);
    encoding.set("color", ink(inside));
    labelView(sums, mark, encoding);
  }

  private static String shift(String inside, String below, double under, double over) {
    return inside + " ? 0 : " + below + " ? " + Expr.number(Json.pixels(under)) + " : "
        + Expr.number(Json.pixels(over));
  }

  /** Within a dark bar a label is white. */
  private ObjectNode ink(String inside) {
    ObjectNode ink = Json.object("value", context.look.text());
    if (v0 == null || sums.rank == null || !context.fixedRows) {
      return ink;
    }
    List<Object> dark = new ArrayList<>();
    List<Object> light = new ArrayList<>();
    for (int i = 0; i < context.discrete(element.colorColumn()).values().size(); i++) {
      boolean white = Look.contrast(context.look.color(i)).equals("#ffffff");
      (white ? dark : light).add(i);
    }
    ObjectNode white = Json.object("test", inside + " && " + Expr.indexOf(dark, sums.rank)
        + " >= 0");
    white.put("value", "#ffffff");
    ObjectNode black = Json.object("test", inside + " && " + Expr.indexOf(light, sums.rank)
        + " >= 0");
    black.put("value", "#1f1f1f");
    return Json.set(ink, "condition", Json.array(white, black));
  }
}
