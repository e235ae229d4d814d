// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Font;
import java.util.ArrayList;
import java.util.List;

/**
 * How a chart looks: its style, scaled to its size, and the colours, dashes and shapes of its
 * groups. Sizes are in pixels at 100 percent, colours {@code #rrggbb}.
 */
public final class Look {
  private static final int MOST_LINES = 3;

  private final Plan plan;
  private final Inks inks;

  Look(Plan plan, Inks inks) {
    this.plan = plan;
    this.inks = inks;
  }

  static String hex(Color color) {
    return String.format("#%06x", color.getRGB() & 0xFFFFFF);
  }

  /** What sizes of the style are multiplied by in a picture of this size. */
  public double factor() {
    return plan.type.factor;
  }

  public String fontFamily() {
    return plan.style.fontFamily;
  }

  public double titleSize() {
    return plan.type.title.getSize2D();
  }

  public double subtitleSize() {
    return plan.type.subtitle.getSize2D();
  }

  public double headingSize() {
    return plan.type.heading.getSize2D();
  }

  public double axisTitleSize() {
    return plan.type.axisTitle.getSize2D();
  }

  public double tickSize() {
    return plan.type.tick.getSize2D();
  }

  public double legendSize() {
    return plan.type.legend.getSize2D();
  }

  public double labelSize() {
    return plan.type.label.getSize2D();
  }

  public double captionSize() {
    return plan.type.caption.getSize2D();
  }

  public String background() {
    return hex(plan.style.background);
  }

  /** The ground within the axes, or null for none of its own. */
  public String plotBackground() {
    return plan.style.plotBackground == null ? null : hex(plan.style.plotBackground);
  }

  public String text() {
    return hex(plan.style.text);
  }

  public String mutedText() {
    return hex(plan.style.mutedText);
  }

  public String gridColor() {
    return hex(plan.style.gridColor);
  }

  public double gridWidth() {
    return plan.style.gridWidth * factor();
  }

  public String axisColor() {
    return hex(plan.style.axisColor);
  }

  public double axisWidth() {
    return plan.style.axisWidth * factor();
  }

  public double lineWidth() {
    return plan.style.lineWidth * factor();
  }

  /** The diameter of markers without a size of their own. */
  public double markerSize() {
    return plan.style.markerSize * factor();
  }

  /** Whether each group has a dash and a marker shape of its own. */
  public boolean shapes() {
    return plan.style.shapes;
  }

  /** How many groups have a colour before variants of the colours begin. */
  public int paletteSize() {
    return plan.style.palette.size();
  }

  /** The colours of numbers, from the smallest to the largest. */
  public List<String> sequential() {
    return plan.style.sequential.stream().map(Look::hex).toList();
  }

  /** The colour of a group. */
  public String color(int index) {
    return hex(inks.color(index));
  }

  /** The fill of a box in a box plot. */
  public String boxSurface(String color) {
    return hex(BoxLayer.surface(Style.color(color), plan.style));
  }

  /** The lines of a box in a box plot. */
  public String boxInk(String color) {
    return hex(BoxLayer.ink(Style.color(color), plan.style));
  }

  /** Black or white, whichever can be read on the colour. */
  public static String contrast(String color) {
    return hex(Inks.contrast(Style.color(color)));
  }

  /** The dashes of a group's lines, in pixels; empty for none. */
  public List<Double> dash(int index) {
    float[] dash = inks.line(index).getDashArray();
    List<Double> lengths = new ArrayList<>();
    for (int i = 0; dash != null && i < dash.length; i++) {
      lengths.add((double) dash[i]);
    }
    return lengths;
  }

  /**
   * The marker shape of a group: 0 circle, 1 square, 2 triangle, 3 diamond, 4 triangle pointing
   * down, 5 cross.
   */
  public int shape(int index) {
    return inks.shape(index);
  }

  /** The width of a tick text in pixels. */
  public double tickWidth(String text) {
    return plan.type.width(text, plan.type.tick);
  }

  /** The headline in lines that fit the picture. */
  public List<String> titleLines(String text) {
    return lines(text, plan.type.title);
  }

  /** The line below the headline in lines that fit the picture. */
  public List<String> subtitleLines(String text) {
    return lines(text, plan.type.subtitle);
  }

  /** The caption in lines that fit the picture. */
  public List<String> captionLines(String text) {
    return lines(text, plan.type.caption);
  }

  private List<String> lines(String text, Font font) {
    if (text == null || text.isBlank()) {
      return List.of();
    }
    return plan.type.wrap(text, font, plan.chart.size().width() - 2 * margin(), MOST_LINES);
  }

  /** The empty edge around a picture. */
  public double margin() {
    int width = plan.chart.size().width();
    int height = plan.chart.size().height();
    return PageLayout.margin(width, height, factor());
  }
}
