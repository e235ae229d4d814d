// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import java.util.TreeSet;
import java.util.function.DoubleFunction;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;

/**
 * What an axis shows: the kind of its scale, its categories, its title, and how its values are
 * written.
 */
final class AxisData {
  private static final int MOST_CATEGORIES = 500;
  private static final double LARGEST = 1e300;
  private static final double SMALLEST_RANGE = 1e-300;

  final boolean horizontal;
  final Axis axis;
  final ScaleKind kind;
  final String title;
  /** Texts of the categories; empty on other scales. */
  final List<String> categories;
  /** Whether all marks show shares of a whole. */
  final boolean shares;
  final DoubleFunction<String> pattern;
  private final Plan plan;
  private final Map<Column, int[]> codes = new HashMap<>();
  private final Map<Column, Map<Double, Integer>> valueCodes = new HashMap<>();

  AxisData(Plan plan, List<ElementPlan> elements, boolean horizontal) {
    this.plan = plan;
    this.horizontal = horizontal;
    axis = horizontal ? plan.chart.x() : plan.chart.y();
    kind = kind(elements);
    categories = kind == ScaleKind.CATEGORY ? collectCategories(elements) : List.of();
    title = axis.title() != null ? plan.text(axis.title()) : defaultTitle(elements);
    shares = elements.stream().allMatch(e
        -> e.horizontal == horizontal
            && e.element.arrangement() == org.chartbridge.chart.Arrangement.FILLED
            && (e.kind == ElementKind.BAR || e.kind == ElementKind.AREA
                || e.kind == ElementKind.HISTOGRAM));
    pattern = pattern();
    checkLimits();
  }

  String name() {
    return horizontal ? "x" : "y";
  }

  private Channel channel(ElementPlan element) {
    return horizontal ? element.x : element.y;
  }

  private Column column(ElementPlan element) {
    return horizontal ? element.xColumn : element.yColumn;
  }

  private boolean isPosition(ElementPlan element) {
    return element.horizontal != horizontal;
  }

  private ScaleKind kind(List<ElementPlan> elements) {
    ScaleKind found = null;
    ElementPlan first = null;
    for (ElementPlan element : elements) {
      ScaleKind own = ownKind(element);
      if (own == null) {
        continue;
      }
      if (found != null && found != own) {
        checkOwnBins(element, own);
        checkOwnBins(first, found);
        throw element.error(name(), "it shows " + noun(own) + ", but " + first.name() + " shows "
            + noun(found) + " on the same axis; let both show the same kind of column, or declare "
            + "scale category.");
      }
      found = own;
      first = element;
    }
    return found == null ? ScaleKind.CATEGORY : found;
  }

  /** The bins that an element brings are numbers whatever the axis says. */
  private void checkOwnBins(ElementPlan element, ScaleKind shown) {
    if (element.element.hasOwnBins()) {
      throw element.error(name(), "its bins are " + noun(shown)
          + ", but the other elements show something else on this axis; give the histogram a chart"
          + " of its own, or show a column of numbers there.");
    }
  }

  private ScaleKind kindOfOwnBins(ElementPlan element) {
    if (axis.scale() == ScaleKind.CATEGORY || axis.scale() == ScaleKind.TIME) {
      throw element.error(name(), "its bins are numbers, which do not fit the axis' scale "
          + axis.scale().name().toLowerCase(Locale.ROOT) + "; change the scale.");
    }
    return axis.scale() == ScaleKind.LOG ? ScaleKind.LOG : ScaleKind.LINEAR;
  }

  private static String noun(ScaleKind kind) {
    return switch (kind) {
      case CATEGORY -> "categories";
      case TIME -> "times";
      default -> "numbers";
    };
  }

  private ScaleKind ownKind(ElementPlan element) {
    if (element.element.hasOwnBins()) {
      return kindOfOwnBins(element);
    }
    Channel channel = channel(element);
    if (channel == null) {
      return null;
    }
    if (element.kind == ElementKind.PIE) {
      return horizontal ? ScaleKind.CATEGORY : ScaleKind.LINEAR;
    }
    Column column = column(element);
    ColumnKind holds = column == null || channel.aggregate() == Aggregate.COUNT
        ? ColumnKind.NUMBER : column.kind();
    boolean category = element.kind == ElementKind.BOX && isPosition(element)
        && axis.scale() == ScaleKind.AUTO;
    ScaleKind natural = category ? ScaleKind.CATEGORY : switch (holds) {
      case NUMBER -> ScaleKind.LINEAR;
      case TIME -> ScaleKind.TIME;
      case CATEGORY -> ScaleKind.CATEGORY;
    };
    ScaleKind wanted = axis.scale();
    if (wanted == null || wanted == ScaleKind.AUTO) {
      return natural;
    }
    boolean measured = ElementPlan.isAggregate(channel)
        || (element.kind == ElementKind.BAR || element.kind == ElementKind.AREA
            || element.kind == ElementKind.BOX) && !isPosition(element);
    if (wanted == ScaleKind.CATEGORY) {
      if (measured || element.kind == ElementKind.HISTOGRAM) {
        throw element.error(name(), "its values cannot stand on a category scale; use scale "
            + "linear.");
      }
      return wanted;
    }
    checkScale(element, column, holds, wanted);
    return wanted;
  }

  private void checkScale(
      ElementPlan element, Column column, ColumnKind holds, ScaleKind wanted) {
    boolean numbers = wanted == ScaleKind.LINEAR || wanted == ScaleKind.LOG;
    ColumnKind needs = numbers ? ColumnKind.NUMBER : ColumnKind.TIME;
    if (holds == needs) {
      return;
    }
    String what = switch (holds) {
      case NUMBER -> "numbers";
      case TIME -> "times";
      case CATEGORY -> "categories";
    };
    throw element.error(name(),
        "column \"" + (column == null ? "count" : column.name()) + "\" holds " + what
            + ", which do not fit the axis' scale " + wanted.name().toLowerCase(Locale.ROOT)
            + "; change the scale, or declare the column as " + (numbers ? "number" : "time")
            + ".");
  }

  private List<String> collectCategories(List<ElementPlan> elements) {
    Map<String, Integer> labels = new LinkedHashMap<>();
    for (ElementPlan element : elements) {
      Column column = column(element);
      if (column == null) {
        labels.putIfAbsent("", labels.size());
        continue;
      }
      if (codes.containsKey(column) || valueCodes.containsKey(column)) {
        continue;
      }
      if (column.kind() == ColumnKind.CATEGORY) {
        codes.put(column, textCodes(column, labels));
      } else {
        valueCodes.put(column, numberCodes(element, column, labels));
      }
      if (labels.size() > MOST_CATEGORIES) {
        throw element.error(name(),
            "column \"" + column.name() + "\" has " + labels.size() + " categories, more than the "
                + MOST_CATEGORIES + " that fit an axis; choose fewer"
                + (column.kind() == ColumnKind.CATEGORY ? ", or another column."
                                                        : ", or scale linear."));
      }
    }
    return List.copyOf(new ArrayList<>(labels.keySet()));
  }

  private int[] textCodes(Column column, Map<String, Integer> labels) {
    boolean[] used = new boolean[column.categories().size()];
    for (int row = 0; row < column.size(); row++) {
      int category = column.category(row);
      if (category >= 0) {
        used[category] = true;
      }
    }
    int[] result = new int[used.length];
    for (int i = 0; i < used.length; i++) {
      result[i] = -1;
      if (used[i]) {
        String text = plan.text(column.categories().get(i));
        labels.putIfAbsent(text, labels.size());
        result[i] = labels.get(text);
      }
    }
    return result;
  }

  private Map<Double, Integer> numberCodes(
      ElementPlan element, Column column, Map<String, Integer> labels) {
    Set<Double> values = new TreeSet<>();
    for (int row = 0; row < column.size(); row++) {
      if (!column.isMissing(row)) {
        values.add(column.number(row));
      }
    }
    Map<Double, Integer> result = new HashMap<>();
    DoubleFunction<String> format = pattern();
    for (double value : values) {
      String text = format != null ? format.apply(value)
          : plan.format(Channel.of(column.name()), column, value);
      labels.putIfAbsent(text, labels.size());
      result.put(value, labels.get(text));
    }
    return result;
  }

  private String defaultTitle(List<ElementPlan> elements) {
    Set<String> titles = new LinkedHashSet<>();
    for (ElementPlan element : elements) {
      Channel channel = channel(element);
      if (channel != null) {
        titles.add(plan.label(channel));
      }
    }
    boolean onlyBins = elements.stream().allMatch(element -> element.element.hasOwnBins());
    if (onlyBins && !horizontal) {
      titles.add(OwnBinsLayer.measureLabel(plan, elements));
    }
    return String.join(", ", titles);
  }

  private DoubleFunction<String> pattern() {
    if (axis.format() == null || axis.format().isEmpty()) {
      return null;
    }
    boolean time = kind == ScaleKind.TIME;
    try {
      return time ? plan.formats.timePattern(axis.format())
                  : plan.formats.numberPattern(axis.format());
    } catch (IllegalArgumentException | java.time.DateTimeException e) {
      throw error("format", "the format \"" + axis.format() + "\" is no "
          + (time ? "date pattern such as d MMM yyyy." : "number pattern such as #,##0.0."), e);
    }
  }

  private void checkLimits() {
    Double min = axis.min();
    Double max = axis.max();
    if (min == null && max == null) {
      return;
    }
    if (kind == ScaleKind.CATEGORY) {
      String given = min == null ? "max" : "min";
      throw error(given, "min and max do not fit categories; drop them.", null);
    }
    if (min != null && max != null && !(min < max)) {
      throw error(
          "min", "min " + limitText(min) + " is not below max " + limitText(max) + ".", null);
    }
    boolean notPositive = min != null && !(min > 0) || max != null && !(max > 0);
    if (kind == ScaleKind.LOG && notPositive) {
      String wrong = min != null && !(min > 0) ? "min" : "max";
      throw error(wrong, "min and max of a log scale must be above 0.", null);
    }
  }

  /** A mistake of this axis in the chart: in its part of the name. */
  private ChartException error(String part, String text, Exception cause) {
    return plan.chart.error(name() + "." + part, "Axis " + name() + ": " + text, cause);
  }

  /** Where a row's value stands; NaN when it is missing. */
  double position(Column column, int row) {
    if (column == null) {
      return 0;
    }
    if (column.isMissing(row)) {
      return Double.NaN;
    }
    if (kind != ScaleKind.CATEGORY) {
      return column.number(row);
    }
    int[] ofTexts = codes.get(column);
    if (ofTexts != null) {
      return ofTexts[column.category(row)];
    }
    return valueCodes.get(column).get(column.number(row));
  }

  /** A value for tooltips. */
  String text(Channel channel, Column column, double value) {
    if (kind == ScaleKind.CATEGORY) {
      return categories.get((int) Math.round(value));
    }
    return plan.format(channel, column, value);
  }

  /**
   * The scale of one panel.
   *
   * @param extent what its marks take
   * @param used the categories that have marks
   * @param step the distance of ticks, to end the axis on one; 0 for none
   */
  AxisScale scale(Extent extent, boolean[] used, double step) {
    if (kind == ScaleKind.CATEGORY) {
      int[] slots = new int[Math.max(1, categories.size())];
      int shown = 0;
      for (int i = 0; i < slots.length; i++) {
        boolean show = used == null || i < used.length && used[i];
        slots[i] = show ? shown++ : -1;
      }
      return AxisScale.category(slots, Math.max(1, shown), axis.reversed() != !horizontal);
    }
    double[] ends = kind == ScaleKind.LOG ? logEnds(extent)
        : kind == ScaleKind.TIME ? timeEnds(extent) : linearEnds(extent, step);
    if (axis.min() != null) {
      ends[0] = axis.min();
    }
    if (axis.max() != null) {
      ends[1] = axis.max();
    }
    if (!(ends[0] < ends[1]) && (axis.min() != null || axis.max() != null)) {
      boolean low = axis.min() != null;
      throw error(low ? "min" : "max", (low ? "min " : "max ")
          + limitText(low ? axis.min() : axis.max())
          + " leaves no data in sight; the values run from " + limitText(extent.min()) + " to "
          + limitText(extent.max()) + ".", null);
    }
    if (kind != ScaleKind.LOG) {
      checkRange(extent, ends[0], ends[1]);
    }
    return AxisScale.continuous(kind, ends[0], ends[1], axis.reversed());
  }

  /** Beyond these, steps and margins are no numbers any more, or all the same number. */
  private void checkRange(Extent extent, double low, double high) {
    boolean large = Math.abs(low) > LARGEST || Math.abs(high) > LARGEST;
    if (!large && high - low >= SMALLEST_RANGE) {
      return;
    }
    String why = large ? "numbers beyond 1e300 have no place on an axis"
        : "numbers that lie less than 1e-300 apart cannot be told apart";
    // The ends have margins that nobody asked for; told is what the chart and the data give.
    boolean given = axis.min() != null || axis.max() != null;
    if (given) {
      String from = axis.min() == null ? "" : " from " + limitText(axis.min());
      String to = axis.max() == null ? "" : " to " + limitText(axis.max());
      throw error(axis.min() != null ? "min" : "max", "it is to run" + from + to + "; " + why
          + ". Choose another unit.", null);
    }
    throw new ChartException("Axis " + name() + ": its values run from " + limitText(extent.min())
        + " to " + limitText(extent.max()) + "; " + why + ". Choose another unit for them.");
  }

  private String limitText(double value) {
    return kind == ScaleKind.TIME ? plan.formats.time(value, false) : Formats.plain(value);
  }

  private double[] linearEnds(Extent extent, double step) {
    double min = extent.isEmpty() ? 0 : extent.min();
    double max = extent.isEmpty() ? 1 : extent.max();
    if (extent.baseline()) {
      min = Math.min(min, 0);
      max = Math.max(max, 0);
    }
    if (min == max) {
      double half = Math.abs(min) < SMALLEST_RANGE ? 1 : Math.abs(min) * 0.1;
      min = extent.baseline() ? min : min - half;
      max += half;
    }
    double span = max - min;
    boolean atLow = extent.baseline() && min == 0 || extent.edges();
    boolean atHigh = extent.baseline() && max == 0 || extent.edges();
    boolean round = step > 0 && (!horizontal || extent.baseline()) && !extent.edges();
    double free = round && !extent.baseline() ? 0 : 0.04;
    double pad = extent.margin() ? free : extent.baseline() ? 0 : free / 2;
    double low = atLow ? min : min - pad * span;
    double high = atHigh ? max : max + pad * span;
    low = low < 0 && min >= 0 ? 0 : low;
    high = high > 0 && max <= 0 ? 0 : high;
    if (round) {
      low = Math.floor(low / step + 1e-9) * step;
      high = Math.ceil(high / step - 1e-9) * step;
    }
    return new double[] {low, high};
  }

  private double[] timeEnds(Extent extent) {
    double min = extent.isEmpty() ? 0 : extent.min();
    double max = extent.isEmpty() ? 86_400_000 : extent.max();
    if (min == max) {
      return new double[] {min - 43_200_000, max + 43_200_000};
    }
    double pad = extent.edges() ? 0 : (extent.margin() ? 0.025 : 0.01) * (max - min);
    return new double[] {min - pad, max + pad};
  }

  private double[] logEnds(Extent extent) {
    double min = extent.isEmpty() ? 1 : extent.min();
    double max = extent.isEmpty() ? 10 : extent.max();
    double decades = Math.log10(max / min);
    double[] steps = decades > 4 ? new double[] {1, 10} : new double[] {1, 2, 5, 10};
    double low = roundLog(min, false, steps);
    double high = roundLog(max, true, steps);
    if (low == high) {
      return new double[] {low / 10, high * 10};
    }
    if (extent.baseline()) {
      low = Math.pow(10, Math.floor(Math.log10(min) - 1e-9));
    }
    return new double[] {low, high};
  }

  private static double roundLog(double value, boolean up, double[] steps) {
    double power = Math.pow(10, Math.floor(Math.log10(value) + 1e-12));
    double mantissa = value / power;
    if (up) {
      for (double step : steps) {
        if (step >= mantissa * (1 - 1e-9)) {
          return step * power;
        }
      }
      return 10 * power;
    }
    for (int i = steps.length - 1; i >= 0; i--) {
      if (steps[i] <= mantissa * (1 + 1e-9)) {
        return steps[i] * power;
      }
    }
    return power;
  }
}
