// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import org.chartbridge.chart.Titles;
import org.chartbridge.draw.Look;

/** Writes the texts around a chart. */
final class TitleJson {
  private static final String CAPTION = "caption";

  private final Titles titles;
  private final Look look;

  TitleJson(Context context) {
    titles = context.chart.titles();
    look = context.look;
  }

  /** Headline and subtitle; null when there is neither. */
  ObjectNode title() {
    List<String> text = look.titleLines(titles.title());
    List<String> subtitle = look.subtitleLines(titles.subtitle());
    if (text.isEmpty() && subtitle.isEmpty()) {
      return null;
    }
    ObjectNode title = Json.object("text", text.isEmpty() ? Json.node("") : Json.array(text));
    title.put("anchor", "start");
    title.put("frame", "bounds");
    title.put("color", look.text());
    title.set("fontSize", Json.node(Json.pixels(look.titleSize())));
    title.put("fontWeight", "bold");
    title.set("offset", Json.node(Json.pixels(14 * look.factor())));
    if (!subtitle.isEmpty()) {
      title.set("subtitle", Json.array(subtitle));
      title.put("subtitleColor", look.mutedText());
      title.set("subtitleFontSize", Json.node(Json.pixels(look.subtitleSize())));
      title.set("subtitlePadding", Json.node(Json.pixels(4 * look.factor())));
    }
    return title;
  }

  /**
   * A layer that writes the caption; null when there is none. A document has no place for one, so
   * it is the title of a legend without entries, which every layout keeps clear of all else.
   */
  ObjectNode caption() {
    List<String> lines = look.captionLines(titles.caption());
    if (lines.isEmpty()) {
      return null;
    }
    ObjectNode legend = Json.object("title", Json.array(lines));
    legend.set("values", Json.array());
    legend.put("orient", "bottom");
    legend.put("titleAnchor", "start");
    legend.put("titleOrient", "top");
    legend.put("titleColor", look.mutedText());
    legend.set("titleFontSize", Json.node(Json.pixels(look.captionSize())));
    legend.put("titleFontWeight", "normal");
    legend.put("titleLimit", 0);
    ObjectNode row = Json.object(CAPTION, "");
    ObjectNode layer = Json.object("data", Json.object("values", Json.array(row)));
    ObjectNode mark = Json.object("type", "point");
    mark.put("aria", false);
    layer.set("mark", Json.set(mark, "opacity", 0));
    ObjectNode shape = Json.object("field", CAPTION);
    shape.put("type", "nominal");
    shape.set("scale", Json.object("range", Json.array("circle")));
    shape.set("legend", legend);
    layer.set("encoding", Json.object("shape", shape));
    return layer;
  }
}
