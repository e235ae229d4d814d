// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import java.util.Set;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/** Writes what readers see of an axis: title, line, grid, ticks and their texts. */
final class GuideJson {
  private static final double SLANT = 1.9;

  private final Context context;
  private final AxisJson owner;
  private final boolean horizontal;
  private final ScaleKind kind;
  private final Axis axis;
  private final List<ElementFacts> elements;
  private final Look look;

  GuideJson(Context context, AxisJson owner) {
    this.context = context;
    this.owner = owner;
    horizontal = owner.isHorizontal();
    kind = owner.kind();
    axis = owner.axis();
    elements = context.facts.elements();
    look = context.look;
  }

  private boolean growsAlong(ElementFacts element) {
    return AxisJson.growsAlong(element, horizontal);
  }

  ObjectNode json() {
    ObjectNode guide = Json.object();
    String title = context.facts.axisTitle(horizontal);
    guide.set("title", Json.node(title.isBlank() ? null : title));
    guide.put("grid", axis.grid() && look.gridWidth() > 0 && !owner.isCategory());
    boolean lies = elements.stream().anyMatch(ElementFacts::horizontal);
    boolean cells = elements.stream().allMatch(
        element -> element.element().kind() == ElementKind.HEATMAP);
    guide.put("domain", (horizontal ? !lies && !cells : lies) && !context.crossesZero(!horizontal));
    if (elements.stream().anyMatch(this::growsAlong)) {
      guide.set("gridColor", zeroLine());
    }
    if (owner.isCategory()) {
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
      if (owner.column(element) != null && text == null) {
        text = context.discrete(owner.column(element)).labelExpression();
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
    Set<Object> values = owner.categories();
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

  private void format(ObjectNode guide, String pattern) {
    String where = "Axis " + owner.name();
    try {
      if (kind == ScaleKind.TIME) {
        guide.put("format", TimeFormatJson.specifier(where, pattern));
      } else {
        guide.put("labelExpr", NumberFormatJson.expression(where, pattern, "datum.value"));
      }
    } catch (ChartException e) {
      throw context.chart.error(owner.name() + ".format", e.getMessage(), e);
    }
  }

  private void texts(ObjectNode guide) {
    String pattern = axis.format();
    if (pattern != null && !pattern.isEmpty()) {
      format(guide, pattern);
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

  /** As many ticks as a picture has. */
  private String ticks() {
    String length = context.panelPrefix();
    int apart = kind == ScaleKind.TIME ? 80 : 60;
    return horizontal ? "clamp(floor(" + length + "width / " + apart + "), 2, 12)"
                      : "clamp(floor(" + length + "height / 42), 2, 8)";
  }
}
