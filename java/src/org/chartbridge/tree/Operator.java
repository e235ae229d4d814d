// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/** The operators of a simple predicate, with their names in PMML. */
public enum Operator {
  EQUAL("equal", "="),
  NOT_EQUAL("notEqual", "\u2260"),
  LESS_THAN("lessThan", "<"),
  LESS_OR_EQUAL("lessOrEqual", "\u2264"),
  GREATER_THAN("greaterThan", ">"),
  GREATER_OR_EQUAL("greaterOrEqual", "\u2265"),
  IS_MISSING("isMissing", "is missing"),
  IS_NOT_MISSING("isNotMissing", "is not missing");

  private final String pmmlName;
  private final String symbol;

  Operator(String pmmlName, String symbol) {
    this.pmmlName = pmmlName;
    this.symbol = symbol;
  }

  public String pmmlName() {
    return pmmlName;
  }

  /** The sign or the words that stand between, or after, the operands. */
  public String symbol() {
    return symbol;
  }

  public boolean takesValue() {
    return this != IS_MISSING && this != IS_NOT_MISSING;
  }

  /** @param order the sign of "value compared with the operand" */
  Truth holds(int order) {
    return Truth.of(switch (this) {
      case EQUAL -> order == 0;
      case NOT_EQUAL -> order != 0;
      case LESS_THAN -> order < 0;
      case LESS_OR_EQUAL -> order <= 0;
      case GREATER_THAN -> order > 0;
      case GREATER_OR_EQUAL -> order >= 0;
      default -> throw new IllegalStateException(name());
    });
  }
}
