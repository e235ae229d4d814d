// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.util.Locale;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;

/**
 * An element with its channels checked against the data and filled in where the chart leaves them
 * open.
 */
final class ElementPlan {
  final int index;
  private final Plan plan;
  final Element element;
  final ElementKind kind;
  final Channel x;
  final Channel y;
  final Column xColumn;
  final Column yColumn;
  final Column colorColumn;
  final Column sizeColumn;
  final Column labelColumn;
  final Color fill;
  /** Whether positions run along the y axis and measures along the x axis. */
  final boolean horizontal;
  /** How its marks are coloured; set once all elements are known. */
  ColorAssignment colors;
  /** Its colour when it has neither a colour column nor a fill. */
  int seriesIndex;

  ElementPlan(Plan plan, int index, Element element) {
    this.index = index;
    this.plan = plan;
    this.element = element;
    kind = element.kind();
    Channel givenX = element.x();
    Channel givenY = element.y();
    boolean reads = !element.hasOwnBins();
    boolean counts = reads
        && (kind == ElementKind.BAR || kind == ElementKind.HISTOGRAM || kind == ElementKind.PIE);
    boolean noX = givenX == null && givenY != null && counts && kind != ElementKind.PIE;
    x = noX ? Channel.count() : givenX;
    y = givenY == null && counts ? Channel.count() : givenY;
    require(x, "x", reads && (kind != ElementKind.BOX || y == null));
    require(y, "y", reads && (kind != ElementKind.BOX || x == null));
    if (kind == ElementKind.HEATMAP) {
      require(element.color(), "color", true);
    }
    xColumn = resolve(plan, "x", x);
    yColumn = resolve(plan, "y", y);
    colorColumn = resolve(plan, "color", element.color());
    sizeColumn = resolve(plan, "size", element.size());
    labelColumn = resolve(plan, "label", element.label());
    fill = element.fill() == null ? null : Style.color(element.fill());
    horizontal = isHorizontal(plan);
    checkKinds();
  }

  /** How error messages call the element. */
  String name() {
    return "Element " + (index + 1) + " (" + kindName() + ")";
  }

  String kindName() {
    return kind.name().toLowerCase(Locale.ROOT);
  }

  private String oneOfKind() {
    return (kind == ElementKind.AREA ? "an " : "a ") + kindName();
  }

  /** Where the chart has it, in the words of {@link org.chartbridge.chart.Problem#path}. */
  String path() {
    return "elements[" + index + "]";
  }

  ChartException error(String channel, String text) {
    return plan.chart.error(path() + "." + channel, name() + ", " + channel + ": " + text);
  }

  /** A mistake of the whole element; the text goes on after its name. */
  ChartException error(String text) {
    return plan.chart.error(path(), name() + text);
  }

  Channel position() {
    return horizontal ? y : x;
  }

  Channel measure() {
    return horizontal ? x : y;
  }

  Column positionColumn() {
    return horizontal ? yColumn : xColumn;
  }

  Column measureColumn() {
    return horizontal ? xColumn : yColumn;
  }

  String measureName() {
    return horizontal ? "x" : "y";
  }

  String positionName() {
    return horizontal ? "y" : "x";
  }

  Arrangement arrangement() {
    if (element.arrangement() != null) {
      return element.arrangement();
    }
    return kind == ElementKind.BAR ? Arrangement.GROUPED : Arrangement.STACKED;
  }

  boolean aggregates() {
    return isAggregate(x) || isAggregate(y) || isAggregate(element.color())
        || isAggregate(element.size());
  }

  static boolean isAggregate(Channel channel) {
    return channel != null && channel.aggregate() != Aggregate.NONE;
  }

  /** Whether colours are a scale of numbers rather than one colour for each category. */
  boolean continuousColor() {
    if (element.color() == null) {
      return false;
    }
    if (kind == ElementKind.HEATMAP || isAggregate(element.color())) {
      return true;
    }
    return kind == ElementKind.POINT && colorColumn.kind() != ColumnKind.CATEGORY;
  }

  private void require(Channel channel, String name, boolean needed) {
    if (channel == null && needed) {
      throw error(name, "the channel is missing; name the column to show there.");
    }
  }

  private Column resolve(Plan plan, String name, Channel channel) {
    if (channel == null) {
      return null;
    }
    if (channel.column() == null) {
      if (channel.aggregate() == Aggregate.COUNT) {
        return null;
      }
      throw error(name, "there is no column; only count does without one.");
    }
    Column column = plan.column(this, name, channel.column());
    boolean needsNumbers =
        channel.aggregate() != Aggregate.NONE && channel.aggregate() != Aggregate.COUNT;
    String aggregate = channel.aggregate().name().toLowerCase(Locale.ROOT);
    if (needsNumbers && column.kind() == ColumnKind.CATEGORY) {
      throw error(name, "column \"" + column.name() + "\" holds categories, and " + aggregate
          + " needs numbers; use count, or declare the column as number.");
    }
    if (channel.aggregate() == Aggregate.SUM && column.kind() == ColumnKind.TIME) {
      throw error(name, "column \"" + column.name()
          + "\" holds times, which have no sum; use count, min or max.");
    }
    return column;
  }

  private boolean isHorizontal(Plan plan) {
    switch (kind) {
      case BAR:
        if (isAggregate(x) != isAggregate(y)) {
          return isAggregate(x);
        }
        return isCategory(yColumn, plan.chart.y().scale())
            && !isCategory(xColumn, plan.chart.x().scale());
      case HISTOGRAM:
        return isAggregate(x) && !isAggregate(y);
      case BOX:
        if (x == null || y == null) {
          return y == null;
        }
        return isCategory(yColumn, plan.chart.y().scale())
            && !isCategory(xColumn, plan.chart.x().scale());
      default:
        return false;
    }
  }

  private static boolean isCategory(Column column, ScaleKind scale) {
    return column != null && (column.kind() == ColumnKind.CATEGORY || scale == ScaleKind.CATEGORY);
  }

  private void checkKinds() {
    switch (kind) {
      case BAR, LINE, AREA -> checkMeasure();
      case HISTOGRAM -> {
        if (!element.hasOwnBins()) {
          checkHistogram();
        }
      }
      case BOX -> checkBox();
      case PIE -> {
        if (isAggregate(x)) {
          throw error("x", "the slices of a pie are categories and cannot be summed up.");
        }
        checkMeasure();
      }
      default -> { }
    }
    if (element.size() != null) {
      checkNumber("size", sizeColumn, element.size());
    }
    if (continuousColor()) {
      checkNumber("color", colorColumn, element.color());
      if (kind != ElementKind.HEATMAP && kind != ElementKind.POINT && kind != ElementKind.BAR) {
        throw error("color", "an aggregate gives every mark its own colour, which a " + kindName()
            + " cannot show; name a column without aggregate.");
      }
    }
  }

  private void checkMeasure() {
    if (isAggregate(position()) && !isAggregate(measure())) {
      throw error(positionName(), oneOfKind() + " cannot sum up its positions; sum up "
          + measureName() + " instead.");
    }
    if (isAggregate(position())) {
      throw error(positionName(),
          "x and y are both summed up; one of them must be a plain column.");
    }
    if (kind == ElementKind.LINE || kind == ElementKind.PIE || kind == ElementKind.BAR
        || kind == ElementKind.AREA) {
      boolean category = measureColumn() != null && measure().aggregate() == Aggregate.NONE
          && measureColumn().kind() == ColumnKind.CATEGORY;
      if (category && kind != ElementKind.LINE) {
        throw error(measureName(), "column \"" + measureColumn().name() + "\" holds categories, "
            + "and "
            + oneOfKind() + " needs numbers there; use count, or declare the column as number.");
      }
    }
  }

  private void checkHistogram() {
    if (isAggregate(position())) {
      throw error(positionName(),
          "x and y are both summed up; one of them must be a plain column of numbers.");
    }
    checkNumber(positionName(), positionColumn(), position());
    if (!isAggregate(measure())) {
      throw error(measureName(), "a histogram sums up the rows of each bin; use count or another "
          + "aggregate, or leave " + measureName() + " out.");
    }
    if (element.bins() != null && (element.bins() < 1 || element.bins() > 500)) {
      throw error("bins", "found " + element.bins() + ", expected a number from 1 to 500.");
    }
  }

  private void checkBox() {
    if (isAggregate(x) || isAggregate(y)) {
      throw error(isAggregate(x) ? "x" : "y",
          "a box plot shows the distribution of rows; name the column without aggregate.");
    }
    checkNumber(measureName(), measureColumn(), measure());
  }

  private void checkNumber(String channel, Column column, Channel given) {
    boolean category = column != null && given.aggregate() != Aggregate.COUNT
        && column.kind() == ColumnKind.CATEGORY;
    if (category) {
      throw error(channel, "column \"" + column.name() + "\" holds categories, and " + oneOfKind()
          + " needs numbers there; choose another column, or declare it as number.");
    }
  }
}
