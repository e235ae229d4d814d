// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.Table;
import org.jfree.chart.JFreeChart;
import org.jfree.chart.axis.NumberAxis;
import org.jfree.chart.axis.SymbolAxis;
import org.jfree.chart.plot.XYPlot;
import org.jfree.chart.renderer.xy.StandardXYBarPainter;
import org.jfree.chart.renderer.xy.XYBarRenderer;
import org.jfree.data.xy.XYIntervalSeries;
import org.jfree.data.xy.XYIntervalSeriesCollection;

/** A chart laid out for drawing. Prepare it once, then draw it as often as needed, on one thread. */
public final class ChartDrawing {
  private final Chart chart;
  private final JFreeChart drawing;
  private final List<Mark> marks;

  private ChartDrawing(Chart chart, JFreeChart drawing, List<Mark> marks) {
    this.chart = chart;
    this.drawing = drawing;
    this.marks = List.copyOf(marks);
  }

  /**
   * Sums up the data and lays the picture out.
   *
   * @throws ChartException when the data cannot be drawn as the chart asks; the message names element and column
   */
  public static ChartDrawing prepare(Chart chart, Table table, DrawOptions options) {
    Element element = chart.elements().get(0);
    if (element.kind() != ElementKind.BAR) {
      throw new ChartException("Element 1 (" + element.kind() + ") cannot be drawn.");
    }
    Style style = options.style() == null ? Style.named(chart.style()) : options.style();
    Column x = table.column(element.x().column());
    Column y = table.column(element.y().column());
    double[] sums = new double[x.categories().size()];
    for (int row = 0; row < table.rowCount(); row++) {
      if (!x.isMissing(row) && !y.isMissing(row)) {
        sums[x.category(row)] += y.number(row);
      }
    }
    XYIntervalSeries series = new XYIntervalSeries("y");
    for (int i = 0; i < sums.length; i++) {
      series.add(i, i - 0.4, i + 0.4, sums[i], Math.min(0, sums[i]), Math.max(0, sums[i]));
    }
    XYIntervalSeriesCollection data = new XYIntervalSeriesCollection();
    data.addSeries(series);
    XYBarRenderer renderer = new XYBarRenderer();
    renderer.setUseYInterval(true);
    renderer.setShadowVisible(false);
    renderer.setBarPainter(new StandardXYBarPainter());
    renderer.setSeriesPaint(0, style.palette().get(0));
    XYPlot plot = new XYPlot(data, new SymbolAxis(chart.label(x.name()),
        x.categories().toArray(String[]::new)), new NumberAxis(chart.label(y.name())), renderer);
    JFreeChart drawing = new JFreeChart(chart.titles().title(), null, plot, false);
    drawing.setBackgroundPaint(style.background());
    List<Mark> marks = new ArrayList<>();
    for (int i = 0; i < sums.length; i++) {
      Map<String, String> values = new LinkedHashMap<>();
      values.put(chart.label(x.name()), x.categories().get(i));
      values.put(chart.label(y.name()), Formats.plain(sums[i]));
      double width = (double) chart.size().width() / sums.length;
      marks.add(new Mark(
          new Rectangle2D.Double(i * width, 0, width, chart.size().height()), values, 0, ""));
    }
    return new ChartDrawing(chart, drawing, marks);
  }

  /** The width in pixels at 100 percent. */
  public int width() {
    return chart.size().width();
  }

  /** The height in pixels at 100 percent. */
  public int height() {
    return chart.size().height();
  }

  /** Draws the chart at 100 percent into (0, 0, width, height); scale the graphics for other sizes. */
  public void draw(Graphics2D g) {
    drawing.draw(g, new Rectangle2D.Double(0, 0, width(), height()));
  }

  /** The marks in the order they were drawn, in pixels at 100 percent. Call it after {@link #draw}. */
  public List<Mark> marks() {
    return marks;
  }
}
