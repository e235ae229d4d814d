// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.function.IntFunction;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ElementFacts;
import org.chartbridge.draw.Look;

/**
 * Writes what colours, dashes and shapes say, and the legends that explain it. Elements that colour
 * by the same column share their colours; elements without one differ by what they measure.
 */
final class ColorJson {
  private static final List<String> SHAPES =
      List.of("circle", "square", "triangle-up", "diamond", "triangle-down", "cross");
  /** So many variants of the palette are listed where the number of groups is not known. */
  private static final int ROUNDS = 3;

  private final Context context;
  private final Look look;
  private final List<ElementFacts> elements;
  private final Map<String, Integer> series = new LinkedHashMap<>();
  private final Set<Object> scales = new LinkedHashSet<>();
  private final Set<Object> explained = new LinkedHashSet<>();
  private final String seriesField;
  private boolean seriesShown;

  ColorJson(Context context) {
    this.context = context;
    look = context.look;
    elements = context.facts.elements();
    boolean legends = false;
    for (ElementFacts element : elements) {
      if (element.element().color() == null) {
        if (element.element().kind() != ElementKind.PIE) {
          series.putIfAbsent(element.series(), series.size());
        }
      } else {
        scales.add(key(element));
        legends |= !repeats(element);
      }
    }
    seriesShown = series.size() > 1 || series.size() == 1 && legends;
    seriesShown &= context.chart.legend().position() != LegendPosition.NONE;
    if (seriesShown) {
      scales.add(series);
    }
    seriesField = seriesShown ? context.fields.unique("series") : null;
  }

  /** Whether the colours of some elements mean something else than those of others. */
  boolean hasSeveralScales() {
    return scales.size() > 1;
  }

  private static Object key(ElementFacts element) {
    return List.of(String.valueOf(element.element().color().column()),
        element.element().color().aggregate(), element.continuousColor());
  }

  private boolean repeats(ElementFacts element) {
    return element.repeatsAxis() && context.chart.legend().position() == null;
  }

  /** Whether the colours of an element tell groups apart, rather than numbers. */
  static boolean tellsGroups(ElementFacts element) {
    return element.element().color() != null && !element.continuousColor();
  }

  /** The field by whose legend the marks of an element can be picked; null when there is none. */
  String legendField(ElementFacts element, Sums sums) {
    if (context.chart.legend().position() == LegendPosition.NONE) {
      return null;
    }
    if (element.element().kind() == ElementKind.PIE) {
      return null;
    }
    if (element.element().color() == null) {
      return seriesShown ? seriesField : null;
    }
    boolean single = context.fixedRows && tellsGroups(element)
        && context.discrete(element.colorColumn()).values().size() < 2;
    return element.continuousColor() || repeats(element) || single ? null : sums.color;
  }

  /** Adds the colour of an element's marks, and the dashes and shapes that go with it. */
  void encode(ElementFacts element, Sums sums, ObjectNode mark, ObjectNode encoding) {
    encode(element, sums, mark, encoding, "color", look::color);
  }

  /**
   * @param channel the channel that is coloured, such as {@code color} or {@code stroke}
   * @param variant the colour of a group in this channel
   */
  void encode(ElementFacts element, Sums sums, ObjectNode mark, ObjectNode encoding,
      String channel, IntFunction<String> variant) {
    if (element.element().color() == null) {
      encodeSeries(element, mark, encoding, channel, variant);
    } else if (element.continuousColor()) {
      encoding.set(channel, continuous(element, sums));
    } else {
      encodeGroups(element, sums, encoding, channel, variant);
    }
  }

  private void encodeSeries(ElementFacts element, ObjectNode mark, ObjectNode encoding,
      String channel, IntFunction<String> variant) {
    int index = element.seriesIndex();
    boolean own = index < 0;
    if (!seriesShown) {
      mark.put(channel, own ? variantOf(element, variant) : variant.apply(index));
      return;
    }
    ObjectNode node = Json.object("field", seriesField);
    node.put("type", "nominal");
    node.set("scale", seriesScale(channel, variant));
    node.set("legend", seriesLegend(element, channel));
    encoding.set(channel, node);
  }

  /** The steps that name an element in the legend. */
  List<ObjectNode> seriesSteps(ElementFacts element) {
    boolean named = seriesShown && element.element().color() == null
        && element.element().kind() != ElementKind.PIE;
    return named ? List.of(Transforms.calculate(Expr.text(element.series()), seriesField))
                 : List.of();
  }

  private String variantOf(ElementFacts element, IntFunction<String> variant) {
    return variant instanceof BoxVariant box ? box.of(element.color()) : element.color();
  }

  /** How box plots vary the colours of groups. */
  interface BoxVariant extends IntFunction<String> {
    String of(String color);
  }

  private ObjectNode seriesScale(String channel, IntFunction<String> variant) {
    ObjectNode scale = Json.object("domain", Json.array(List.copyOf(series.keySet())));
    ArrayNode range = scale.putArray("range");
    for (String name : series.keySet()) {
      for (ElementFacts element : elements) {
        if (element.element().color() == null && element.series().equals(name)) {
          range.add(element.seriesIndex() < 0 ? variantOf(element, variant)
                                              : variant.apply(element.seriesIndex()));
          break;
        }
      }
    }
    return scale;
  }

  private JsonNode seriesLegend(
      ElementFacts element, String channel) {
    boolean first = explained.add(List.of("series", channel)) || !hasSeveralScales();
    if (!first) {
      return Json.node(null);
    }
    String title = scales.size() > 1 ? null : context.chart.legend().title();
    return legend(title, symbol(element));
  }

  private void encodeGroups(ElementFacts element, Sums sums, ObjectNode encoding, String channel,
      IntFunction<String> variant) {
    Column column = element.colorColumn();
    encoding.set(
        channel, groups(element, sums, channel, index -> Json.node(variant.apply(index))));
    ElementKind kind = element.element().kind();
    boolean varied = look.shapes()
        || context.fixedRows
            && context.discrete(column).values().size() > look.paletteSize();
    if (!varied) {
      return;
    }
    if (kind == ElementKind.LINE) {
      encoding.set("strokeDash", groups(element, sums, channel, this::dash));
    }
    if (kind == ElementKind.POINT) {
      encoding.set(
          "shape", groups(element, sums, channel, index -> Json.node(shape(index))));
    }
  }

  /** The marker shape of a group. */
  String shape(int index) {
    return SHAPES.get(look.shape(Math.max(0, index)));
  }

  /** The dashes of a group; a line without gaps is one long dash. */
  JsonNode dash(int index) {
    List<Double> dash = look.dash(Math.max(0, index));
    return dash.isEmpty() ? Json.array(1, 0) : Json.array(dash);
  }

  private ObjectNode groups(ElementFacts element, Sums sums, String channel,
      IntFunction<JsonNode> value) {
    Discrete groups = context.discrete(element.colorColumn());
    ObjectNode node = Json.object("field", sums.color);
    node.put("type", groups.type());
    ObjectNode scale = node.putObject("scale");
    int count = ROUNDS * look.paletteSize();
    if (context.fixedRows) {
      scale.set("domain", Json.array(groups.values()));
      count = groups.values().size();
    } else {
      groups.sort(node);
    }
    ArrayNode range = scale.putArray("range");
    for (int i = 0; i < count; i++) {
      range.add(value.apply(i));
    }
    node.set("legend", groupLegend(element, groups, channel));
    return node;
  }

  private JsonNode groupLegend(
      ElementFacts element, Discrete groups, String channel) {
    boolean needless = repeats(element) || context.fixedRows && groups.values().size() < 2;
    boolean first = explained.add(List.of(key(element), channel)) || !hasSeveralScales();
    boolean apart = channel.equals("stroke") && !context.fixedRows;
    if (needless || !first || apart
        || context.chart.legend().position() == LegendPosition.NONE) {
      return Json.node(null);
    }
    ObjectNode legend = legend(title(element), symbol(element));
    if (groups.labelExpression() != null) {
      legend.put("labelExpr", groups.labelExpression());
    }
    return legend;
  }

  private String title(ElementFacts element) {
    String given = context.chart.legend().title();
    return given == null ? element.colorTitle() : given;
  }

  private ObjectNode continuous(ElementFacts element, Sums sums) {
    ObjectNode node = Json.object("field", sums.color);
    node.put("type", "quantitative");
    ObjectNode scale = node.putObject("scale");
    scale.put("type", "linear");
    scale.put("nice", false);
    scale.put("zero", false);
    boolean shown = explained.add(key(element)) || !hasSeveralScales();
    shown &= context.chart.legend().position() != LegendPosition.NONE;
    if (!shown) {
      node.set("legend", Json.node(null));
      return node;
    }
    ObjectNode legend = gradient(title(element));
    if (isTime(element)) {
      legend.put("labelExpr", Expr.utcFormat("datum.value",
          context.facts.isDateOnly(element.colorColumn()) ? Expr.DATE : Expr.DATE_TIME));
    }
    node.set("legend", legend);
    return node;
  }

  private static boolean isTime(ElementFacts element) {
    boolean count =
        element.element().color().aggregate() == Aggregate.COUNT;
    return !count && element.colorColumn() != null
        && element.colorColumn().kind() == ColumnKind.TIME;
  }

  private ObjectNode gradient(String title) {
    ObjectNode legend = Json.object("title", blank(title) ? null : title);
    legend.put("type", "gradient");
    return legend;
  }

  private static ObjectNode legend(String title, String symbol) {
    ObjectNode legend = Json.object("title", blank(title) ? null : title);
    return Json.set(legend, "symbolType", symbol);
  }

  private static boolean blank(String text) {
    return text == null || text.isBlank();
  }

  private String symbol(ElementFacts element) {
    return switch (element.element().kind()) {
      case LINE -> "stroke";
      case POINT -> "circle";
      default -> "square";
    };
  }

  /** The legend of the size channel. */
  ObjectNode size(ElementFacts element, Sums sums) {
    ObjectNode node = Json.object("field", sums.size);
    node.put("type", "quantitative");
    ObjectNode scale = Json.object("zero", false);
    scale.put("nice", false);
    double least = element.sizes().smallest();
    double most = element.sizes().largest();
    scale.set("range", Json.array(Json.pixels(least * least), Json.pixels(most * most)));
    node.set("scale", scale);
    if (context.chart.legend().position() == LegendPosition.NONE) {
      node.set("legend", Json.node(null));
    } else {
      ObjectNode legend = Json.object("title", context.facts.label(element.element().size()));
      legend.put("symbolType", "circle");
      legend.put("symbolFillColor", look.axisColor());
      legend.put("symbolStrokeWidth", 0);
      node.set("legend", legend);
    }
    return node;
  }

  /** The colours of slices, by what the slices stand for. */
  ObjectNode slices(Discrete slices, String title, boolean legend) {
    ObjectNode node = Json.object("field", slices.field());
    node.put("type", slices.type());
    ObjectNode scale = node.putObject("scale");
    List<String> range = new ArrayList<>();
    int count = context.fixedRows ? slices.values().size() : ROUNDS * look.paletteSize();
    for (int i = 0; i < count; i++) {
      range.add(look.color(i));
    }
    if (context.fixedRows) {
      scale.set("domain", Json.array(slices.values()));
    } else {
      slices.sort(node);
    }
    scale.set("range", Json.array(range));
    node.set("legend", legend ? legend(title, "square") : Json.node(null));
    if (legend && slices.labelExpression() != null) {
      ((ObjectNode) node.get("legend")).put("labelExpr", slices.labelExpression());
    }
    return node;
  }
}
