// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.List;

/** Which channels each kind of marks has, which it needs, and which can sum up rows. */
public final class ChannelRules {
  /** All channels, in the order in which texts list them. */
  public static final List<String> NAMES = List.of("x", "y", "color", "size", "label");

  private ChannelRules() {}

  /** The channels that the marks can have. */
  public static List<String> allowed(ElementKind kind) {
    return switch (kind) {
      case BAR, LINE, AREA, HEATMAP -> List.of("x", "y", "color", "label");
      case POINT -> NAMES;
      case HISTOGRAM, BOX -> List.of("x", "y", "color");
      case PIE -> List.of("x", "y", "label");
    };
  }

  /** The channels without which there is nothing to draw. */
  public static List<String> required(ElementKind kind) {
    return switch (kind) {
      case BAR, HISTOGRAM, BOX -> List.of();
      case LINE, AREA, POINT -> List.of("x", "y");
      case PIE -> List.of("x");
      case HEATMAP -> List.of("x", "y", "color");
    };
  }

  /**
   * Whether one of x and y will do: bars and histograms count rows along the other one, boxes stand
   * alone.
   */
  public static boolean needsOnePosition(ElementKind kind) {
    return kind == ElementKind.BAR || kind == ElementKind.HISTOGRAM || kind == ElementKind.BOX;
  }

  /**
   * The channels whose value can sum up the rows of a mark. Of x and y, only one can do so at a
   * time.
   */
  public static List<String> summing(ElementKind kind) {
    return switch (kind) {
      case BAR -> List.of("x", "y", "color", "label");
      case LINE, AREA, PIE -> List.of("y", "label");
      case POINT -> List.of("y", "color", "size", "label");
      case HISTOGRAM -> List.of("x", "y");
      case HEATMAP -> List.of("color", "label");
      case BOX -> List.of();
    };
  }

  /**
   * What a required channel of these marks is for, to finish the sentence "a heat map needs ...".
   */
  public static String meaning(ElementKind kind, String channel) {
    return switch (channel) {
      case "x" -> kind == ElementKind.PIE
          ? "the column of the slices"
          : "the column along the x axis";
      case "y" -> "the value along the y axis";
      default -> "the value that each cell shows";
    };
  }

  /** The channel of that name, or null. */
  public static Channel channel(Element element, String name) {
    return switch (name) {
      case "x" -> element.x();
      case "y" -> element.y();
      case "color" -> element.color();
      case "size" -> element.size();
      case "label" -> element.label();
      default -> throw new IllegalArgumentException(name);
    };
  }
}
