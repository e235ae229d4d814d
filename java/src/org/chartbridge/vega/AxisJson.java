// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/** Writes the encodings of one axis: its scale, and the fields that stand along it. */
final class AxisJson {
  private static final double GROUPED_BARS = 0.8;
  private static final double SINGLE_BARS = 0.7;
  private static final double GROUPED_BOXES = 0.75;
  private static final double SINGLE_BOXES = 0.55;

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

  boolean isHorizontal() {
    return horizontal;
  }

  /** What the chart says about it. */
  Axis axis() {
    return axis;
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

  /** The column that an element shows along this axis; null for none. */
  Column column(ElementFacts element) {
    return horizontal ? element.xColumn() : element.yColumn();
  }

  /** The encoding of a field that holds places on this axis. */
  ObjectNode encoding(String field, Column column) {
    ObjectNode node = Json.object("field", field);
    node.put("type", type(column));
    if (isCategory() && column != null && !context.fixedRows) {
      context.discrete(column).sort(node);
    }
    node.set("scale", scale());
    node.set("axis", new GuideJson(context, this).json());
    return node;
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

  /** The categories along this axis, in the order to show them. */
  Set<Object> categories() {
    Set<Object> values = new LinkedHashSet<>();
    ColumnKind found = null;
    for (ElementFacts element : elements) {
      Column column = column(element);
      if (column == null || isCountOrNone(element)) {
        values.add("");
        continue;
      }
      if (found != null && (found == ColumnKind.NUMBER) != (column.kind() == ColumnKind.NUMBER)) {
        throw context.chart.error(name(), "Axis " + name() + ": categories that are numbers here"
            + " and texts there have no form in Vega-Lite; declare both columns as category.");
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
}
