// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

import java.util.ArrayList;
import java.util.List;

/** What must hold for an element that brings its bins. */
final class OwnBinsRules {
  private final String path;
  private final Element element;
  private final List<Problem> problems = new ArrayList<>();

  private OwnBinsRules(String path, Element element) {
    this.path = path;
    this.element = element;
  }

  static List<Problem> check(String path, Element element, Chart chart) {
    OwnBinsRules rules = new OwnBinsRules(path, element);
    if (element.kind() != ElementKind.HISTOGRAM) {
      rules.report("", "only a histogram brings its bins");
      return rules.problems;
    }
    rules.checkNothingElse();
    rules.checkAxis("x", chart.x());
    rules.checkAxis("y", chart.y());
    rules.checkOthers(chart);
    rules.checkBins(chart.x().scale() == ScaleKind.LOG);
    return rules.problems;
  }

  private void report(String part, String message) {
    problems.add(new Problem(path + part, message));
  }

  private void checkNothingElse() {
    String brings = "a histogram that brings its bins has no ";
    for (String name : ChannelRules.NAMES) {
      if (ChannelRules.channel(element, name) != null) {
        report("." + name, brings + name);
      }
    }
    if (element.bins() != null) {
      report(".bins", brings + "number of bins to choose");
    }
    if (element.arrangement() != null) {
      report(".arrangement", brings + "arrangement");
    }
  }

  private void checkAxis(String name, Axis axis) {
    if (axis.scale() == ScaleKind.CATEGORY || axis.scale() == ScaleKind.TIME) {
      report("", "a histogram that brings its bins needs an axis of numbers, but the " + name
          + " axis is " + Words.of(axis.scale()));
    }
  }

  /** The other elements must show numbers on the same axes, as far as the chart tells. */
  private void checkOthers(Chart chart) {
    for (Element other : chart.elements()) {
      checkOther(chart, "x", other.x());
      checkOther(chart, "y", other.y());
    }
  }

  private void checkOther(Chart chart, String axis, Channel channel) {
    boolean shows = channel != null && channel.aggregate() != Aggregate.COUNT;
    ColumnDeclaration column = shows ? chart.column(channel.column()) : null;
    if (column != null && column.kind() != ColumnKind.NUMBER) {
      report("", "a histogram that brings its bins needs an axis of numbers, but the " + axis
          + " axis also shows column \"" + column.name() + "\", which is declared as "
          + Words.of(column.kind()));
    }
  }

  private void checkBins(boolean log) {
    List<Bin> bins = element.ownBins();
    if (bins.size() > ChartRules.MAX_OWN_BINS) {
      report("", "the histogram has " + bins.size() + " bins; at most " + ChartRules.MAX_OWN_BINS
          + " are accepted");
    }
    for (int i = 0; i < bins.size(); i++) {
      String message = problem(bins.get(i), i == 0 ? null : bins.get(i - 1), log);
      if (message != null) {
        report(".ownBins[" + i + "]", message);
      }
    }
  }

  private static String problem(Bin bin, Bin before, boolean log) {
    String from = AxisLimit.numberText(bin.from());
    boolean finite = Double.isFinite(bin.from()) && Double.isFinite(bin.to());
    if (!finite || !Double.isFinite(bin.value())) {
      return "the ends and the value of a bin are finite numbers";
    }
    if (bin.from() >= bin.to()) {
      return "the bin ends at " + AxisLimit.numberText(bin.to())
          + ", which is not above its start " + from;
    }
    if (bin.value() < 0) {
      return "the value of the bin is " + AxisLimit.numberText(bin.value())
          + "; expected 0 or more";
    }
    if (before != null && bin.from() < before.to()) {
      return "the bin starts at " + from + ", below the end of the one before it, "
          + AxisLimit.numberText(before.to());
    }
    if (log && bin.from() <= 0) {
      return "a log axis holds only values above 0, but the bin starts at " + from;
    }
    return null;
  }
}
