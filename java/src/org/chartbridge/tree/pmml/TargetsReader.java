// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.Remark;

/** Reads how a model changes what its nodes predict. */
final class TargetsReader {
  /** What one {@code Target} says. */
  record Target(String field, List<Remark> remarks) {}

  private final PmmlCursor in;

  TargetsReader(PmmlCursor in) {
    this.in = in;
  }

  /** Reads the current {@code Targets}. */
  List<Target> read() {
    List<Target> targets = new ArrayList<>();
    while (in.nextChild()) {
      if (in.name().equals("Target")) {
        targets.add(target());
      } else {
        in.skip();
      }
    }
    return targets;
  }

  /** What the target with that name says; a target without a name is the only one. */
  static List<Remark> of(List<Target> targets, String field) {
    List<Remark> remarks = new ArrayList<>();
    for (Target target : targets) {
      if (target.field() == null || field == null || target.field().equals(field)) {
        remarks.addAll(target.remarks());
      }
    }
    return remarks;
  }

  private Target target() {
    String field = in.attribute("field");
    List<Remark> remarks = new ArrayList<>();
    addChange(remarks);
    String otherwise = null;
    double highest = 0;
    while (in.nextChild()) {
      if (in.name().equals("TargetValue")) {
        otherwise = in.attribute("defaultValue") == null ? otherwise : in.attribute("defaultValue");
        double prior = in.number("priorProbability", 0);
        if (prior > highest) {
          highest = prior;
          otherwise = in.attribute("value");
        }
      }
      in.skip();
    }
    if (otherwise != null) {
      remarks.add(Remark.of("Without a prediction it is {0}.", otherwise));
    }
    return new Target(field, remarks);
  }

  /** Bounds, rescaling and rounding, in the order in which a model applies them. */
  private void addChange(List<Remark> remarks) {
    List<String> steps = new ArrayList<>();
    List<String> values = new ArrayList<>();
    addNumber("min", Double.NaN, "at least ", steps, values);
    addNumber("max", Double.NaN, "at most ", steps, values);
    addNumber("rescaleFactor", 1, "multiplied by ", steps, values);
    double constant = in.number("rescaleConstant", 0);
    addNumber("rescaleConstant", 0, constant < 0 ? "lowered by " : "raised by ", steps, values);
    switch (in.choice("castInteger", 3, "round", "ceiling", "floor", "none")) {
      case 0 -> steps.add("rounded to a whole number");
      case 1 -> steps.add("rounded up to a whole number");
      case 2 -> steps.add("rounded down to a whole number");
      default -> { }
    }
    if (!steps.isEmpty()) {
      remarks.add(new Remark(
          "Predictions are then changed: " + String.join(", ", steps) + ".", values));
    }
  }

  private void addNumber(String attribute, double none, String before,
      List<String> steps, List<String> values) {
    double number = in.number(attribute, none);
    if (Double.isNaN(number) || number == none) {
      return;
    }
    boolean shift = attribute.equals("rescaleConstant");
    steps.add(before + "{" + values.size() + "}");
    values.add(Double.toString(shift ? Math.abs(number) : number));
  }
}
