// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.ScaleKind;

/** A histogram that brings its bins; it looks the same in each panel. */
final class OwnBinsLayer extends Layer {
  /** Bars that are narrower than this, in pixels, touch each other. */
  private static final double NARROW = 4;

  private final List<Bin> bins;
  private final boolean alone;

  OwnBinsLayer(LayerSource source, int panel) {
    super(source, panel);
    bins = element.element.ownBins();
    alone = plan.chart.elements().stream().allMatch(other -> other.hasOwnBins());
    if (source.x().kind == ScaleKind.LOG && bins.get(0).from() <= 0) {
      throw element.error("x", "the bin that starts at " + Formats.plain(bins.get(0).from())
          + " has no place on a log scale, which starts above 0; use scale linear.");
    }
  }

  /** How readers call the heights: numbers of something, unless they have fractions. */
  static String measureLabel(Plan plan, List<ElementPlan> elements) {
    for (ElementPlan element : elements) {
      for (Bin bin : element.element.ownBins()) {
        if (bin.value() != Math.rint(bin.value())) {
          return plan.text("Value");
        }
      }
    }
    return plan.text("Count");
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    xExtent.add(bins.get(0).from());
    xExtent.add(bins.get(bins.size() - 1).to());
    for (Bin bin : bins) {
      if (bin.value() > 0) {
        yExtent.add(bin.value());
      }
    }
    yExtent.needBaseline();
  }

  private Rectangle2D rect(Frame frame, Bin bin) {
    return frame.rect(false, bin.from(), bin.to(), 0, bin.value());
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    Color full = element.fill != null ? element.fill : inks.color(element.seriesIndex);
    Color color = Inks.alpha(full, element.element.opacity());
    int ink = element.fill != null ? -1 : element.seriesIndex;
    for (Bin bin : bins) {
      Rectangle2D rect = bin.value() > 0 ? rect(frame, bin) : null;
      if (rect != null) {
        inks.fillRect(g, inset(rect), color, ink);
      }
    }
  }

  /** Bins touch each other; a hair of ground between them keeps them apart for the eye. */
  private static Rectangle2D inset(Rectangle2D rect) {
    if (rect.getWidth() < NARROW) {
      return rect;
    }
    return new Rectangle2D.Double(
        rect.getX() + 0.5, rect.getY(), rect.getWidth() - 1, rect.getHeight());
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (Bin bin : bins) {
      Rectangle2D rect = rect(frame, bin);
      if (rect == null) {
        continue;
      }
      Map<String, String> values = new LinkedHashMap<>();
      putPanel(values);
      values.put(binLabel(), plan.formats.number(bin.from()) + " \u2013 "
          + plan.formats.number(bin.to()));
      values.put(valueLabel(), plan.formats.number(bin.value()));
      marks.add(mark(rect, values));
    }
  }

  private String binLabel() {
    return xData().title.isEmpty() ? plan.text("Bin") : xData().title;
  }

  private String valueLabel() {
    boolean named = alone && !yData().title.isEmpty();
    return named ? yData().title : measureLabel(plan, List.of(element));
  }
}
