// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.AffineTransform;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.LegendPosition;

/**
 * Places titles, legend, axes and panels of a picture. Where a small picture has no room for all,
 * the less important texts give way to the plot: first the caption, then the subtitle, the axis
 * titles, the legend, and the title; at last the texts of ticks and panels.
 */
final class PageLayout {
  private static final int LAST_LEVEL = 9;
  private static final double LEAST_SHARE = 0.42;
  private static final double LEAST_SHARE_LARGE = 0.3;

  /** A line of text and where it stands; turned ones run upwards. */
  private record Line(String text, Font font, boolean quiet, double x, double baseline,
      double align, boolean turned) {}

  private final Scene scene;
  private final Plan plan;
  private final Typography type;
  private final int width;
  private final int height;
  private final double margin;
  private final double gap;
  private final List<Line> lines = new ArrayList<>();
  private final List<PanelPlot> plots = new ArrayList<>();
  private final List<Rectangle2D> pieAreas = new ArrayList<>();
  private LegendBox.Laid legend;
  private double legendX;
  private double legendY;
  private boolean pieNamed;

  private double left;
  private double right;
  private double top;
  private double bottom;
  private double smallestWidth;
  private double smallestHeight;
  private boolean tickTexts;
  private boolean headings;
  private int gridColumns = 1;
  private int gridRows = 1;

  PageLayout(Scene scene) {
    this.scene = scene;
    plan = scene.plan;
    type = plan.type;
    width = plan.chart.size().width();
    height = plan.chart.size().height();
    margin = margin(width, height, type.factor);
    gap = 8 * type.factor;
    int level = 0;
    arrange(level);
    while (!roomy() && level < LAST_LEVEL) {
      arrange(++level);
    }
  }

  /** The empty edge around a picture of this size. */
  static double margin(int width, int height, double factor) {
    return Math.max(5, Math.min(28 * factor, Math.min(width, height) * 0.03));
  }

  private boolean roomy() {
    boolean small = width < 500 || height < 375;
    double share = small ? LEAST_SHARE : LEAST_SHARE_LARGE;
    double least = Math.min(1, 4.0 / Math.max(gridColumns, gridRows)) * 30;
    return smallestWidth * gridColumns >= share * width
        && smallestHeight * gridRows >= share * height && smallestWidth >= least
        && smallestHeight >= least * 0.6;
  }

  private void arrange(int level) {
    lines.clear();
    plots.clear();
    pieAreas.clear();
    legend = null;
    tickTexts = level < 8;
    headings = scene.panels.label() != null && level < 9;
    left = margin;
    right = width - margin;
    top = margin;
    bottom = height - margin;
    titles(level);
    chooseLegend(level);
    if (scene.pie != null) {
      pies();
    } else {
      axes(level < 4);
    }
    centerLegend();
  }

  private void titles(int level) {
    int most = level == 0 ? 3 : 1;
    String title = plan.text(plan.chart.titles().title());
    String subtitle = plan.text(plan.chart.titles().subtitle());
    String caption = plan.text(plan.chart.titles().caption());
    boolean any = false;
    if (present(title) && level < 7) {
      top = textLines(title, type.title, false, most, top);
      any = true;
    }
    if (present(subtitle) && level < 3) {
      top = textLines(subtitle, type.subtitle, true, most, top + (any ? gap * 0.2 : 0));
      any = true;
    }
    top += any ? gap * (level == 0 ? 1.4 : 0.8) : gap * 0.5;
    if (present(caption) && level < 2) {
      List<String> texts = type.wrap(caption, type.caption, right - left, most);
      bottom -= type.height(texts.size(), type.caption);
      double y = bottom;
      for (String text : texts) {
        lines.add(
            new Line(text, type.caption, true, left, type.baseline(type.caption, y), 0, false));
        y += type.lineHeight(type.caption);
      }
      bottom -= gap;
    }
  }

  private static boolean present(String text) {
    return text != null && !text.isBlank();
  }

  private double textLines(String text, Font font, boolean quiet, int most, double from) {
    double y = from;
    for (String line : type.wrap(text, font, right - left, most)) {
      lines.add(new Line(line, font, quiet, left, type.baseline(font, y), 0, false));
      y += type.lineHeight(font);
    }
    return y;
  }

  private void chooseLegend(int level) {
    LegendPosition position = plan.chart.legend().position();
    LegendBox box = scene.legend;
    if (scene.pie != null) {
      boolean asked = position != null && position != LegendPosition.NONE;
      double room = Math.min((right - left) / 3.4, bottom - top);
      pieNamed = !asked && scene.panels.count() == 1 && room > 88 * type.factor;
      box = pieNamed ? new LegendBox(plan, scene.inks, List.of())
          : new LegendBox(plan, scene.inks,
              List.of(scene.pie.legend(plan.text(plan.chart.legend().title()))));
    }
    if (box.isEmpty() || position == LegendPosition.NONE || level >= 6) {
      return;
    }
    LegendPosition side = position == null ? LegendPosition.RIGHT : position;
    if (position == null && width < 420 * type.factor && width < height * 1.2) {
      side = LegendPosition.BOTTOM;
    }
    place(box, side, level);
  }

  private void place(LegendBox box, LegendPosition side, int level) {
    double across = right - left;
    double along = bottom - top;
    switch (side) {
      case RIGHT -> {
        legend = box.vertical(across * (level < 5 ? 0.3 : 0.25), along);
        legendX = right - legend.width();
        legendY = top;
        right = legendX - gap * 2;
      }
      case LEFT -> {
        legend = box.vertical(across * (level < 5 ? 0.3 : 0.25), along);
        legendX = left;
        legendY = top;
        left += legend.width() + gap * 2;
      }
      case TOP -> {
        legend = box.horizontal(across, along * (level < 5 ? 0.3 : 0.15));
        legendX = left;
        legendY = top;
        top += legend.height() + gap;
      }
      default -> {
        legend = box.horizontal(across, along * (level < 5 ? 0.3 : 0.15));
        legendX = left;
        legendY = bottom - legend.height();
        bottom = legendY - gap;
      }
    }
  }

  /**
   * A legend at a side stands beside the plot's upper part, one below or above starts where the
   * plot starts.
   */
  private void centerLegend() {
    LegendPosition position = plan.chart.legend().position();
    boolean lies = position == LegendPosition.TOP || position == LegendPosition.BOTTOM;
    if (legend == null || !lies || scene.pie != null || plots.isEmpty()) {
      return;
    }
    double start = plots.get(0).frame().area().getX();
    legendX = Math.max(margin, Math.min(start, width - margin - legend.width()));
  }

  private void grid(double ratio) {
    int count = scene.panels.count();
    Integer given = plan.chart.facet() == null ? null : plan.chart.facet().columns();
    if (given != null && given > 0) {
      gridColumns = Math.min(given, count);
    } else {
      double best = Double.POSITIVE_INFINITY;
      for (int columns = 1; columns <= count; columns++) {
        int rows = (count + columns - 1) / columns;
        double shape = (right - left) / columns / ((bottom - top) / rows);
        double empty = (double) (rows * columns - count) / count;
        double cost = Math.abs(Math.log(shape / ratio)) + empty;
        if (cost < best - 1e-9) {
          best = cost;
          gridColumns = columns;
        }
      }
    }
    gridRows = (count + gridColumns - 1) / gridColumns;
  }

  private double headingHeight() {
    return !headings ? 0 : type.lineHeight(type.heading) + gap * 0.3;
  }

  private void heading(int panel, double x, double y, double room) {
    if (headings) {
      String text = type.cut(scene.panels.name(panel), type.heading, room);
      lines.add(new Line(text, type.heading, false, x, type.baseline(type.heading, y), 0, false));
    }
  }

  private void pies() {
    grid(1);
    double heading = headingHeight();
    double cellWidth = (right - left - gap * (gridColumns - 1)) / gridColumns;
    double cellHeight = (bottom - top - gap * (gridRows - 1)) / gridRows;
    for (int panel = 0; panel < scene.panels.count(); panel++) {
      double x = left + panel % gridColumns * (cellWidth + gap);
      double y = top + panel / gridColumns * (cellHeight + gap);
      heading(panel, x, y, cellWidth);
      pieAreas.add(new Rectangle2D.Double(
          x, y + heading, Math.max(10, cellWidth), Math.max(10, cellHeight - heading)));
    }
    smallestWidth = cellWidth;
    smallestHeight = cellHeight - heading;
  }

  private boolean free(boolean horizontal) {
    return plan.chart.facet() != null
        && !(horizontal ? plan.chart.facet().sharedX() : plan.chart.facet().sharedY());
  }

  private AxisData data(boolean horizontal) {
    return horizontal ? scene.x : scene.y;
  }

  /** One axis of all panels: each with its scale and labels, and the room they take. */
  private final class AxisSet {
    final boolean horizontal;
    final boolean free;
    final List<Extent> extents = new ArrayList<>();
    final List<boolean[]> used = new ArrayList<>();
    final List<AxisScale> scales = new ArrayList<>();
    final List<AxisLabels> labels = new ArrayList<>();

    AxisSet(boolean horizontal) {
      this.horizontal = horizontal;
      free = free(horizontal);
      int count = scene.panels.count();
      Extent all = new Extent();
      for (int panel = 0; panel < count; panel++) {
        Extent own = new Extent();
        Extent other = new Extent();
        boolean[] categories = new boolean[data(horizontal).categories.size()];
        for (Layer layer : scene.layers.get(panel)) {
          Extent single = new Extent();
          layer.extend(horizontal ? single : other, horizontal ? other : single);
          own.add(single);
        }
        markUsed(own, panel, categories);
        extents.add(own);
        used.add(free ? categories : null);
        all.add(own);
      }
      for (int panel = 0; !free && panel < count; panel++) {
        extents.set(panel, all);
      }
    }

    private void markUsed(Extent own, int panel, boolean[] categories) {
      boolean categorical = data(horizontal).kind == org.chartbridge.chart.ScaleKind.CATEGORY;
      if (!free || !categorical || own.isEmpty()) {
        return;
      }
      AxisData data = data(horizontal);
      for (ElementPlan element : scene.elements) {
        for (int row = 0; row < plan.table.rowCount(); row++) {
          double place = scene.panels.of(row) == panel
              ? data.position(horizontal ? element.xColumn : element.yColumn, row) : Double.NaN;
          if (!Double.isNaN(place)) {
            categories[(int) place] = true;
          }
        }
      }
    }

    void fit(double length, double mostDepth, double roomBefore) {
      scales.clear();
      labels.clear();
      for (int panel = 0; panel < extents.size(); panel++) {
        if (panel > 0 && !free) {
          scales.add(scales.get(0));
          labels.add(labels.get(0));
          continue;
        }
        AxisData data = data(horizontal);
        AxisScale scale = data.scale(extents.get(panel), used.get(panel), 0);
        AxisLabels fitted =
            new AxisLabels.Fitter(plan, data, scale, length, mostDepth, roomBefore).fit();
        double before = 0;
        double step = AxisLabels.step(fitted, scale);
        for (int i = 0; i < 4 && step > before; i++) {
          scale = data.scale(extents.get(panel), used.get(panel), step);
          fitted = new AxisLabels.Fitter(plan, data, scale, length, mostDepth, roomBefore).fit();
          before = step;
          step = AxisLabels.step(fitted, scale);
        }
        scales.add(scale);
        labels.add(fitted);
      }
    }

    double depth() {
      double depth = 0;
      if (!tickTexts) {
        return 0;
      }
      for (AxisLabels label : labels) {
        depth = Math.max(depth, label.depth());
      }
      return depth <= 0 ? 0 : depth + PlotAxis.gap(plan);
    }

    double before() {
      return tickTexts ? labels.stream().mapToDouble(AxisLabels::before).max().orElse(0) : 0;
    }

    double after() {
      return tickTexts ? labels.stream().mapToDouble(AxisLabels::after).max().orElse(0) : 0;
    }

    boolean baseline() {
      return extents.stream().anyMatch(Extent::baseline);
    }
  }

  private void axes(boolean titled) {
    grid(1.35);
    AxisSet xs = new AxisSet(true);
    AxisSet ys = new AxisSet(false);
    String xTitle = titled && present(scene.x.title) ? scene.x.title : null;
    String yTitle = titled && present(scene.y.title) ? scene.y.title : null;
    double titleHeight = type.lineHeight(type.axisTitle) + gap * 0.4;
    double plotBottom = bottom - (xTitle == null ? 0 : titleHeight);
    List<String> yTitleLines =
        yTitle == null ? List.of() : type.wrap(yTitle, type.axisTitle, (bottom - top) * 0.85, 2);
    double yTitleWidth =
        yTitleLines.isEmpty() ? 0 : type.height(yTitleLines.size(), type.axisTitle) + gap * 0.6;
    double plotLeft = left + yTitleWidth;
    double heading = headingHeight();
    double leftDepth = 30 * type.factor;
    double bottomDepth = 20 * type.factor;
    double before = 0;
    double after = 0;
    double up = 0;
    double panelWidth = 10;
    double panelHeight = 10;
    double columnGap = 0;
    double rowGap = 0;
    for (int pass = 0; pass < 4; pass++) {
      boolean many = scene.panels.count() > 1;
      columnGap = many ? gap * 1.6
              + (xs.free ? Math.max(0, after)
                         : Math.max(0, Math.max(after, before)) * (before > 25 ? 0 : 1))
                       : 0;
      rowGap = many ? gap * 1.1 : 0;
      double pad = Math.max(0, after - (width - margin - right > 1 ? gap * 1.5 : margin * 0.6));
      double leftPad = Math.max(0, before - leftDepth - yTitleWidth - margin * 0.5);
      int leftDepths = ys.free ? gridColumns : 1;
      int bottomDepths = xs.free ? gridRows : 1;
      panelWidth = (right - pad - plotLeft - leftPad - leftDepth * leftDepths
          - columnGap * (gridColumns - 1)) / gridColumns;
      panelHeight = (plotBottom - top - up - heading * gridRows - bottomDepth * bottomDepths
          - rowGap * (gridRows - 1)) / gridRows;
      if (pass == 3) {
        plotLeft += leftPad;
        break;
      }
      ys.fit(panelHeight, (right - left) * 0.32 / (ys.free ? gridColumns : 1), 0);
      leftDepth = ys.depth();
      up = scene.panels.label() == null ? Math.max(0, ys.after() - gap * 0.5) : 0;
      xs.fit(panelWidth, (bottom - top) * 0.32 / (xs.free ? gridRows : 1),
          leftDepth + yTitleWidth + margin * 0.5);
      bottomDepth = xs.depth();
      before = xs.before();
      after = xs.after();
    }
    smallestWidth = panelWidth;
    smallestHeight = panelHeight;
    panelWidth = Math.max(12, panelWidth);
    panelHeight = Math.max(12, panelHeight);
    xs.fit(Math.floor(panelWidth), (bottom - top) * 0.32 / (xs.free ? gridRows : 1),
        leftDepth + yTitleWidth + margin * 0.5);
    ys.fit(Math.floor(panelHeight), (right - left) * 0.32 / (ys.free ? gridColumns : 1), 0);
    double firstTop = top + up;
    double stepX = panelWidth + columnGap + (ys.free ? leftDepth : 0);
    double stepY = panelHeight + rowGap + heading + (xs.free ? bottomDepth : 0);
    int count = scene.panels.count();
    for (int panel = 0; panel < count; panel++) {
      int column = panel % gridColumns;
      int row = panel / gridColumns;
      double x = Math.round(plotLeft + leftDepth + column * stepX);
      double y = Math.round(firstTop + heading + row * stepY);
      Rectangle2D area =
          new Rectangle2D.Double(x, y, Math.floor(panelWidth), Math.floor(panelHeight));
      heading(panel, x, y - heading, panelWidth);
      boolean lowest = panel + gridColumns >= count;
      plots.add(plot(panel, area, xs, ys, xs.free || lowest, ys.free || column == 0));
    }
    axisTitles(xTitle, yTitleLines, plotLeft - (plotLeft - left - yTitleWidth), titleHeight);
  }

  private PanelPlot plot(int panel, Rectangle2D area, AxisSet xs, AxisSet ys, boolean xLabels,
      boolean yLabels) {
    AxisScale xScale = xs.scales.get(panel);
    AxisScale yScale = ys.scales.get(panel);
    boolean lying = scene.elements.stream().anyMatch(element -> element.horizontal);
    boolean cells = scene.elements.stream()
        .allMatch(element -> element.kind == org.chartbridge.chart.ElementKind.HEATMAP);
    PlotAxis xAxis = new PlotAxis(
        plan, true, xScale, xs.labels.get(panel), xLabels && tickTexts, !lying && !cells);
    PlotAxis yAxis =
        new PlotAxis(plan, false, yScale, ys.labels.get(panel), yLabels && tickTexts, lying);
    return new PanelPlot(plan, new Frame(xScale, yScale, area), scene.layers.get(panel), xAxis,
        yAxis, xs.baseline(), ys.baseline());
  }

  private void axisTitles(String xTitle, List<String> yTitle, double plotLeft, double titleHeight) {
    Rectangle2D first = plots.get(0).frame().area();
    Rectangle2D all = (Rectangle2D) first.clone();
    plots.forEach(plot -> all.add(plot.frame().area()));
    if (xTitle != null) {
      String text = type.cut(xTitle, type.axisTitle, right - left);
      double half = type.width(text, type.axisTitle) / 2;
      double x = Math.max(margin + half, Math.min(width - margin - half, all.getCenterX()));
      double y = bottom - type.lineHeight(type.axisTitle);
      lines.add(
          new Line(text, type.axisTitle, false, x, type.baseline(type.axisTitle, y), 0.5, false));
    }
    double x = left;
    for (String text : yTitle) {
      double half = type.width(text, type.axisTitle) / 2;
      double y = Math.max(top + half, Math.min(bottom - half, all.getCenterY()));
      lines.add(
          new Line(text, type.axisTitle, false, type.baseline(type.axisTitle, x), y, 0.5, true));
      x += type.lineHeight(type.axisTitle);
    }
  }

  void draw(Graphics2D g) {
    g.setPaint(plan.style.background);
    g.fill(new Rectangle2D.Double(0, 0, width, height));
    for (int panel = 0; panel < pieAreas.size(); panel++) {
      scene.pie.draw(g, panel, pieAreas.get(panel), pieNamed);
    }
    plots.forEach(plot -> plot.draw(g));
    lines.forEach(line -> drawLine(g, line));
    if (legend != null) {
      legend.draw(g, legendX, legendY);
    }
  }

  private void drawLine(Graphics2D g, Line line) {
    g.setPaint(line.quiet ? plan.style.mutedText : plan.style.text);
    if (!line.turned) {
      type.draw(g, line.text, line.font, line.x, line.baseline, line.align);
      return;
    }
    AffineTransform before = g.getTransform();
    g.translate(line.x, line.baseline);
    g.rotate(-Math.PI / 2);
    type.draw(g, line.text, line.font, 0, 0, line.align);
    g.setTransform(before);
  }

  List<Mark> marks() {
    List<Mark> marks = new ArrayList<>();
    for (int panel = 0; panel < pieAreas.size(); panel++) {
      scene.pie.marks(panel, pieAreas.get(panel), pieNamed, marks);
    }
    plots.forEach(plot -> plot.marks(marks));
    return marks;
  }

  List<PanelPlot> plots() {
    return plots;
  }
}
