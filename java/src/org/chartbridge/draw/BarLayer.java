// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Arrangement;

/** Bars of bar charts and histograms, standing or lying. */
final class BarLayer extends Layer {
  /** A bar between two positions and two measures. */
  record Bar(Group group, double p0, double p1, double v0, double v1, double share) {}

  private static final double SEE_THROUGH = 0.6;

  private final List<Bar> bars;
  private final Bins bins;

  BarLayer(LayerSource source, int panel, List<Bar> bars, Bins bins) {
    super(source, panel);
    this.bars = bars;
    this.bins = bins;
  }

  @Override
  void extend(Extent xExtent, Extent yExtent) {
    Extent positions = element.horizontal ? yExtent : xExtent;
    Extent measures = element.horizontal ? xExtent : yExtent;
    for (Bar bar : bars) {
      positions.add(bar.p0);
      positions.add(bar.p1);
      measures.add(bar.v1);
    }
    measures.needBaseline();
    if (element.element.label() != null) {
      measures.needMargin();
    }
  }

  List<Bar> bars() {
    return bars;
  }

  /** The bins of a histogram, or null. */
  Bins bins() {
    return bins;
  }

  Rectangle2D rect(Frame frame, Bar bar) {
    return frame.rect(element.horizontal, bar.p0, bar.p1, bar.v0, bar.v1);
  }

  @Override
  void draw(Graphics2D g, Frame frame) {
    for (Bar bar : bars) {
      Rectangle2D rect = rect(frame, bar);
      if (rect == null) {
        continue;
      }
      inks.fillRect(g, inset(rect), surface(bar.group), ink(bar.group));
    }
  }

  /** Histograms over each other must show through. */
  private Color surface(Group group) {
    boolean through = bins != null && element.arrangement() == Arrangement.OVERLAID
        && element.colors != null && element.element.opacity() >= 1;
    return through ? Inks.alpha(color(group), SEE_THROUGH) : color(group);
  }

  /** Bins touch each other; a hair of ground between them keeps them apart for the eye. */
  private Rectangle2D inset(Rectangle2D rect) {
    double width = element.horizontal ? rect.getHeight() : rect.getWidth();
    if (bins == null || width < 4) {
      return rect;
    }
    return element.horizontal
        ? new Rectangle2D.Double(rect.getX(), rect.getY() + 0.5, rect.getWidth(), width - 1)
        : new Rectangle2D.Double(rect.getX() + 0.5, rect.getY(), width - 1, rect.getHeight());
  }

  @Override
  void labels(Frame frame, LabelPlacer placer) {
    for (Bar bar : bars) {
      Rectangle2D rect = rect(frame, bar);
      if (rect == null || bar.group.label == null) {
        continue;
      }
      Color inside = Inks.contrast(color(bar.group));
      if (bar.v0 != 0) {
        placer.inside(bar.group.label, rect, inside);
      } else {
        placer.atEnd(bar.group.label, rect, element.horizontal, bar.v1 < 0, inside);
      }
    }
  }

  @Override
  void marks(Frame frame, List<Mark> marks) {
    for (Bar bar : bars) {
      Rectangle2D rect = rect(frame, bar);
      if (rect == null) {
        continue;
      }
      Map<String, String> values = values(bar.group);
      if (bins != null) {
        values.replace(plan.label(element.position()), binText(bar.group));
      }
      if (!Double.isNaN(bar.share)) {
        values.put(plan.text("Share"), plan.formats.share(bar.share, 1));
      }
      marks.add(mark(rect, values));
    }
  }

  private String binText(Group group) {
    double middle = group.position(element.horizontal);
    return plan.format(element.position(), element.positionColumn(), middle - bins.width() / 2)
        + " \u2013 "
        + plan.format(element.position(), element.positionColumn(), middle + bins.width() / 2);
  }

  static List<List<Bar>> byPanel(int panels, List<Bar> bars) {
    List<List<Bar>> result = new ArrayList<>();
    for (int i = 0; i < panels; i++) {
      result.add(new ArrayList<>());
    }
    bars.forEach(bar -> result.get(bar.group.panel).add(bar));
    return result;
  }
}
