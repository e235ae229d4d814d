// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.draw.ElementFacts;

/** Shares the room at a position between the marks that stand there side by side. */
final class Dodging {
  private final Context context;
  private final ElementFacts element;

  Dodging(Context context, ElementFacts element) {
    this.context = context;
    this.element = element;
  }

  /** Whether several colours stand side by side. */
  static boolean groups(Context context, ElementFacts element) {
    boolean colors = element.element().color() != null && !element.continuousColor();
    boolean sideBySide = element.element().kind() == ElementKind.BOX
        || element.element().arrangement() == Arrangement.GROUPED;
    if (!colors || !sideBySide) {
      return false;
    }
    return context.knownRows ? element.dodges() : !element.repeatsAxis();
  }

  /**
   * Whether several rows may stand at one position in one colour, so that each gets a part of the
   * room.
   */
  boolean splits(Sums sums) {
    return element.element().kind() == ElementKind.BAR
        && element.element().arrangement() == Arrangement.GROUPED && !sums.aggregates()
        && (!context.knownRows || element.shares());
  }

  /** Where a mark lies within the room, from 0 to 1. */
  record Part(List<ObjectNode> steps, String from, String width) {}

  /**
   * The part of the room that a mark takes.
   *
   * @param position the field of the position
   */
  Part part(Sums sums, String position) {
    List<ObjectNode> steps = new ArrayList<>();
    String slot = "0";
    String slots = "1";
    if (groups(context, element)) {
      if (context.fixedRows) {
        slot = Expr.datum(sums.rank);
        slots = String.valueOf(context.discrete(element.colorColumn()).values().size());
      } else {
        String place = context.fields.unique("slot");
        String count = context.fields.unique("slots");
        steps.add(Transforms.window(List.of(Transforms.operation("dense_rank", null, place)), null,
            0, sums.rank, List.of()));
        steps.add(Transforms.joinAggregate(
            List.of(Transforms.operation("max", place, count)), List.of()));
        slot = "(" + Expr.datum(place) + " - 1)";
        slots = Expr.datum(count);
      }
    }
    if (!splits(sums)) {
      return new Part(steps, slot + " / " + slots, "1 / " + slots);
    }
    List<String> same = new ArrayList<>(context.panelFields());
    same.add(position);
    if (sums.color != null && sums.rank != null) {
      same.add(sums.color);
    }
    String index = context.fields.unique("part");
    String parts = context.fields.unique("parts");
    steps.add(Transforms.window(
        List.of(Transforms.operation("row_number", null, index)), null, 0, null, same));
    steps.add(Transforms.joinAggregate(
        List.of(Transforms.operation("count", null, parts)), same));
    String width = "1 / " + slots + " / " + Expr.datum(parts);
    return new Part(steps,
        slot + " / " + slots + " + (" + Expr.datum(index) + " - 1) * " + width, width);
  }
}
