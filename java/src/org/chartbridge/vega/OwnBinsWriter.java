// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import org.chartbridge.chart.Bin;
import org.chartbridge.draw.ElementFacts;

/** Writes a histogram that brings its bins; they are rows of its own, the same in each panel. */
final class OwnBinsWriter extends ElementWriter {
  private static final double NARROW = 4;
  private static final double HAIR = 0.5;
  private static final String FROM = "bin from";
  private static final String TO = "bin to";
  private static final String VALUE = "bin value";

  OwnBinsWriter(ChartParts parts, ElementFacts element) {
    super(parts, element);
  }

  @Override
  MarkLayer write() {
    layer.setData(Json.object("values", rows()));
    layer.addSteps(colors.seriesSteps(element));
    ObjectNode mark = mark("rect");
    ObjectNode encoding = Json.object();
    encoding.set("x", x.encoding(FROM, null));
    encoding.set("x2", Json.object("field", TO));
    encoding.set("y", y.encoding(VALUE, null));
    encodeBaseline(encoding);
    fade(mark, "fillOpacity");
    if (isWide()) {
      mark.set("xOffset", Json.node(HAIR));
      mark.set("x2Offset", Json.node(-HAIR));
    }
    colors.encode(element, null, mark, encoding);
    Tooltip tooltip = layer.tooltip();
    String xTitle = context.facts.axisTitle(true);
    tooltip.add(xTitle.isEmpty() ? "Bin" : xTitle, tooltip.interval(null, FROM, TO));
    String yTitle = context.facts.axisTitle(false);
    tooltip.add(yTitle.isEmpty() || !alone() ? "Value" : yTitle,
        Expr.numberText(Expr.datum(VALUE)));
    tooltip.show(encoding);
    tooltip.describe(mark);
    layer.addMarks(mark, encoding);
    layer.setPickFields(List.of(FROM));
    return layer;
  }

  private boolean alone() {
    return context.facts.elements().stream().allMatch(e -> e.element().hasOwnBins());
  }

  private ArrayNode rows() {
    ArrayNode rows = Json.array();
    for (Bin bin : element.element().ownBins()) {
      ObjectNode row = Json.object(FROM, bin.from());
      Json.set(row, TO, bin.to());
      rows.add(Json.set(row, VALUE, bin.value()));
    }
    return rows;
  }

  private boolean isWide() {
    List<Bin> bins = element.element().ownBins();
    double[] ends = context.facts.ends(true);
    double narrowest = Double.POSITIVE_INFINITY;
    for (Bin bin : bins) {
      narrowest = Math.min(narrowest, bin.to() - bin.from());
    }
    return narrowest / (ends[1] - ends[0]) * context.facts.panelSize()[0] >= NARROW;
  }
}
