// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;

/** A model within a node, which predicts for the records that reach the node. */
public sealed interface Embedded {
  /**
   * A tree, whose nodes are the children of the node.
   *
   * @param classification false for regression
   * @param missingValues what happens to records with missing values within it
   * @param returnsLastPrediction whether a node of it whose children do not apply predicts itself
   * @param remarks what else changes its predictions
   */
  record Tree(boolean classification, MissingValues missingValues, boolean returnsLastPrediction,
      List<Remark> remarks) implements Embedded {
    public Tree {
      remarks = List.copyOf(remarks);
    }
  }

  /**
   * A regression.
   *
   * @param classification whether it predicts a class, with one table for each
   * @param normalization the PMML name of the function that its results go through; {@code none}
   *     for none
   * @param tables its equations; at least one
   * @param remarks what else changes its predictions
   */
  record Regression(boolean classification, String normalization, List<Table> tables,
      List<Remark> remarks) implements Embedded {
    public Regression {
      tables = List.copyOf(tables);
      remarks = List.copyOf(remarks);
    }
  }

  /**
   * One equation.
   *
   * @param category the class that it is for, or null
   */
  record Table(String category, double intercept, List<Term> terms) {
    public Table {
      terms = List.copyOf(terms);
    }
  }

  /** A coefficient with what it is multiplied by. */
  record Term(double coefficient, List<Factor> factors) {
    public Term {
      factors = List.copyOf(factors);
    }
  }

  /**
   * The value of a field.
   *
   * @param exponent the power that it is raised to
   * @param value for a categorical field the value at which the factor is 1, and 0 at others; null
   *     for a number
   */
  record Factor(String field, double exponent, String value) {}
}
