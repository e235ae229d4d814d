// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/** Writes the encodings of one axis: its scale, its guide, and the fields that stand along it. */
final class AxisJson {
  private static final double GROUPED_BARS = 0.8;
  private static final double SINGLE_BARS = 0.7;
  private static final double GROUPED_BOXES = 0.75;
  private static final double SINGLE_BOXES = 0.55;
  private static final double SLANT = 1.9;

  private final Context context;
  private final boolean horizontal;
  private final ScaleKind kind;
  private final Axis axis;
  private final List<ElementFacts> elements;
  private final Look look;

  AxisJson(Context context, boolean horizontal) {
    this.context = context;
    this.horizontal = horizontal;
    kind = context.facts.scale(horizontal);
    axis = horizontal ? context.chart.x() : context.chart.y();
    elements = context.facts.elements();
    look = context.look;
  }

  String name() {
    return horizontal ? "x" : "y";
  }

  ScaleKind kind() {
    return kind;
  }

  boolean isReversed() {
    return axis.reversed();
  }

  boolean isCategory() {
    return kind == ScaleKind.CATEGORY;
  }

  /** Whether marks can lie beyond its ends. */
  boolean clips() {
    return axis.min() != null || axis.max() != null;
  }

  private Channel channel(ElementFacts element) {
    return horizontal ? element.x() : element.y();
  }

  private Column column(ElementFacts element) {
    return horizontal ? element.xColumn() : element.yColumn();
  }

  /** The encoding of a field that holds places on this axis. */
  ObjectNode encoding(String field, Column column) {
    ObjectNode node = Json.object("field", field);
    node.put("type", type(column));
    if (isCategory() && column != null && !context.fixedRows) {
      context.discrete(column).sort(node);
    }
    node.set("title", title());
    node.set("scale", scale());
    node.set("axis", guide());
    return node;
  }

  private Object titleText() {
    String title = context.facts.axisTitle(horizontal);
    return title.isBlank() ? null : title;
  }

  private JsonNode title() {
    return Json.node(titleText());
  }

  private String type(Column column) {
    return switch (kind) {
      case CATEGORY -> column == null ? "nominal" : context.discrete(column).type();
      case TIME -> "temporal";
      default -> "quantitative";
    };
  }

  /** The share of a category's room that its widest marks take. */
  double band() {
    double band = 0;
    for (ElementFacts element : elements) {
      if (element.horizontal() != horizontal) {
        band = Math.max(band, band(element));
      }
      if (element.element().kind() == ElementKind.HEATMAP) {
        band = 1;
      }
    }
    return band == 0 ? SINGLE_BARS : band;
  }

  /** The share of a category's room that the marks of an element take together. */
  double band(ElementFacts element) {
    boolean groups = Dodging.groups(context, element);
    return switch (element.element().kind()) {
      case BAR -> groups ? GROUPED_BARS : SINGLE_BARS;
      case BOX -> groups ? GROUPED_BOXES : SINGLE_BOXES;
      default -> 0;
    };
  }

  private ObjectNode scale() {
    ObjectNode scale = Json.object();
    switch (kind) {
      case CATEGORY -> categories(scale);
      case LOG -> scale.put("type", "log");
      case TIME -> scale.put("type", "utc");
      default -> scale.put("type", "linear");
    }
    if (!isCategory()) {
      ends(scale);
    }
    if (axis.reversed()) {
      scale.put("reverse", true);
    }
    return scale;
  }

  private void categories(ObjectNode scale) {
    scale.put("type", "band");
    if (context.fixedRows && !context.isFree(horizontal)) {
      scale.set("domain", Json.array(List.copyOf(categories())));
    }
    double free = 1 - band();
    scale.set("paddingInner", Json.node(Json.pixels(free)));
    scale.set("paddingOuter", Json.node(Json.pixels(free) / 2));
  }

  private Set<Object> categories() {
    Set<Object> values = new LinkedHashSet<>();
    ColumnKind found = null;
    for (ElementFacts element : elements) {
      Column column = column(element);
      if (column == null || isCountOrNone(element)) {
        values.add("");
        continue;
      }
      if (found != null && (found == ColumnKind.NUMBER) != (column.kind() == ColumnKind.NUMBER)) {
        throw new ChartException("Axis " + name() + ": categories that are numbers here and texts"
            + " there have no form in Vega-Lite; declare both columns as category.");
      }
      found = column.kind();
      values.addAll(context.discrete(column).values());
    }
    return values;
  }

  private boolean isCountOrNone(ElementFacts element) {
    return channel(element) == null || channel(element).aggregate() == Aggregate.COUNT;
  }

  private void ends(ObjectNode scale) {
    if (context.fixedRows && !context.isFree(horizontal)) {
      double[] ends = context.facts.ends(horizontal);
      String both = "[" + Expr.number(ends[0]) + ", " + Expr.number(ends[1]) + "]";
      // As numbers, ends of times would be taken for others than the same ends of ranges of times.
      boolean time = kind == ScaleKind.TIME;
      scale.set("domain", time ? Json.expression(both) : Json.array(ends[0], ends[1]));
      scale.put("nice", false);
      if (kind == ScaleKind.LINEAR) {
        scale.put("zero", false);
      }
      return;
    }
    boolean baseline = elements.stream().anyMatch(this::growsAlong);
    boolean edges = elements.stream().anyMatch(this::fillsAlong);
    boolean limits = axis.min() != null || axis.max() != null;
    if (axis.min() != null) {
      scale.set("domainMin", Json.node(axis.min()));
    }
    if (axis.max() != null) {
      scale.set("domainMax", Json.node(axis.max()));
    }
    if (kind == ScaleKind.LINEAR) {
      scale.put("zero", baseline && !limits);
    }
    boolean round = kind != ScaleKind.TIME && (!horizontal || baseline) && !edges && !limits;
    scale.put("nice", round);
    if (!round && !edges && !limits) {
      scale.set("padding", Json.node(Json.pixels(look.markerSize() * 1.5)));
    }
  }

  /** Whether marks grow from zero along this axis. */
  private boolean growsAlong(ElementFacts element) {
    return growsAlong(element, horizontal);
  }

  /** Whether marks of an element grow from zero along an axis. */
  static boolean growsAlong(ElementFacts element, boolean horizontal) {
    return switch (element.element().kind()) {
      case BAR, HISTOGRAM -> element.horizontal() == horizontal;
      case AREA -> !horizontal;
      default -> false;
    };
  }

  /** Whether marks fill this axis from end to end. */
  private boolean fillsAlong(ElementFacts element) {
    return switch (element.element().kind()) {
      case AREA -> horizontal;
      case HEATMAP -> true;
      default -> false;
    };
  }

  private ObjectNode guide() {
    ObjectNode guide = Json.object();
    guide.set("title", title());
    guide.put("grid", axis.grid() && look.gridWidth() > 0 && !isCategory());
    boolean lies = elements.stream().anyMatch(ElementFacts::horizontal);
    boolean cells = elements.stream().allMatch(
        element -> element.element().kind() == ElementKind.HEATMAP);
    guide.put("domain", (horizontal ? !lies && !cells : lies) && !context.crossesZero(!horizontal));
    if (elements.stream().anyMatch(this::growsAlong)) {
      guide.set("gridColor", zeroLine());
    }
    if (isCategory()) {
      categoryTexts(guide);
    } else {
      texts(guide);
    }
    return guide;
  }

  /** The line at zero stands out, since marks grow from there. */
  private ObjectNode zeroLine() {
    ObjectNode condition = Json.object("test", "datum.value === 0");
    condition.put("value", look.axisColor());
    return Json.set(Json.object("condition", condition), "value", look.gridColor());
  }

  private void categoryTexts(ObjectNode guide) {
    String text = null;
    for (ElementFacts element : elements) {
      if (column(element) != null && text == null) {
        text = context.discrete(column(element)).labelExpression();
      }
    }
    if (text != null) {
      guide.put("labelExpr", text);
    }
    if (horizontal) {
      guide.put("labelAngle", angle());
    }
    guide.put("labelLimit", 200);
  }

  /** How texts below the axis are turned so that they have room. */
  private int angle() {
    double width = context.facts.panelSize()[0];
    Set<Object> values = categories();
    double slot = width / Math.max(1, values.size());
    double widest = 0;
    for (Object value : values) {
      widest = Math.max(widest, look.tickWidth(value.toString()));
    }
    if (!context.knownRows || widest <= slot - look.tickSize() * 0.4) {
      return 0;
    }
    return slot >= look.tickSize() * SLANT ? -45 : -90;
  }

  private void texts(ObjectNode guide) {
    String pattern = axis.format();
    String where = "Axis " + name();
    if (pattern != null && !pattern.isEmpty()) {
      if (kind == ScaleKind.TIME) {
        guide.put("format", TimeFormatJson.specifier(where, pattern));
      } else {
        guide.put(
            "labelExpr", NumberFormatJson.expression(where, pattern, "datum.value"));
      }
    } else if (context.facts.shares(horizontal)) {
      guide.put("format", "~%");
    }
    if (kind == ScaleKind.LOG) {
      logTexts(guide);
      return;
    }
    guide.put("labelFlush", false);
    guide.put("labelOverlap", "greedy");
    guide.set("tickCount", Json.expression(ticks()));
  }

  /** Of the many ticks of a log scale only round ones are shown. */
  private void logTexts(ObjectNode guide) {
    String power = "pow(10, floor(log(datum.value) / LN10 + 1e-9))";
    String mantissa = "round(datum.value / " + power + " * 1e6) / 1e6";
    String round = "indexof(" + mantissas() + ", " + mantissa + ") >= 0";
    String text = guide.has("labelExpr") ? guide.get("labelExpr").textValue()
        : "datum.value < 1e6 && datum.value >= 1e-4 ? " + Expr.numberText("datum.value")
            + " : format(datum.value, '.0e')";
    guide.put("labelExpr", round + " ? " + text + " : ''");
    guide.put("labelOverlap", false);
    ObjectNode shown = Json.object("test", round);
    shown.put("value", 1);
    guide.set("gridOpacity", Json.set(Json.object("condition", shown), "value", 0));
  }

  private String mantissas() {
    double[] ends = context.facts.ends(horizontal);
    if (!context.knownRows || !isFine()) {
      return "[1]";
    }
    return ends[1] / ends[0] < 10 ? "[1, 2, 3, 4, 5, 6, 7, 8, 9]" : "[1, 2, 5]";
  }

  /** Whether there is room for ticks at 2 and 5 between powers of ten. */
  private boolean isFine() {
    double[] ends = context.facts.ends(horizontal);
    double[] size = context.facts.panelSize();
    double decade = (horizontal ? size[0] : size[1]) / Math.log10(ends[1] / ends[0]);
    double room = horizontal ? 60 * look.factor() : look.tickSize() * 1.4;
    return decade * Math.log10(2) >= room
        && Math.log10(ends[1] / ends[0]) <= 4;
  }

  /** The conditions that a place within the limits meets; null when there are none. */
  String within(String field) {
    String value = Expr.datum(field);
    String low = axis.min() == null ? null : value + " >= " + Expr.number(axis.min());
    String high = axis.max() == null ? null : value + " <= " + Expr.number(axis.max());
    if (low == null || high == null) {
      return low == null ? high : low;
    }
    return low + " && " + high;
  }

  /** As many ticks as a picture has. */
  private String ticks() {
    String length = context.panelPrefix();
    int apart = kind == ScaleKind.TIME ? 80 : 60;
    return horizontal ? "clamp(floor(" + length + "width / " + apart + "), 2, 12)"
                      : "clamp(floor(" + length + "height / 42), 2, 8)";
  }
}
