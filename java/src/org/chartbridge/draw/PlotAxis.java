// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.AffineTransform;
import java.awt.geom.Line2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.jfree.chart.axis.AxisSpace;
import org.jfree.chart.axis.AxisState;
import org.jfree.chart.axis.NumberTick;
import org.jfree.chart.axis.TickUnitSource;
import org.jfree.chart.axis.ValueAxis;
import org.jfree.chart.plot.Plot;
import org.jfree.chart.plot.PlotRenderingInfo;
import org.jfree.ui.RectangleEdge;
import org.jfree.ui.TextAnchor;

/** The chart library's axis over a scale and labels of ours. */
@SuppressWarnings("serial")
final class PlotAxis extends ValueAxis {
  private static final long serialVersionUID = 1L;

  private final transient AxisScale scale;
  private final transient AxisLabels labels;
  private final transient Plan plan;
  private final boolean horizontal;
  private final boolean showLabels;
  private final boolean showLine;

  PlotAxis(Plan plan, boolean horizontal, AxisScale scale, AxisLabels labels, boolean showLabels,
      boolean showLine) {
    super(null, (TickUnitSource) null);
    this.plan = plan;
    this.horizontal = horizontal;
    this.scale = scale;
    this.labels = labels;
    this.showLabels = showLabels;
    this.showLine = showLine;
    setRange(new org.jfree.data.Range(scale.lower(), scale.upper()), true, false);
  }

  @Override
  public double valueToJava2D(double value, Rectangle2D area, RectangleEdge edge) {
    double unit = scale.unit(value);
    return horizontal ? area.getX() + unit * area.getWidth()
                      : area.getMaxY() - unit * area.getHeight();
  }

  @Override
  public double java2DToValue(double place, Rectangle2D area, RectangleEdge edge) {
    return scale.value(horizontal ? (place - area.getX()) / area.getWidth()
        : (area.getMaxY() - place) / area.getHeight());
  }

  @Override
  protected void autoAdjustRange() {
    // The scale is fixed.
  }

  @Override
  public void configure() {
    // The scale is fixed.
  }

  @Override
  public AxisSpace reserveSpace(
      Graphics2D g, Plot plot, Rectangle2D area, RectangleEdge edge, AxisSpace space) {
    return space == null ? new AxisSpace() : space;
  }

  @Override
  public List<NumberTick> refreshTicks(
      Graphics2D g, AxisState state, Rectangle2D area, RectangleEdge edge) {
    List<NumberTick> ticks = new ArrayList<>();
    for (Tick tick : labels.ticks()) {
      ticks.add(new NumberTick(tick.value(), "", TextAnchor.CENTER, TextAnchor.CENTER, 0));
    }
    return ticks;
  }

  @Override
  public AxisState draw(Graphics2D g, double cursor, Rectangle2D plotArea, Rectangle2D area,
      RectangleEdge edge, PlotRenderingInfo info) {
    if (showLabels) {
      g.setPaint(plan.style.mutedText);
      for (Tick tick : labels.ticks()) {
        if (horizontal) {
          drawBelow(g, tick, area, edge);
        } else {
          drawBeside(g, tick, area, edge);
        }
      }
    }
    AxisState state = new AxisState(cursor);
    state.setTicks(refreshTicks(g, state, area, edge));
    return state;
  }

  /** The line along the axis; drawn after the marks, so that bars stand on it. */
  void drawLine(Graphics2D g, Rectangle2D area) {
    if (!showLine || plan.style.axisWidth <= 0) {
      return;
    }
    g.setPaint(plan.style.axisColor);
    g.setStroke(new BasicStroke((float) (plan.style.axisWidth * plan.type.factor)));
    g.draw(horizontal
        ? new Line2D.Double(area.getX(), area.getMaxY(), area.getMaxX(), area.getMaxY())
        : new Line2D.Double(area.getX(), area.getY(), area.getX(), area.getMaxY()));
  }

  static double gap(Plan plan) {
    return 5 * plan.type.factor;
  }

  private void drawBelow(Graphics2D g, Tick tick, Rectangle2D area, RectangleEdge edge) {
    Font font = plan.type.tick;
    double x = valueToJava2D(tick.value(), area, edge);
    double top = area.getMaxY() + gap(plan);
    if (labels.angle() == 0) {
      for (String line : tick.lines()) {
        plan.type.draw(g, line, font, x, plan.type.baseline(font, top), 0.5);
        top += plan.type.lineHeight(font);
      }
      return;
    }
    AffineTransform before = g.getTransform();
    g.translate(x, top);
    g.rotate(Math.toRadians(-labels.angle()));
    double middle = plan.type.capHeight(font) / 2;
    double down = labels.angle() == 45 ? plan.type.capHeight(font) * 0.9 : middle;
    for (String line : tick.lines()) {
      plan.type.draw(g, line, font, labels.angle() == 45 ? middle * 0.4 : 0, down, 1);
    }
    g.setTransform(before);
  }

  private void drawBeside(Graphics2D g, Tick tick, Rectangle2D area, RectangleEdge edge) {
    Font font = plan.type.tick;
    double y = valueToJava2D(tick.value(), area, edge);
    double top = y - plan.type.height(tick.lines().size(), font) / 2;
    for (String line : tick.lines()) {
      plan.type.draw(g, line, font, area.getX() - gap(plan), plan.type.baseline(font, top), 1);
      top += plan.type.lineHeight(font);
    }
  }
}
