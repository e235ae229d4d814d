// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.data.Table;

/**
 * A chart laid out for drawing. Prepare it once, then draw it as often as needed, on one thread.
 */
public final class ChartDrawing {
  private final Chart chart;
  private final PageLayout layout;
  private List<Mark> marks;

  private ChartDrawing(Chart chart, PageLayout layout) {
    this.chart = chart;
    this.layout = layout;
  }

  /**
   * Sums up the data and lays the picture out.
   *
   * @throws ChartException when the data cannot be drawn as the chart asks; the message names
   *     element and column
   */
  public static ChartDrawing prepare(Chart chart, Table table, DrawOptions options) {
    return new ChartDrawing(chart, new PageLayout(new Scene(new Plan(chart, table, options))));
  }

  /** The width in pixels at 100 percent. */
  public int width() {
    return chart.size().width();
  }

  /** The height in pixels at 100 percent. */
  public int height() {
    return chart.size().height();
  }

  /**
   * Draws the chart at 100 percent into (0, 0, width, height); scale the graphics for other sizes.
   */
  public void draw(Graphics2D graphics) {
    Graphics2D g = (Graphics2D) graphics.create();
    try {
      g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
      g.setRenderingHint(
          RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
      g.setRenderingHint(
          RenderingHints.KEY_FRACTIONALMETRICS, RenderingHints.VALUE_FRACTIONALMETRICS_ON);
      layout.draw(g);
    } finally {
      g.dispose();
    }
  }

  /** The marks in the order they are drawn, in pixels at 100 percent. */
  public List<Mark> marks() {
    if (marks == null) {
      marks = List.copyOf(layout.marks());
    }
    return marks;
  }

  List<PanelPlot> plots() {
    return layout.plots();
  }
}
