// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Graphics2D;
import java.awt.Shape;
import java.awt.geom.Rectangle2D;
import org.jfree.chart.axis.ValueAxis;
import org.jfree.chart.plot.CrosshairState;
import org.jfree.chart.plot.PlotRenderingInfo;
import org.jfree.chart.plot.XYPlot;
import org.jfree.chart.renderer.xy.AbstractXYItemRenderer;
import org.jfree.chart.renderer.xy.XYItemRendererState;
import org.jfree.data.xy.DefaultXYDataset;
import org.jfree.data.xy.XYDataset;

/**
 * Draws a whole layer as the one item of a dataset, so that the chart library's plot stacks and
 * clips the layers.
 */
@SuppressWarnings("serial")
final class LayerRenderer extends AbstractXYItemRenderer {
  private static final long serialVersionUID = 1L;

  private final transient Layer layer;
  private final transient Frame frame;
  private transient Shape outer;

  LayerRenderer(Layer layer, Frame frame) {
    this.layer = layer;
    this.frame = frame;
  }

  /**
   * The clip around the panel: marks at its ends reach a little beyond it, and the chart library
   * would cut them.
   */
  void setOuterClip(Shape clip) {
    outer = clip;
  }

  static XYDataset dataset() {
    DefaultXYDataset data = new DefaultXYDataset();
    data.addSeries("layer", new double[][] {{0}, {0}});
    return data;
  }

  @Override
  public XYItemRendererState initialise(Graphics2D g, Rectangle2D area, XYPlot plot, XYDataset data,
      PlotRenderingInfo info) {
    XYItemRendererState state = new XYItemRendererState(info);
    state.setProcessVisibleItemsOnly(false);
    return state;
  }

  @Override
  public void drawItem(Graphics2D g, XYItemRendererState state, Rectangle2D area,
      PlotRenderingInfo info, XYPlot plot, ValueAxis domainAxis, ValueAxis rangeAxis,
      XYDataset data, int series, int item, CrosshairState crosshair, int pass) {
    Shape inner = g.getClip();
    double reach = layer.reach();
    if (reach > 0) {
      g.setClip(outer);
      g.clip(new Rectangle2D.Double(area.getX() - reach, area.getY() - reach,
          area.getWidth() + 2 * reach, area.getHeight() + 2 * reach));
    }
    layer.draw(g, frame);
    g.setClip(inner);
  }
}
