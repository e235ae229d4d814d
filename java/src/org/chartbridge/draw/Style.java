// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;

/**
 * Fonts, sizes, colours and line widths of a picture. Sizes are in pixels at 100 percent in a
 * picture of 800 x 600 pixels; smaller and larger pictures scale them gently.
 */
public final class Style {
  /** Names of the built-in styles, the default first. */
  public static final List<String> NAMES = List.of("print", "dark", "mono", "slides");

  private static final List<Color> OKABE_ITO = colors(
      "#0072b2", "#e69f00", "#009e73", "#cc79a7", "#56b4e9", "#d55e00", "#8c8c8c", "#f0e442");
  private static final List<Color> VIRIDIS = colors("#440154", "#472d7b", "#3b528b", "#2c728e",
      "#21918c", "#28ae80", "#5ec962", "#addc30", "#fde725");

  final String name;
  final String fontFamily;
  final double titleSize;
  final double subtitleSize;
  final double headingSize;
  final double axisTitleSize;
  final double tickSize;
  final double legendSize;
  final double labelSize;
  final double captionSize;
  final Color background;
  final Color plotBackground;
  final Color text;
  final Color mutedText;
  final Color gridColor;
  final double gridWidth;
  final Color axisColor;
  final double axisWidth;
  final double lineWidth;
  final double markerSize;
  final boolean patterns;
  final boolean shapes;
  final List<Color> palette;
  final List<Color> sequential;

  Style(Builder b) {
    name = b.name;
    fontFamily = b.fontFamily;
    titleSize = b.titleSize;
    subtitleSize = b.subtitleSize;
    headingSize = b.headingSize;
    axisTitleSize = b.axisTitleSize;
    tickSize = b.tickSize;
    legendSize = b.legendSize;
    labelSize = b.labelSize;
    captionSize = b.captionSize;
    background = b.background;
    plotBackground = b.plotBackground;
    text = b.text;
    mutedText = b.mutedText;
    gridColor = b.gridColor;
    gridWidth = b.gridWidth;
    axisColor = b.axisColor;
    axisWidth = b.axisWidth;
    lineWidth = b.lineWidth;
    markerSize = b.markerSize;
    patterns = b.patterns;
    shapes = b.shapes;
    palette = List.copyOf(b.palette);
    sequential = List.copyOf(b.sequential);
  }

  /**
   * A built-in style.
   *
   * @param name one of {@link #NAMES}; null or empty for "print"
   * @throws ChartException when there is no such style
   */
  public static Style named(String name) {
    String key = name == null || name.isEmpty() ? "print" : name;
    return switch (key) {
      case "print" -> print().build();
      case "dark" -> dark().build();
      case "mono" -> mono().build();
      case "slides" -> slides().build();
      default -> throw new ChartException(
          "There is no style \"" + name + "\"; the styles are " + String.join(", ", NAMES) + ".");
    };
  }

  /**
   * The style that a chart names.
   *
   * @throws ChartException when there is no such style
   */
  public static Style of(Chart chart) {
    try {
      return named(chart.style());
    } catch (ChartException e) {
      throw chart.error("style", e.getMessage(), e);
    }
  }

  /**
   * A style document: single settings that replace those of another style.
   *
   * @param xml the document
   * @param base the style it starts from when it names none itself; null for "print"
   * @throws ChartException when the document cannot be read; the message names line,
   *     element and attribute
   */
  public static Style parse(byte[] xml, Style base) {
    return StyleReader.read(xml, base == null ? named("print") : base);
  }

  public String name() {
    return name;
  }

  /** Colours of groups, in the order of use. */
  public List<Color> palette() {
    return palette;
  }

  public Color background() {
    return background;
  }

  /** The family of all fonts. */
  public String fontFamily() {
    return fontFamily;
  }

  /** The colour of texts. */
  public Color text() {
    return text;
  }

  /** The colour of texts that matter less. */
  public Color mutedText() {
    return mutedText;
  }

  public Color axisColor() {
    return axisColor;
  }

  Style withPalette(List<Color> colors) {
    Builder builder = new Builder(this);
    builder.palette = colors;
    return builder.build();
  }

  private static Builder print() {
    Builder b = new Builder();
    b.name = "print";
    b.fontFamily = "Liberation Sans";
    b.titleSize = 19;
    b.subtitleSize = 14;
    b.headingSize = 12.5;
    b.axisTitleSize = 12.5;
    b.tickSize = 12;
    b.legendSize = 12;
    b.labelSize = 11;
    b.captionSize = 10.5;
    b.background = Color.WHITE;
    b.plotBackground = null;
    b.text = color("#1f1f1f");
    b.mutedText = color("#555555");
    b.gridColor = color("#e4e4e4");
    b.gridWidth = 1;
    b.axisColor = color("#8a8a8a");
    b.axisWidth = 1;
    b.lineWidth = 2;
    b.markerSize = 7;
    b.palette = OKABE_ITO;
    b.sequential = reversed(VIRIDIS);
    return b;
  }

  private static Builder dark() {
    Builder b = print();
    b.name = "dark";
    b.background = color("#1b1e23");
    b.text = color("#f2f2f2");
    b.mutedText = color("#b9bec6");
    b.gridColor = color("#343942");
    b.axisColor = color("#7d848f");
    b.palette = colors(
        "#56b4e9", "#e69f00", "#2bc49a", "#e08fbe", "#f0e442", "#f07b3f", "#a9b1bd", "#3d8fd1");
    b.sequential = VIRIDIS;
    return b;
  }

  private static Builder mono() {
    Builder b = print();
    b.name = "mono";
    b.patterns = true;
    b.shapes = true;
    b.text = Color.BLACK;
    b.mutedText = color("#404040");
    b.gridColor = color("#dddddd");
    b.axisColor = color("#606060");
    b.palette = colors("#222222", "#9a9a9a", "#5c5c5c", "#c4c4c4", "#3f3f3f", "#7c7c7c");
    b.sequential = colors("#f2f2f2", "#b8b8b8", "#787878", "#404040", "#101010");
    return b;
  }

  private static Builder slides() {
    Builder b = print();
    b.name = "slides";
    b.titleSize = 28;
    b.subtitleSize = 20;
    b.headingSize = 18;
    b.axisTitleSize = 18;
    b.tickSize = 17;
    b.legendSize = 17;
    b.labelSize = 16;
    b.captionSize = 14;
    b.axisWidth = 1.5;
    b.gridWidth = 1.25;
    b.lineWidth = 3.5;
    b.markerSize = 10;
    return b;
  }

  /** The colour of {@code #rrggbb}. */
  static Color color(String hex) {
    if (!hex.matches("#[0-9a-fA-F]{6}")) {
      throw new ChartException("\"" + hex + "\" is no colour; a colour is written #rrggbb.");
    }
    return new Color(Integer.parseInt(hex.substring(1), 16));
  }

  static List<Color> colors(String... hex) {
    return java.util.Arrays.stream(hex).map(Style::color).toList();
  }

  private static List<Color> reversed(List<Color> colors) {
    List<Color> copy = new java.util.ArrayList<>(colors);
    java.util.Collections.reverse(copy);
    return copy;
  }

  /** A style under construction. */
  static final class Builder {
    String name;
    String fontFamily;
    double titleSize;
    double subtitleSize;
    double headingSize;
    double axisTitleSize;
    double tickSize;
    double legendSize;
    double labelSize;
    double captionSize;
    Color background;
    Color plotBackground;
    Color text;
    Color mutedText;
    Color gridColor;
    double gridWidth;
    Color axisColor;
    double axisWidth;
    double lineWidth;
    double markerSize;
    boolean patterns;
    boolean shapes;
    List<Color> palette;
    List<Color> sequential;

    Builder() {}

    Builder(Style s) {
      name = s.name;
      fontFamily = s.fontFamily;
      titleSize = s.titleSize;
      subtitleSize = s.subtitleSize;
      headingSize = s.headingSize;
      axisTitleSize = s.axisTitleSize;
      tickSize = s.tickSize;
      legendSize = s.legendSize;
      labelSize = s.labelSize;
      captionSize = s.captionSize;
      background = s.background;
      plotBackground = s.plotBackground;
      text = s.text;
      mutedText = s.mutedText;
      gridColor = s.gridColor;
      gridWidth = s.gridWidth;
      axisColor = s.axisColor;
      axisWidth = s.axisWidth;
      lineWidth = s.lineWidth;
      markerSize = s.markerSize;
      patterns = s.patterns;
      shapes = s.shapes;
      palette = s.palette;
      sequential = s.sequential;
    }

    Style build() {
      return new Style(this);
    }
  }
}
