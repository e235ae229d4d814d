// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;

/**
 * What a drawing decides about a chart and its data: scales, colours, bins, looks. For those who
 * write the same chart in another form, so that both forms agree.
 */
public final class ChartFacts {
  private final Plan plan;
  private final Scene scene;
  private final List<PanelPlot> plots;
  private final List<ElementFacts> elements = new ArrayList<>();

  private ChartFacts(Plan plan, Scene scene, PageLayout layout) {
    this.plan = plan;
    this.scene = scene;
    plots = layout.plots();
    for (ElementPlan element : scene.elements) {
      elements.add(facts(element));
    }
  }

  /**
   * Prepares a drawing in the chart's own style and in no particular language.
   *
   * @throws org.chartbridge.chart.ChartException when the data cannot be drawn as the chart asks
   */
  public static ChartFacts of(Chart chart, Table table) {
    Plan plan = new Plan(chart, table, DrawOptions.DEFAULT);
    Scene scene = new Scene(plan);
    return new ChartFacts(plan, scene, new PageLayout(scene));
  }

  public Chart chart() {
    return plan.chart;
  }

  public Table table() {
    return plan.table;
  }

  public Look look() {
    return new Look(plan, scene.inks);
  }

  public List<ElementFacts> elements() {
    return List.copyOf(elements);
  }

  /** The kind of an axis, never AUTO. */
  public ScaleKind scale(boolean horizontal) {
    return data(horizontal).kind;
  }

  /** The title of an axis; empty for none. */
  public String axisTitle(boolean horizontal) {
    return data(horizontal).title == null ? "" : data(horizontal).title;
  }

  /** Whether all marks of an axis show shares of a whole. */
  public boolean shares(boolean horizontal) {
    return data(horizontal).shares;
  }

  /** The ends of an axis of numbers or times in the first panel; null for categories. */
  public double[] ends(boolean horizontal) {
    if (plots.isEmpty() || scale(horizontal) == ScaleKind.CATEGORY) {
      return null;
    }
    Frame frame = plots.get(0).frame();
    AxisScale scale = horizontal ? frame.x() : frame.y();
    return new double[] {scale.lower(), scale.upper()};
  }

  /** The width and height of a panel in pixels; null for a pie. */
  public double[] panelSize() {
    if (plots.isEmpty()) {
      return null;
    }
    Rectangle2D area = plots.get(0).frame().area();
    return new double[] {area.getWidth(), area.getHeight()};
  }

  public int panels() {
    return scene.panels.count();
  }

  /** How many panels stand side by side. */
  public int panelsInARow() {
    Set<Double> places = new HashSet<>();
    plots.forEach(plot -> places.add(plot.frame().area().getX()));
    return Math.max(1, places.size());
  }

  /** How readers call a column. */
  public String label(Column column) {
    return plan.label(column);
  }

  /** How readers call what a channel shows, for example {@code Sales (mean)}. */
  public String label(Channel channel) {
    return plan.label(channel);
  }

  /** Whether no time of the column has an hour of its own. */
  public boolean isDateOnly(Column column) {
    return plan.isDateOnly(column);
  }

  private AxisData data(boolean horizontal) {
    return horizontal ? scene.x : scene.y;
  }

  private ElementFacts facts(ElementPlan e) {
    int index = e.fill == null ? e.seriesIndex : -1;
    String color = e.fill != null ? Look.hex(e.fill) : Look.hex(scene.inks.color(e.seriesIndex));
    Places places = new Places(e);
    return new ElementFacts(e.name(), e.path(), e.element, e.horizontal, e.x, e.y, e.xColumn,
        e.yColumn, e.colorColumn, e.sizeColumn, e.labelColumn, e.continuousColor(), repeatsAxis(e),
        e.colors == null ? null : e.colors.title, LegendBuilder.seriesKey(plan, e), index, color,
        places.dodges(), places.shares, bins(e), cells(e, true), cells(e, false), sizes(e),
        crowded(e));
  }

  private boolean repeatsAxis(ElementPlan e) {
    boolean surfaces = e.kind == ElementKind.BAR || e.kind == ElementKind.BOX;
    boolean same = e.colorColumn == e.xColumn || e.colorColumn == e.yColumn;
    return surfaces && e.colors != null && !e.colors.continuous && same;
  }

  private List<Layer> layers(ElementPlan element) {
    List<Layer> own = new ArrayList<>();
    for (List<Layer> panel : scene.layers) {
      for (Layer layer : panel) {
        if (layer.element == element) {
          own.add(layer);
        }
      }
    }
    return own;
  }

  private ElementFacts.Intervals bins(ElementPlan element) {
    for (Layer layer : layers(element)) {
      if (layer instanceof BarLayer bars && bars.bins() != null) {
        return ElementFacts.Intervals.of(bars.bins());
      }
    }
    return null;
  }

  private ElementFacts.Cells cells(ElementPlan element, boolean horizontal) {
    for (Layer layer : layers(element)) {
      if (layer instanceof HeatmapLayer map) {
        return ElementFacts.Cells.of(horizontal ? map.xCells() : map.yCells());
      }
    }
    return null;
  }

  private ElementFacts.Sizes sizes(ElementPlan element) {
    for (Layer layer : layers(element)) {
      if (layer instanceof PointLayer points && points.sizes() != null) {
        PointLayer.SizeScale scale = points.sizes();
        return new ElementFacts.Sizes(scale.smallestDiameter(), scale.diameter());
      }
    }
    return null;
  }

  private boolean crowded(ElementPlan element) {
    for (Layer layer : layers(element)) {
      if (layer instanceof PointLayer points && points.crowded()) {
        return true;
      }
    }
    return false;
  }

  /** Who stands where: what shares a position, and what shares its colour as well. */
  private final class Places {
    boolean shares;
    private final boolean grouped;
    private final Map<List<Double>, Set<Integer>> colors = new HashMap<>();

    Places(ElementPlan element) {
      grouped = element.kind == ElementKind.BOX
          || element.arrangement() == Arrangement.GROUPED;
      for (Layer layer : layers(element)) {
        if (layer instanceof BarLayer bars) {
          bars.bars().forEach(bar -> add(bar.group(), element.horizontal));
        }
        if (layer instanceof BoxLayer boxes) {
          boxes.boxes().forEach(box -> add(box.group(), element.horizontal));
        }
      }
    }

    private void add(Group group, boolean horizontal) {
      List<Double> place = List.of((double) group.panel, group.position(horizontal));
      shares |= !colors.computeIfAbsent(place, key -> new HashSet<>()).add(group.color);
    }

    boolean dodges() {
      return grouped && colors.values().stream().anyMatch(here -> here.size() > 1);
    }
  }
}
