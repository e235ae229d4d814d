// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import org.chartbridge.tree.Operator;
import org.chartbridge.tree.Predicate;

/** Reads predicates. */
final class PredicateReader {
  private static final String[] OPERATORS =
      Arrays.stream(Operator.values()).map(Operator::pmmlName).toArray(String[]::new);

  private final PmmlCursor in;
  private final FieldMentions mentions;

  /** @param mentions is told the fields that the predicates ask for */
  PredicateReader(PmmlCursor in, FieldMentions mentions) {
    this.in = in;
    this.mentions = mentions;
  }

  /** Whether the current element is a predicate. */
  boolean isPredicate() {
    return switch (in.name()) {
      case "SimplePredicate", "CompoundPredicate", "SimpleSetPredicate", "True", "False" -> true;
      default -> false;
    };
  }

  /** Reads the current element, up to its end. */
  Predicate read() {
    return switch (in.name()) {
      case "SimplePredicate" -> simple();
      case "SimpleSetPredicate" -> membership();
      case "CompoundPredicate" -> compound();
      default -> constant();
    };
  }

  private Predicate constant() {
    boolean value = in.name().equals("True");
    in.skip();
    return new Predicate.Constant(value);
  }

  private Predicate simple() {
    String field = in.required("field");
    mentions.add(field);
    in.required("operator");
    Operator operator = Operator.values()[in.choice("operator", 0, OPERATORS)];
    String value = operator.takesValue() ? in.attribute("value") : null;
    if (operator.takesValue() && value == null) {
      throw in.error("<SimplePredicate> with the operator " + operator.pmmlName()
          + " needs the attribute value");
    }
    in.skip();
    return new Predicate.Simple(field, operator, value);
  }

  private Predicate membership() {
    int offset = in.offset();
    String field = in.required("field");
    mentions.add(field);
    in.required("booleanOperator");
    boolean isIn = in.choice("booleanOperator", 0, "isIn", "isNotIn") == 0;
    List<String> members = null;
    while (in.nextChild()) {
      if (in.name().equals("Array")) {
        members = array();
      } else {
        in.skip();
      }
    }
    if (members == null) {
      throw in.error(offset, "<SimpleSetPredicate> has no <Array>");
    }
    return new Predicate.Membership(field, isIn, members);
  }

  private List<String> array() {
    int offset = in.offset();
    double n = in.number("n", -1);
    List<String> values = ValueArray.parse(in.text());
    if (values == null) {
      throw in.error(offset, "a quote in the <Array> is not closed");
    }
    if (n >= 0 && n != values.size()) {
      throw in.error(offset, "the <Array> has " + values.size() + " values where n says "
          + (n == Math.rint(n) ? Long.toString((long) n) : Double.toString(n)));
    }
    return values;
  }

  private Predicate compound() {
    int offset = in.offset();
    in.required("booleanOperator");
    int join = in.choice("booleanOperator", 0, "and", "or", "xor", "surrogate");
    List<Predicate> parts = new ArrayList<>();
    while (in.nextChild()) {
      if (isPredicate()) {
        parts.add(read());
      } else {
        in.skip();
      }
    }
    if (parts.isEmpty()) {
      throw in.error(offset, "<CompoundPredicate> has no predicates in it");
    }
    return new Predicate.Compound(Predicate.Join.values()[join], parts);
  }
}
