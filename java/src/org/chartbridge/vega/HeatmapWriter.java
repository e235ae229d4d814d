// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Channel;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.ElementFacts.Cells;

/** Writes heat maps: cells of categories, of single values, or of bins. */
final class HeatmapWriter extends ElementWriter {
  private static final double EVEN = 1e-6;
  private static final double TEMPLATE_BINS = 20;
  private static final double DARK = 0.29;

  HeatmapWriter(ChartParts parts, ElementFacts element) {
    super(parts, element);
  }

  /** One axis of the cells: the field that tells them apart, and the fields of their ends. */
  private final class Side {
    final boolean horizontal;
    final AxisJson axis;
    final Column column;
    final Cells cells;
    final List<ObjectNode> before = new ArrayList<>();
    String key;
    String from;
    String to;
    boolean binned;

    Side(boolean horizontal) {
      this.horizontal = horizontal;
      axis = horizontal ? x : y;
      column = horizontal ? element.xColumn() : element.yColumn();
      cells = horizontal ? element.xCells() : element.yCells();
      if (!axis.isCategory()) {
        from = context.fields.unique(axis.name() + " from");
        to = context.fields.unique(axis.name() + " to");
        boolean sums = Sums.isAggregate(element.element().color());
        binned = context.knownRows ? cells.bins() != null : sums;
        bin();
      }
    }

    private void bin() {
      if (!binned) {
        return;
      }
      key = from;
      String value = context.fields.of(column);
      before.addAll(context.knownRows
          ? BinSteps.of(cells.bins(), value, from, to)
          : BinSteps.open(context.fields, value, TEMPLATE_BINS, from, to));
    }

    List<String> more() {
      return binned ? List.of(to) : List.of();
    }

    /** Steps that work out the ends of cells that stand for one value each. */
    void addEnds(String field) {
      if (axis.isCategory() || binned) {
        return;
      }
      if (!context.knownRows) {
        spread(field);
        return;
      }
      String value = "+" + Expr.datum(field);
      double[][] edges = cells.edges();
      double half = (edges[0][2] - edges[0][1]) / 2;
      if (isEven(edges, half)) {
        layer.addStep(Transforms.calculate(value + " - " + Expr.number(half), from));
        layer.addStep(Transforms.calculate(value + " + " + Expr.number(half), to));
        return;
      }
      String index = "[indexof(" + Expr.list(column(edges, 0)) + ", " + value + ")]";
      layer.addStep(Transforms.calculate(Expr.list(column(edges, 1)) + index, from));
      layer.addStep(Transforms.calculate(Expr.list(column(edges, 2)) + index, to));
    }

    private void spread(String field) {
      String value = Expr.datum(field);
      String unit = addSmallestGap(field);
      String half = "(isValid(" + Expr.datum(unit) + ") ? " + Expr.datum(unit) + " : 1) / 2";
      layer.addStep(Transforms.calculate("+" + value + " - " + half, from));
      layer.addStep(Transforms.calculate("+" + value + " + " + half, to));
    }

    void encode(ObjectNode encoding, ObjectNode mark, String field) {
      if (axis.isCategory()) {
        encoding.set(axis.name(), axis.encoding(field, column));
        mark.set(horizontal ? "width" : "height", Json.object("band", Json.node(1)));
        return;
      }
      encoding.set(axis.name(), axis.encoding(from, column));
      encoding.set(axis.name() + "2", Json.object("field", to));
    }

    void encodeMiddle(ObjectNode encoding, String field) {
      if (axis.isCategory()) {
        encoding.set(axis.name(), axis.encoding(field, column));
        return;
      }
      String middle = context.fields.unique("middle");
      layer.addStep(Transforms.calculate(
          "(" + Expr.datum(from) + " + " + Expr.datum(to) + ") / 2", middle));
      encoding.set(axis.name(), axis.encoding(middle, column));
    }

    void tell(Tooltip tooltip, String field) {
      Channel channel = horizontal ? element.x() : element.y();
      if (binned) {
        tooltip.add(context.facts.label(channel), tooltip.interval(column, from, to));
      } else {
        tooltip.add(channel, column, field);
      }
    }
  }

  private static boolean isEven(double[][] edges, double half) {
    for (double[] edge : edges) {
      if (Math.abs(edge[2] - edge[0] - half) > half * EVEN
          || Math.abs(edge[0] - edge[1] - half) > half * EVEN) {
        return false;
      }
    }
    return true;
  }

  private static List<Object> column(double[][] edges, int index) {
    List<Object> values = new ArrayList<>();
    for (double[] edge : edges) {
      values.add(edge[index]);
    }
    return values;
  }

  @Override
  MarkLayer write() {
    Side across = new Side(true);
    Side along = new Side(false);
    List<ObjectNode> before = new ArrayList<>(across.before);
    before.addAll(along.before);
    List<String> more = new ArrayList<>(across.more());
    more.addAll(along.more());
    Sums sums = new Sums(context, element, before, across.key, along.key, more);
    layer.addSteps(sums.steps);
    across.addEnds(sums.x);
    along.addEnds(sums.y);
    finish(sums);
    across.tell(layer.tooltip(), sums.x);
    along.tell(layer.tooltip(), sums.y);
    layer.tooltip().addRest(sums);
    ObjectNode mark = mark("rect");
    ObjectNode encoding = Json.object();
    across.encode(encoding, mark, sums.x);
    along.encode(encoding, mark, sums.y);
    fade(mark, "fillOpacity");
    colors.encode(element, sums, mark, encoding);
    layer.tooltip().show(encoding);
    layer.tooltip().describe(mark);
    layer.addMarks(mark, encoding);
    layer.setPickFields(sums.keys());
    if (sums.label != null) {
      addLabels(sums, across, along);
    }
    return layer;
  }

  private void addLabels(Sums sums, Side across, Side along) {
    ObjectNode mark = Json.object("type", "text");
    mark.put("align", "center");
    mark.put("baseline", "middle");
    ObjectNode encoding = Json.object();
    across.encodeMiddle(encoding, sums.x);
    along.encodeMiddle(encoding, sums.y);
    ObjectNode color = Json.object("value", "#1f1f1f");
    if (!colors.hasSeveralScales()) {
      ObjectNode white = Json.object(
          "test", "luminance(scale('color', " + Expr.datum(sums.color) + ")) < " + DARK);
      white.put("value", "#ffffff");
      color.set("condition", white);
    }
    encoding.set("color", color);
    labelView(sums, mark, encoding);
  }
}
