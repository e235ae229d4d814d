// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.Embedded;
import org.chartbridge.tree.TreeModel;

/** Equations of regressions as texts for people. */
final class RegressionText {
  private static final String MINUS = "\u2212";
  private static final String TIMES = "\u00A0\u00B7\u00A0";

  private final TreeModel tree;
  private final NumberText numbers;

  RegressionText(TreeModel tree, NumberText numbers) {
    this.tree = tree;
    this.numbers = numbers;
  }

  /** For example {@code linear regression} or {@code regression, softmax}. */
  static String kind(Embedded.Regression regression) {
    return regression.normalization().equals("none")
        ? "linear regression" : "regression, " + regression.normalization();
  }

  /** One text for each equation. */
  List<String> equations(Embedded.Regression regression) {
    List<String> texts = new ArrayList<>();
    for (Embedded.Table table : regression.tables()) {
      String category = table.category();
      texts.add((category == null ? "" : tree.classLabel(category) + ": ") + equation(table));
    }
    return texts;
  }

  private String equation(Embedded.Table table) {
    StringBuilder text = new StringBuilder();
    for (Embedded.Term term : table.terms()) {
      boolean negative = term.coefficient() < 0;
      if (text.length() > 0) {
        text.append(negative ? " " + MINUS + " " : " + ");
      } else if (negative) {
        text.append(MINUS);
      }
      List<String> factors = new ArrayList<>();
      double size = Math.abs(term.coefficient());
      if (size != 1 || term.factors().isEmpty()) {
        factors.add(numbers.number(size));
      }
      term.factors().forEach(factor -> factors.add(factor(factor)));
      text.append(String.join(TIMES, factors));
    }
    if (text.length() == 0) {
      return numbers.number(table.intercept());
    }
    if (table.intercept() != 0) {
      text.append(table.intercept() < 0 ? " " + MINUS + " " : " + ")
          .append(numbers.number(Math.abs(table.intercept())));
    }
    return text.toString();
  }

  private String factor(Embedded.Factor factor) {
    String label = tree.fields().label(factor.field());
    if (factor.value() != null) {
      return "[" + label + " = " + tree.fields().valueLabel(factor.field(), factor.value()) + "]";
    }
    return factor.exponent() == 1 ? label : label + "^" + numbers.number(factor.exponent());
  }
}
