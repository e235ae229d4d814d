// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import java.util.function.DoubleUnaryOperator;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;

/** Makes the layers of an element, one for each panel. */
final class LayerFactory {
  private final LayerSource source;
  private final ElementPlan element;
  /** The scale of the size channel; null when there is none. */
  private PointLayer.SizeScale sizes;

  LayerFactory(LayerSource source) {
    this.source = source;
    element = source.element();
  }

  PointLayer.SizeScale sizes() {
    return sizes;
  }

  List<Layer> layers() {
    if (element.element.hasOwnBins()) {
      return perPanel(List.of(), (panel, part) -> new OwnBinsLayer(source, panel));
    }
    return switch (element.kind) {
      case BAR -> new BarBuilder(source).layers(groups(), null);
      case HISTOGRAM -> histogram();
      case LINE -> perPanel(groups(), (panel, part) -> new LineLayer(source, panel, part));
      case AREA -> new AreaBuilder(source).layers(groups());
      case POINT -> points();
      case BOX -> new BoxBuilder(source).layers(groups());
      case HEATMAP -> heatmap();
      case PIE -> throw new IllegalStateException("a pie has no layers");
    };
  }

  private interface LayerMaker {
    Layer make(int panel, List<Group> groups);
  }

  private List<Layer> perPanel(List<Group> groups, LayerMaker maker) {
    List<List<Group>> parts = new ArrayList<>();
    for (int panel = 0; panel < source.panels().count(); panel++) {
      parts.add(new ArrayList<>());
    }
    groups.forEach(group -> parts.get(group.panel).add(group));
    List<Layer> layers = new ArrayList<>();
    for (int panel = 0; panel < parts.size(); panel++) {
      layers.add(maker.make(panel, parts.get(panel)));
    }
    return layers;
  }

  private List<Group> groups() {
    return groups(DoubleUnaryOperator.identity(), DoubleUnaryOperator.identity());
  }

  private List<Group> groups(DoubleUnaryOperator xKey, DoubleUnaryOperator yKey) {
    List<Group> groups = new ArrayList<>(new Grouping(source, xKey, yKey).groups());
    boolean any = false;
    for (Group group : groups) {
      any |= !Double.isNaN(group.measure(element.horizontal));
      checkLog(group.x, source.x(), element.xColumn);
      checkLog(group.y, source.y(), element.yColumn);
    }
    if (!any) {
      throw noValues();
    }
    return groups;
  }

  private org.chartbridge.chart.ChartException noValues() {
    Set<String> names = new java.util.LinkedHashSet<>();
    for (Column column : new Column[] {element.xColumn, element.yColumn, element.colorColumn,
        element.sizeColumn}) {
      if (column != null) {
        names.add("\"" + column.name() + "\"");
      }
    }
    return new org.chartbridge.chart.ChartException(element.name()
        + " has nothing to draw: no row has a value in all of " + String.join(", ", names) + ".");
  }

  private void checkLog(double value, AxisData axis, Column column) {
    if (axis.kind == ScaleKind.LOG && value <= 0) {
      throw element.error(axis.name(),
          "the value " + Formats.plain(value)
              + (column == null ? "" : " of column \"" + column.name() + "\"")
              + " has no place on a log scale, which starts above 0; use scale linear, or drop "
              + "such rows.");
    }
  }

  private double[] values(AxisData axis, Column column) {
    double[] values = new double[source.plan().table.rowCount()];
    int count = 0;
    for (int row = 0; row < values.length; row++) {
      double value = axis.position(column, row);
      if (!Double.isNaN(value) && source.panels().of(row) >= 0) {
        values[count++] = value;
      }
    }
    return java.util.Arrays.copyOf(values, count);
  }

  private List<Layer> histogram() {
    double[] values = values(source.positionAxis(), element.positionColumn());
    if (values.length == 0) {
      throw noValues();
    }
    if (source.positionAxis().kind == ScaleKind.LOG) {
      throw element.error(element.positionName(),
          "equal bins have no equal widths on a log scale; use scale linear.");
    }
    Integer given = element.element.bins();
    boolean times = source.positionAxis().kind == ScaleKind.TIME;
    Bins fitting = times ? Bins.fittingTimes(values) : Bins.fitting(values);
    Bins bins = given == null ? fitting : Bins.given(values, given);
    DoubleUnaryOperator key = value -> {
      int bin = Double.isNaN(value) ? -1 : bins.of(value);
      return bin < 0 ? Double.NaN : (bins.lower(bin) + bins.upper(bin)) / 2;
    };
    DoubleUnaryOperator same = DoubleUnaryOperator.identity();
    List<Group> groups = element.horizontal ? groups(same, key) : groups(key, same);
    return new BarBuilder(source).layers(groups, bins);
  }

  private List<Layer> points() {
    List<Group> groups = groups();
    sizes = PointLayer.sizes(source.plan(), element, groups, source.panels().count());
    collectColors(groups);
    return perPanel(groups, (panel, part) -> new PointLayer(source, panel, part, sizes));
  }

  private void collectColors(List<Group> groups) {
    if (element.colors != null && element.colors.continuous) {
      groups.forEach(group -> element.colors.extent.add(group.colorValue));
    }
  }

  private record Cell(int panel, double x, double y) {}

  private List<Layer> heatmap() {
    boolean sums = element.element.color().aggregate() != Aggregate.NONE;
    Integer bins = element.element.bins();
    CellAxis xCells =
        CellAxis.of(source.x(), values(source.x(), element.xColumn), sums, bins);
    CellAxis yCells =
        CellAxis.of(source.y(), values(source.y(), element.yColumn), sums, bins);
    List<Group> groups = groups(xCells::key, yCells::key);
    collectColors(groups);
    Set<Cell> cells = new HashSet<>();
    for (Group group : groups) {
      if (!cells.add(new Cell(group.panel, group.x, group.y))) {
        throw element.error("color", "several rows fall on the cell "
            + source.x().text(element.x, element.xColumn, group.x) + ", "
            + source.y().text(element.y, element.yColumn, group.y)
            + "; sum their colours up, for example by mean.");
      }
    }
    return perPanel(
        groups, (panel, part) -> new HeatmapLayer(source, panel, part, xCells, yCells));
  }
}
