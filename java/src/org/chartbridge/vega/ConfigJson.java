// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.Locale;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.draw.Look;

/** Writes the style: fonts, sizes, colours and line widths. */
final class ConfigJson {
  private final Look look;
  private final Legend legend;

  ConfigJson(Context context) {
    look = context.look;
    legend = context.chart.legend();
  }

  ObjectNode json() {
    ObjectNode config = Json.object("font", font());
    config.set("view", view());
    config.set("axis", axis());
    config.set("legend", legend());
    config.set("header", header());
    config.set("text", text());
    ObjectNode ramp = Json.object("scheme", Json.array(look.sequential()));
    ObjectNode range = Json.object("ramp", ramp);
    config.set("range", Json.set(range, "heatmap", ramp.deepCopy()));
    return config;
  }

  /** The style's font, and what looks much like it where it is not at hand. */
  private String font() {
    String family = look.fontFamily();
    boolean generic = family.matches("[A-Za-z-]+");
    return (generic ? family : "\"" + family.replaceAll("[\"\\\\]", "") + "\"")
        + ", Arial, Helvetica, sans-serif";
  }

  private static JsonNode pixels(double length) {
    return Json.node(Json.pixels(length));
  }

  private ObjectNode view() {
    ObjectNode view = Json.object("stroke", null);
    return look.plotBackground() == null ? view : Json.set(view, "fill", look.plotBackground());
  }

  private ObjectNode axis() {
    ObjectNode axis = Json.object("ticks", false);
    axis.put("labelColor", look.mutedText());
    axis.set("labelFontSize", pixels(look.tickSize()));
    axis.set("labelPadding", pixels(5 * look.factor()));
    axis.put("titleColor", look.text());
    axis.set("titleFontSize", pixels(look.axisTitleSize()));
    axis.put("titleFontWeight", "normal");
    axis.set("titlePadding", pixels(8 * look.factor()));
    axis.put("domainColor", look.axisColor());
    axis.set("domainWidth", pixels(look.axisWidth()));
    axis.put("gridColor", look.gridColor());
    axis.set("gridWidth", pixels(look.gridWidth()));
    return axis;
  }

  private ObjectNode legend() {
    ObjectNode node = Json.object();
    LegendPosition position = legend.position();
    boolean placed = position != null && position != LegendPosition.NONE;
    node.put("orient", placed ? position.name().toLowerCase(Locale.ROOT) : "right");
    if (position == LegendPosition.TOP || position == LegendPosition.BOTTOM) {
      node.put("titleOrient", "left");
    }
    node.put("labelColor", look.text());
    node.set("labelFontSize", pixels(look.legendSize()));
    node.put("titleColor", look.text());
    node.set("titleFontSize", pixels(look.legendSize()));
    node.put("titleFontWeight", "bold");
    node.put("labelLimit", 240);
    node.put("symbolOpacity", 1);
    node.put("titleLimit", 240);
    // The caption is a legend, too, which lies below others at the bottom.
    node.set("layout", Json.expression("{offset: 18, margin: 12, direction: 'horizontal',"
        + " left: {direction: 'vertical'}, right: {direction: 'vertical'},"
        + " bottom: {anchor: 'start', direction: 'vertical'}, top: {anchor: 'start'}}"));
    return node;
  }

  private ObjectNode header() {
    ObjectNode header = Json.object("labelAnchor", "start");
    header.put("labelColor", look.text());
    header.set("labelFontSize", pixels(look.headingSize()));
    header.put("labelFontWeight", "bold");
    header.set("title", Json.node(null));
    return header;
  }

  private ObjectNode text() {
    ObjectNode text = Json.object("fontSize", pixels(look.labelSize()));
    return Json.set(text, "color", look.text());
  }
}
