// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.Column;
import org.chartbridge.draw.ChartFacts;
import org.chartbridge.draw.Look;

/** What all parts of one document share. */
final class Context {
  /** The chart as it was given. */
  final Chart chart;
  final ChartFacts facts;
  final Look look;
  final Fields fields;
  /** Whether the rows stay as they are, so that the orders and ends found in them can be told. */
  final boolean fixedRows;
  /** Whether the facts are about the real data, rather than a stand-in for a template. */
  final boolean knownRows;
  /** Null for a chart that stands still. */
  final InteractiveOptions options;
  private final List<ObjectNode> steps = new ArrayList<>();
  private final Map<Column, Discrete> discretes = new LinkedHashMap<>();
  private String rowField;

  Context(Chart chart, ChartFacts facts, boolean knownRows, boolean fixedRows,
      InteractiveOptions options) {
    this.chart = chart;
    this.facts = facts;
    this.knownRows = knownRows;
    this.fixedRows = fixedRows;
    this.options = options;
    look = facts.look();
    fields = new Fields(facts.table().columns(), knownRows);
    steps.addAll(fields.steps());
  }

  /** Adds a step that all rows go through before any element sees them. */
  void addStep(ObjectNode step) {
    steps.add(step);
  }

  List<ObjectNode> steps() {
    return List.copyOf(steps);
  }

  /** A column whose values are told apart. */
  Discrete discrete(Column column) {
    return discretes.computeIfAbsent(column, key -> new Discrete(this, key));
  }

  /** The field with the number of a row, from 1. */
  String rowField() {
    if (rowField == null) {
      rowField = fields.unique("row");
      addStep(Transforms.window(
          List.of(Transforms.operation("row_number", null, rowField)), null, 0, null, List.of()));
    }
    return rowField;
  }

  boolean hasFacet() {
    return chart.facet() != null;
  }

  /** Whether each panel has an axis of its own. */
  boolean isFree(boolean horizontal) {
    return hasFacet()
        && !(horizontal ? chart.facet().sharedX() : chart.facet().sharedY());
  }

  /** The fields that tell panels apart. */
  List<String> panelFields() {
    return hasFacet() ? List.of(panel().field()) : List.of();
  }

  Discrete panel() {
    return discrete(facts.table().column(chart.facet().column()));
  }

  boolean isCategory(boolean horizontal) {
    return facts.scale(horizontal) == ScaleKind.CATEGORY;
  }

  /** Whether marks grow from a zero that lies within an axis; they stand there, not at its end. */
  boolean crossesZero(boolean horizontal) {
    double[] ends = facts.ends(horizontal);
    return fixedRows && !isFree(horizontal) && facts.scale(horizontal) == ScaleKind.LINEAR
        && ends[0] < 0 && ends[1] > 0
        && facts.elements().stream().anyMatch(e -> AxisJson.growsAlong(e, horizontal));
  }

  boolean tooltips() {
    return options != null && options.tooltips();
  }

  /** What the names of a panel's width and height start with. */
  String panelPrefix() {
    return hasFacet() ? "child_" : "";
  }

  /** The width of a category as an expression. */
  String bandwidth(boolean horizontal) {
    String scale = (isFree(horizontal) ? "child_" : "") + (horizontal ? "x" : "y");
    return "bandwidth('" + scale + "')";
  }
}
