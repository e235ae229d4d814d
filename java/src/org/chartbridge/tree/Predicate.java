// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;
import java.util.function.Function;

/** The condition under which a record belongs to a node or a segment. */
public sealed interface Predicate {
  /**
   * @param fields how values of the fields are compared
   * @param values gives the text of a field's value, or null when it is missing
   */
  Truth test(FieldCatalog fields, Function<String, String> values);

  /** Always true, or always false. */
  record Constant(boolean value) implements Predicate {
    @Override
    public Truth test(FieldCatalog fields, Function<String, String> values) {
      return Truth.of(value);
    }
  }

  /** @param value null for the operators that take none */
  record Simple(String field, Operator operator, String value) implements Predicate {
    @Override
    public Truth test(FieldCatalog fields, Function<String, String> values) {
      String found = fields.value(field, values);
      if (!operator.takesValue()) {
        return Truth.of((found == null) == (operator == Operator.IS_MISSING));
      }
      return found == null ? Truth.UNKNOWN : operator.holds(fields.compare(field, found, value));
    }
  }

  /** @param isIn true for "is one of", false for "is none of" */
  record Membership(String field, boolean isIn, List<String> members) implements Predicate {
    public Membership {
      members = List.copyOf(members);
    }

    @Override
    public Truth test(FieldCatalog fields, Function<String, String> values) {
      String found = fields.value(field, values);
      if (found == null) {
        return Truth.UNKNOWN;
      }
      boolean contained = members.stream().anyMatch(m -> fields.compare(field, found, m) == 0);
      return Truth.of(contained == isIn);
    }
  }

  /** How a compound predicate joins its parts. */
  enum Join {
    AND,
    OR,
    XOR,
    /** The first part whose value is known decides. */
    SURROGATE
  }

  /** Several predicates joined to one. */
  record Compound(Join join, List<Predicate> parts) implements Predicate {
    public Compound {
      parts = List.copyOf(parts);
    }

    @Override
    public Truth test(FieldCatalog fields, Function<String, String> values) {
      return switch (join) {
        case AND -> all(fields, values, Truth.FALSE, Truth.TRUE);
        case OR -> all(fields, values, Truth.TRUE, Truth.FALSE);
        case XOR -> xor(fields, values);
        case SURROGATE -> surrogate(fields, values);
      };
    }

    /** One {@code deciding} part settles it; else one unknown part makes it unknown. */
    private Truth all(FieldCatalog fields, Function<String, String> values, Truth deciding,
        Truth otherwise) {
      Truth result = otherwise;
      for (Predicate part : parts) {
        Truth truth = part.test(fields, values);
        if (truth == deciding) {
          return deciding;
        }
        result = truth == Truth.UNKNOWN ? Truth.UNKNOWN : result;
      }
      return result;
    }

    private Truth xor(FieldCatalog fields, Function<String, String> values) {
      boolean odd = false;
      for (Predicate part : parts) {
        Truth truth = part.test(fields, values);
        if (truth == Truth.UNKNOWN) {
          return Truth.UNKNOWN;
        }
        odd ^= truth == Truth.TRUE;
      }
      return Truth.of(odd);
    }

    private Truth surrogate(FieldCatalog fields, Function<String, String> values) {
      for (Predicate part : parts) {
        Truth truth = part.test(fields, values);
        if (truth != Truth.UNKNOWN) {
          return truth;
        }
      }
      return Truth.UNKNOWN;
    }
  }
}
