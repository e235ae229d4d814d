// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.text.DecimalFormat;
import java.time.format.DateTimeFormatter;
import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import java.util.regex.Pattern;

/** What must hold in every chart beyond its types, whatever text it comes from. */
public final class ChartRules {
  /** Pixels along one side at 100 percent. */
  public static final int MIN_SIZE = 16;

  public static final int MAX_SIZE = 10_000;
  public static final int MAX_BINS = 500;
  public static final int MAX_OWN_BINS = 10_000;
  public static final int MAX_PANELS_IN_A_ROW = 100;

  private static final Pattern COLOR = Pattern.compile("#[0-9a-fA-F]{6}");

  private final Chart chart;
  private final List<Problem> problems = new ArrayList<>();

  private ChartRules(Chart chart) {
    this.chart = chart;
  }

  /**
   * Everything that is wrong with the chart; empty when it can be drawn, as far as that can be told
   * without its data.
   */
  public static List<Problem> check(Chart chart) {
    ChartRules rules = new ChartRules(chart);
    rules.checkSize();
    rules.checkTitles();
    rules.checkColumns();
    rules.checkAxis("x", chart.x());
    rules.checkAxis("y", chart.y());
    rules.checkElements();
    rules.checkRest();
    return rules.problems;
  }

  private void report(String path, String message) {
    problems.add(new Problem(path, message));
  }

  private void checkSize() {
    checkRange("size.width", "the width", chart.size().width(), MIN_SIZE, MAX_SIZE);
    checkRange("size.height", "the height", chart.size().height(), MIN_SIZE, MAX_SIZE);
  }

  private void checkRange(String path, String what, int value, int min, int max) {
    if (value < min || value > max) {
      report(path, what + " is " + value + "; expected " + min + " to " + max);
    }
  }

  private void checkTitles() {
    checkText("titles.title", chart.titles().title());
    checkText("titles.subtitle", chart.titles().subtitle());
    checkText("titles.caption", chart.titles().caption());
  }

  private void checkColumns() {
    Set<String> names = new HashSet<>();
    for (int i = 0; i < chart.columns().size(); i++) {
      String path = "columns[" + i + "]";
      ColumnDeclaration column = chart.columns().get(i);
      checkName(path + ".name", column.name());
      checkText(path + ".label", column.label());
      if (!names.add(column.name())) {
        report(path, "column \"" + column.name() + "\" is declared twice");
      }
      checkColumnDetails(path, column);
    }
  }

  private void checkColumnDetails(String path, ColumnDeclaration column) {
    String is = "column \"" + column.name() + "\" is declared as " + Words.of(column.kind());
    if (column.pattern() != null && column.kind() != ColumnKind.TIME) {
      report(path + ".pattern", is + "; only a time column has a pattern");
    }
    if (column.pattern() != null && !isTimePattern(column.pattern())) {
      report(path + ".pattern",
          "\"" + column.pattern() + "\" is not a date pattern, such as yyyy-MM-dd");
    }
    if (!column.order().isEmpty() && column.kind() != ColumnKind.CATEGORY) {
      report(path + ".order", is + "; only a category column has an order");
    }
    Set<String> seen = new HashSet<>();
    for (int i = 0; i < column.order().size(); i++) {
      String category = column.order().get(i);
      checkText(path + ".order[" + i + "]", category);
      if (!seen.add(category)) {
        report(path + ".order[" + i + "]", "category \"" + category + "\" is listed twice");
      }
    }
  }

  private void checkAxis(String path, Axis axis) {
    checkText(path + ".title", axis.title());
    boolean hasLimits = axis.min() != null || axis.max() != null;
    if (hasLimits && axis.scale() == ScaleKind.CATEGORY) {
      String limit = axis.min() != null ? ".min" : ".max";
      report(path + limit, "a category axis has no limits");
      return;
    }
    checkLimit(path + ".min", axis, axis.min());
    checkLimit(path + ".max", axis, axis.max());
    if (axis.min() != null && axis.max() != null && axis.min() >= axis.max()) {
      String min = AxisLimit.text(axis.min(), axis.scale());
      String max = AxisLimit.text(axis.max(), axis.scale());
      report(path + ".max", "the axis ends at " + max + ", which is not above its start " + min);
    }
    checkFormat(path + ".format", axis);
  }

  private void checkLimit(String path, Axis axis, Double limit) {
    if (limit == null) {
      return;
    }
    if (limit.isNaN() || limit.isInfinite()) {
      report(path, "an axis limit is a finite number");
    } else if (axis.scale() == ScaleKind.LOG && limit <= 0) {
      String text = AxisLimit.text(limit, axis.scale());
      report(path, "a log axis holds only values above 0, but its limit is " + text);
    }
  }

  private void checkFormat(String path, Axis axis) {
    String format = axis.format();
    if (format == null) {
      return;
    }
    checkText(path, format);
    boolean number = axis.scale() != ScaleKind.TIME && isNumberPattern(format);
    boolean mayBeTime = axis.scale() == ScaleKind.TIME || axis.scale() == ScaleKind.AUTO;
    boolean time = mayBeTime && isTimePattern(format);
    if (axis.scale() == ScaleKind.CATEGORY) {
      report(path, "a category axis has no format");
    } else if (!number && !time) {
      String example = axis.scale() == ScaleKind.TIME ? "yyyy-MM" : "#,##0.0";
      String kind = axis.scale() == ScaleKind.TIME ? "date" : "number";
      report(path, "\"" + format + "\" is not a " + kind + " pattern, such as " + example);
    }
  }

  private void checkElements() {
    if (chart.elements().isEmpty()) {
      report("elements",
          "the chart has no element; " + Suggestions.oneOf(Words.all(ElementKind.class)));
    }
    for (int i = 0; i < chart.elements().size(); i++) {
      String path = "elements[" + i + "]";
      Element element = chart.elements().get(i);
      if (element.kind() == ElementKind.PIE && chart.elements().size() > 1) {
        report(path, "a pie stands alone; it shares no axes with other elements");
      }
      if (element.hasOwnBins()) {
        problems.addAll(OwnBinsRules.check(path, element, chart));
      } else {
        checkChannels(path, element);
      }
      checkLook(path, element);
    }
  }

  private void checkChannels(String path, Element element) {
    List<String> allowed = ChannelRules.allowed(element.kind());
    for (String name : ChannelRules.NAMES) {
      Channel channel = ChannelRules.channel(element, name);
      if (channel != null && !allowed.contains(name)) {
        report(path + "." + name,
            article(element) + " has no " + name + "; " + Suggestions.oneOf(allowed));
      } else if (channel != null) {
        checkChannel(path + "." + name, element, name, channel);
      } else if (ChannelRules.required(element.kind()).contains(name)) {
        report(path,
            article(element) + " needs " + name + ": "
                + ChannelRules.meaning(element.kind(), name));
      }
    }
    checkPositions(path, element);
  }

  private void checkPositions(String path, Element element) {
    boolean none = element.x() == null && element.y() == null;
    if (none && ChannelRules.needsOnePosition(element.kind())) {
      report(path, article(element) + " needs x or y: the column along that axis");
    }
    if (sums(element.x()) && sums(element.y())) {
      report(path + ".y", "x and y are both summed up; one of them must be a plain column");
    }
    boolean measures = element.kind() == ElementKind.BAR || element.kind() == ElementKind.BOX;
    if (measures && isPlainCategory(element.x()) && isPlainCategory(element.y())) {
      String rather = element.kind() == ElementKind.BAR ? " or count" : "";
      report(path,
          article(element) + " needs numbers" + rather
              + ", but x and y are both declared as category");
    }
  }

  private static boolean sums(Channel channel) {
    return channel != null && channel.aggregate() != Aggregate.NONE;
  }

  private boolean isPlainCategory(Channel channel) {
    if (channel == null || sums(channel) || channel.column() == null) {
      return false;
    }
    ColumnDeclaration column = chart.column(channel.column());
    return column != null && column.kind() == ColumnKind.CATEGORY;
  }

  private void checkChannel(String path, Element element, String name, Channel channel) {
    if (channel.column() != null) {
      checkName(path, channel.column());
    } else if (channel.aggregate() != Aggregate.COUNT) {
      report(path, name + " names no column; only count can do without");
    }
    if (sums(channel) && !ChannelRules.summing(element.kind()).contains(name)) {
      report(path,
          name + " of " + article(element) + " cannot be summed up with "
              + Words.of(channel.aggregate()));
    }
    checkColumnKind(path, element, name, channel);
  }

  private void checkColumnKind(String path, Element element, String name, Channel channel) {
    ColumnDeclaration column = channel.column() == null ? null : chart.column(channel.column());
    if (column == null || channel.aggregate() == Aggregate.COUNT) {
      return;
    }
    String is = "column \"" + column.name() + "\" is declared as " + Words.of(column.kind());
    boolean isCategory = column.kind() == ColumnKind.CATEGORY;
    if (channel.aggregate() != Aggregate.NONE && isCategory) {
      report(path, Words.of(channel.aggregate()) + " needs numbers, but " + is);
    } else if (isCategory && mustBeNumber(element, name)) {
      report(path, name + " of " + article(element) + " needs numbers, but " + is);
    } else if (channel.aggregate() == Aggregate.NONE) {
      checkScale(path, name, column, is);
    }
  }

  /** Whether the marks make sense only with numbers or times in this channel. */
  private static boolean mustBeNumber(Element element, String name) {
    boolean alone = element.x() == null || element.y() == null;
    return switch (element.kind()) {
      case HISTOGRAM -> name.equals(sums(element.x()) || element.x() == null ? "y" : "x");
      case BOX -> alone && !name.equals("color");
      case AREA, PIE -> name.equals("y");
      case HEATMAP -> name.equals("color");
      default -> name.equals("size");
    };
  }

  private void checkScale(String path, String name, ColumnDeclaration column, String is) {
    if (!name.equals("x") && !name.equals("y")) {
      return;
    }
    ScaleKind scale = name.equals("x") ? chart.x().scale() : chart.y().scale();
    ColumnKind needed =
        switch (scale) {
          case LINEAR, LOG -> ColumnKind.NUMBER;
          case TIME -> ColumnKind.TIME;
          case AUTO, CATEGORY -> null;
        };
    if (needed != null && column.kind() != needed) {
      String needs = "the " + name + " axis is " + Words.of(scale) + " and needs a ";
      report(path, needs + Words.of(needed) + " column, but " + is);
    }
  }

  private void checkLook(String path, Element element) {
    Set<Arrangement> arrangements = Arrangement.of(element.kind());
    if (element.arrangement() != null && !arrangements.contains(element.arrangement())) {
      String cannot = article(element) + " cannot be " + Words.of(element.arrangement());
      String rather =
          arrangements.isEmpty() ? "" : "; " + Suggestions.oneOf(Words.all(arrangements));
      report(path + ".arrangement", cannot + rather);
    }
    if (element.bins() != null) {
      checkBins(path + ".bins", element);
    }
    if (element.fill() != null) {
      checkColor(path + ".fill", element.fill());
    }
    if (element.fill() != null && (element.color() != null || element.kind() == ElementKind.PIE)) {
      report(path + ".fill",
          "fill sets one colour for all marks, but their colours already come from the data");
    }
    if (!(element.opacity() >= 0 && element.opacity() <= 1)) {
      report(path + ".opacity",
          "the opacity is " + AxisLimit.numberText(element.opacity()) + "; expected 0 to 1");
    }
  }

  private void checkBins(String path, Element element) {
    if (element.kind() != ElementKind.HISTOGRAM) {
      report(path, article(element) + " has no bins; only a histogram has");
    }
    checkRange(path, "the number of bins", element.bins(), 1, MAX_BINS);
  }

  private void checkRest() {
    checkText("legend.title", chart.legend().title());
    if (chart.facet() != null) {
      checkName("facet.column", chart.facet().column());
      if (chart.facet().columns() != null) {
        checkRange("facet.columns", "the number of panels in a row", chart.facet().columns(), 1,
            MAX_PANELS_IN_A_ROW);
      }
    }
    if (chart.style() != null) {
      checkName("style", chart.style());
    }
    if (chart.template() != null) {
      checkName("template", chart.template());
    }
    checkText("data", chart.data());
    for (int i = 0; i < chart.palette().size(); i++) {
      checkColor("palette[" + i + "]", chart.palette().get(i));
    }
  }

  private void checkColor(String path, String color) {
    if (!COLOR.matcher(color).matches()) {
      report(path,
          "\"" + color
              + "\" is not a colour; expected # and six hexadecimal digits, such as #0072b2");
    }
  }

  private void checkName(String path, String name) {
    if (name.isBlank()) {
      report(path, "a name must not be empty");
    }
    checkText(path, name);
  }

  /** Every text must fit into XML 1.0, since every chart can be written as XML. */
  private void checkText(String path, String text) {
    if (text == null) {
      return;
    }
    int bad = text.codePoints().filter(c -> !isXmlCharacter(c)).findFirst().orElse(-1);
    if (bad >= 0) {
      report(path,
          String.format("the text holds the character U+%04X, which a chart cannot hold", bad));
    }
  }

  private static boolean isXmlCharacter(int c) {
    boolean control = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    boolean surrogate = c >= 0xD800 && c <= 0xDFFF;
    return !control && !surrogate && c != 0xFFFE && c != 0xFFFF;
  }

  private static boolean isTimePattern(String pattern) {
    try {
      return !pattern.isBlank() && DateTimeFormatter.ofPattern(pattern) != null;
    } catch (IllegalArgumentException e) {
      return false;
    }
  }

  private static boolean isNumberPattern(String pattern) {
    boolean hasDigit = pattern.indexOf('0') >= 0 || pattern.indexOf('#') >= 0;
    try {
      return hasDigit && new DecimalFormat(pattern) != null;
    } catch (IllegalArgumentException e) {
      return false;
    }
  }

  private static String article(Element element) {
    return switch (element.kind()) {
      case AREA -> "an area";
      case HEATMAP -> "a heat map";
      case BOX -> "a box plot";
      default -> "a " + Words.of(element.kind());
    };
  }
}
