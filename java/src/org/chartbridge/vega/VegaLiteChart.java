// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ArrayNode;
import com.fasterxml.jackson.databind.node.ObjectNode;
import com.fasterxml.jackson.databind.node.POJONode;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.ChartData;
import org.chartbridge.data.Table;
import org.chartbridge.draw.ChartFacts;
import org.chartbridge.draw.ElementFacts;

/** A chart as a Vega-Lite document. It shows what a picture of the chart shows. */
public final class VegaLiteChart {
  public static final String SCHEMA = "https://vega.github.io/schema/vega-lite/v6.json";
  /** The name under which a template takes its data. */
  public static final String DATA_NAME = "data";

  private static final double PANEL_GAP = 12;

  private final Context context;
  private final ObjectNode data;
  private final Table table;
  private final List<GeoJson> maps;
  private final String renderer;

  private VegaLiteChart(
      Context context, ObjectNode data, Table table, List<GeoJson> maps, String renderer) {
    this.context = context;
    this.data = data;
    this.table = table;
    this.maps = maps;
    this.renderer = renderer;
  }

  /**
   * A chart that stands still, with its data inside.
   *
   * @param chart a chart with data of its own
   * @param renderer how it is drawn: {@code canvas} or {@code svg}
   * @throws ChartException when it has no data, or when something about it has no form in Vega-Lite
   */
  public static VegaLiteChart still(Chart chart, String renderer) {
    Table table = read(chart);
    Context context = new Context(chart, ChartFacts.of(chart, table), true, true, null);
    return new VegaLiteChart(context, inline(table, context), table, List.of(), renderer);
  }

  /** The same without data; whoever shows it supplies rows under {@link #DATA_NAME}. */
  public static VegaLiteChart template(Chart chart, String renderer) {
    Table known = chart.data() == null ? null : read(chart);
    Table table = TemplateColumns.of(chart, known);
    ChartFacts facts = ChartFacts.of(TemplateColumns.withoutLimits(chart), table);
    Context context = new Context(chart, facts, false, false, null);
    ObjectNode data = Json.object("name", DATA_NAME);
    return new VegaLiteChart(context, data, table, List.of(), renderer);
  }

  /**
   * A chart that answers to its reader.
   *
   * @param options what it can do
   * @param maps the layers of a map under the marks, the first one at the bottom; empty for a chart
   *     with axes
   * @param dataUrl where its rows are, relative to the document; null for rows in the document
   */
  public static VegaLiteChart interactive(Chart chart, InteractiveOptions options,
      List<GeoJson> maps, String dataUrl, String renderer) {
    Table table = read(chart);
    Context context =
        new Context(chart, ChartFacts.of(chart, table), true, dataUrl == null, options);
    ObjectNode data = inline(table, context);
    if (dataUrl != null) {
      data = Json.object("url", dataUrl);
      data.set("format", format(context));
    }
    return new VegaLiteChart(context, data, table, List.copyOf(maps), renderer);
  }

  private static Table read(Chart chart) {
    if (!chart.showsData()) {
      return new Table(List.of(), 0);
    }
    if (chart.data() == null) {
      throw new ChartException("The chart has no data of its own, which chart JSON shows; give it "
          + "a <data> element with CSV, or export it as a template.");
    }
    return ChartData.readCsv(ByteBuffer.wrap(chart.data().getBytes(StandardCharsets.UTF_8)), chart);
  }

  private static ObjectNode inline(Table table, Context context) {
    ObjectNode data = Json.object();
    data.set("values", new POJONode(new DataRows(table)));
    return Json.set(data, "format", format(context));
  }

  private static ObjectNode format(Context context) {
    ObjectNode format = Json.object("type", "json");
    ObjectNode parse = context.fields.parse();
    return Json.set(format, "parse", parse.isEmpty() ? null : parse);
  }

  /** The rows of its data, as they stand in a file of their own. */
  public Object rows() {
    return new DataRows(table);
  }

  /** The document; Jackson writes it. */
  public ObjectNode json() {
    ColorJson colors = new ColorJson(context);
    boolean onMap = !maps.isEmpty();
    MapView map = onMap ? new MapView(context, maps) : null;
    List<MarkLayer> marks = marks(colors, onMap);
    if (context.options != null) {
      new Interaction(context, marks, onMap).add();
    }
    ObjectNode document = head();
    document.set("data", data);
    List<ObjectNode> views = new ArrayList<>();
    if (onMap) {
      views.addAll(map.layers());
      ArrayNode parameters = Json.array();
      map.addParameters(parameters);
      if (!parameters.isEmpty()) {
        document.set("params", parameters);
      }
    }
    marks.forEach(layer -> views.add(layer.json()));
    ObjectNode caption = new TitleJson(context).caption();
    if (caption != null) {
      views.add(caption);
    }
    addSteps(document);
    ObjectNode view = Json.object();
    size(view);
    if (onMap) {
      view.set("projection", map.projection());
    }
    view.set("layer", Json.array(views));
    resolve(view, colors);
    if (context.hasFacet()) {
      addPanels(document, view);
    } else {
      document.setAll(view);
    }
    document.set("config", new ConfigJson(context).json());
    document.set("usermeta",
        Json.object("embedOptions", Json.object("renderer", renderer)));
    return document;
  }

  private ObjectNode head() {
    ObjectNode document = Json.object("$schema", SCHEMA);
    String title = context.chart.titles().title();
    if (title != null && !title.isBlank()) {
      document.put("description", ChartException.oneLine(title));
    }
    document.put("background", context.look.background());
    document.set("padding", Json.node(Json.pixels(context.look.margin())));
    if (!context.hasFacet()) {
      ObjectNode autosize = Json.object("type", "fit");
      document.set("autosize", Json.set(autosize, "contains", "padding"));
    }
    ObjectNode titles = new TitleJson(context).title();
    if (titles != null) {
      document.set("title", titles);
    }
    return document;
  }

  private void addSteps(ObjectNode document) {
    List<ObjectNode> panels = context.panelFields().stream()
        .map(field -> Transforms.filter(Expr.isValid(field))).toList();
    List<ObjectNode> steps = new ArrayList<>(context.steps());
    steps.addAll(panels);
    if (!steps.isEmpty()) {
      document.set("transform", Json.array(steps));
    }
  }

  private void size(ObjectNode view) {
    double width = context.chart.size().width();
    double height = context.chart.size().height();
    double[] panel = context.facts.panelSize();
    if (context.hasFacet()) {
      int columns = columns();
      int rows = (context.facts.panels() + columns - 1) / columns;
      double room = context.look.margin() * 2 + 90 * context.look.factor();
      boolean known = context.knownRows && panel != null;
      width = known ? panel[0] : Math.max(40, (width - room) / columns - PANEL_GAP);
      height = known ? panel[1] : Math.max(40, (height - room) / Math.max(rows, 2) - PANEL_GAP);
    }
    view.set("width", Json.node(Math.floor(width)));
    view.set("height", Json.node(Math.floor(height)));
  }

  private int columns() {
    Integer given = context.chart.facet().columns();
    if (given != null) {
      return given;
    }
    boolean pie = context.facts.panelSize() == null;
    boolean known = context.knownRows && !pie;
    return known ? context.facts.panelsInARow()
                 : context.knownRows ? (int) Math.ceil(Math.sqrt(context.facts.panels())) : 2;
  }

  private void addPanels(ObjectNode document, ObjectNode view) {
    Discrete panel = context.panel();
    ObjectNode facet = Json.object("field", panel.field());
    facet.put("type", panel.type());
    panel.sortPanels(facet);
    ObjectNode header = Json.object("title", null);
    if (panel.labelExpression() != null) {
      header.put("labelExpr", panel.labelExpression());
    }
    facet.set("header", header);
    document.set("facet", facet);
    document.put("columns", columns());
    document.set("spacing", Json.node(Json.pixels(PANEL_GAP * context.look.factor())));
    document.set("spec", view);
    ObjectNode scale = Json.object();
    for (boolean horizontal : new boolean[] {true, false}) {
      if (context.isFree(horizontal)) {
        scale.put(horizontal ? "x" : "y", "independent");
      }
    }
    if (!scale.isEmpty()) {
      document.set("resolve", Json.object("scale", scale));
    }
  }

  /** Colours that mean different things have scales and legends of their own. */
  private static void resolve(ObjectNode view, ColorJson colors) {
    if (colors.hasSeveralScales()) {
      ObjectNode scale = Json.object("color", "independent");
      scale.put("fill", "independent");
      scale.put("stroke", "independent");
      view.set("resolve", Json.object("scale", scale));
    }
  }

  private List<MarkLayer> marks(ColorJson colors, boolean onMap) {
    ElementWriter.ChartParts parts = new ElementWriter.ChartParts(
        context, new AxisJson(context, true), new AxisJson(context, false), colors);
    List<MarkLayer> layers = new ArrayList<>();
    for (ElementFacts element : context.facts.elements()) {
      layers.add(writer(parts, element, onMap).write());
    }
    return layers;
  }

  private static ElementWriter writer(
      ElementWriter.ChartParts parts, ElementFacts element, boolean onMap) {
    if (element.element().hasOwnBins()) {
      return new OwnBinsWriter(parts, element);
    }
    ElementKind kind = element.element().kind();
    return switch (kind) {
      case BAR, HISTOGRAM -> new BarWriter(parts, element, kind == ElementKind.HISTOGRAM);
      case LINE -> new LineWriter(parts, element, onMap);
      case AREA -> new AreaWriter(parts, element);
      case POINT -> new PointWriter(parts, element, onMap);
      case BOX -> new BoxWriter(parts, element);
      case PIE -> new PieWriter(parts, element);
      case HEATMAP -> new HeatmapWriter(parts, element);
    };
  }
}
