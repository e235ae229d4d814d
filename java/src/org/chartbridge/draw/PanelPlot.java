// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Graphics2D;
import java.awt.Rectangle;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.Line2D;
import java.awt.geom.Point2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import org.jfree.chart.axis.AxisSpace;
import org.jfree.chart.axis.AxisState;
import org.jfree.chart.plot.CrosshairState;
import org.jfree.chart.plot.DatasetRenderingOrder;
import org.jfree.chart.plot.PlotRenderingInfo;
import org.jfree.chart.plot.PlotState;
import org.jfree.chart.plot.XYPlot;
import org.jfree.ui.RectangleInsets;

/** One panel of a chart with axes. */
final class PanelPlot {
  private final Plan plan;
  private final Frame frame;
  private final List<Layer> layers;
  private final PlotAxis xAxis;
  private final PlotAxis yAxis;
  private final XYPlot plot;
  private final List<LayerRenderer> renderers = new ArrayList<>();
  private final boolean zeroLineX;
  private final boolean zeroLineY;

  PanelPlot(Plan plan, Frame frame, List<Layer> layers, PlotAxis xAxis, PlotAxis yAxis,
      boolean baselineX, boolean baselineY) {
    this.plan = plan;
    this.frame = frame;
    this.layers = layers;
    this.xAxis = xAxis;
    this.yAxis = yAxis;
    zeroLineX = baselineX && crossesZero(frame.x());
    zeroLineY = baselineY && crossesZero(frame.y());
    plot = new QuietPlot();
    setUp();
  }

  /**
   * Draws what a panel has: its ground, the labels of its axes, the grid and the layers.
   *
   * <p>The chart library's own method asks for more, and with it for the colours of the desktop's
   * windows. That loads a look and feel, also where there is no desktop, which costs time and looks
   * into the environment of the host's process.
   */
  private static final class QuietPlot extends XYPlot {
    private static final long serialVersionUID = 1L;

    @Override
    public void draw(Graphics2D g, Rectangle2D area, Point2D anchor, PlotState parent,
        PlotRenderingInfo info) {
      Rectangle2D inner = wholePixels(area);
      if (inner.isEmpty()) {
        return;
      }
      drawBackground(g, inner);
      Map<?, ?> axes = drawAxes(g, area, inner, info);
      Shape clip = g.getClip();
      g.clip(inner);
      drawDomainGridlines(g, inner, ticks(axes.get(getDomainAxis())));
      drawRangeGridlines(g, inner, ticks(axes.get(getRangeAxis())));
      for (int layer = 0; layer < getDatasetCount(); layer++) {
        render(g, inner, layer, info, new CrosshairState());
      }
      g.setClip(clip);
    }

    private static List<?> ticks(Object axis) {
      return ((AxisState) axis).getTicks();
    }

    private static Rectangle2D wholePixels(Rectangle2D area) {
      int left = (int) Math.ceil(area.getMinX());
      int top = (int) Math.ceil(area.getMinY());
      return new Rectangle(left, top, (int) Math.floor(area.getMaxX()) - left,
          (int) Math.floor(area.getMaxY()) - top);
    }
  }

  private static boolean crossesZero(AxisScale scale) {
    return scale.kind() == org.chartbridge.chart.ScaleKind.LINEAR && scale.lower() < 0
        && scale.upper() > 0;
  }

  private void setUp() {
    plot.setInsets(RectangleInsets.ZERO_INSETS);
    plot.setAxisOffset(RectangleInsets.ZERO_INSETS);
    plot.setOutlineVisible(false);
    plot.setBackgroundPaint(plan.style.plotBackground);
    plot.setFixedDomainAxisSpace(new AxisSpace());
    plot.setFixedRangeAxisSpace(new AxisSpace());
    plot.setDatasetRenderingOrder(DatasetRenderingOrder.FORWARD);
    plot.setDomainAxis(xAxis);
    plot.setRangeAxis(yAxis);
    BasicStroke stroke = new BasicStroke((float) (plan.style.gridWidth * plan.type.factor));
    boolean drawn = plan.style.gridWidth > 0;
    plot.setDomainGridlinesVisible(drawn && plan.chart.x().grid() && !frame.x().isCategory());
    plot.setDomainGridlinePaint(plan.style.gridColor);
    plot.setDomainGridlineStroke(stroke);
    plot.setRangeGridlinesVisible(drawn && plan.chart.y().grid() && !frame.y().isCategory());
    plot.setRangeGridlinePaint(plan.style.gridColor);
    plot.setRangeGridlineStroke(stroke);
    for (int i = 0; i < layers.size(); i++) {
      plot.setDataset(i, LayerRenderer.dataset());
      LayerRenderer renderer = new LayerRenderer(layers.get(i), frame);
      renderers.add(renderer);
      plot.setRenderer(i, renderer, false);
    }
  }

  void draw(Graphics2D g) {
    g.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_NORMALIZE);
    Rectangle2D area = frame.area();
    renderers.forEach(renderer -> renderer.setOuterClip(g.getClip()));
    plot.draw(g, area, null, null, null);
    if (!zeroLineY) {
      xAxis.drawLine(g, area);
    }
    if (!zeroLineX) {
      yAxis.drawLine(g, area);
    }
    drawZeroLines(g, area);
    LabelPlacer placer = new LabelPlacer(plan, area);
    layers.forEach(layer -> layer.labels(frame, placer));
    placer.draw(g);
  }

  private void drawZeroLines(Graphics2D g, Rectangle2D area) {
    g.setPaint(plan.style.axisColor);
    g.setStroke(new BasicStroke((float) (plan.style.axisWidth * plan.type.factor)));
    if (zeroLineX) {
      double x = frame.px(0);
      g.draw(new Line2D.Double(x, area.getY(), x, area.getMaxY()));
    }
    if (zeroLineY) {
      double y = frame.py(0);
      g.draw(new Line2D.Double(area.getX(), y, area.getMaxX(), y));
    }
  }

  void marks(List<Mark> marks) {
    layers.forEach(layer -> layer.marks(frame, marks));
  }

  Frame frame() {
    return frame;
  }
}
