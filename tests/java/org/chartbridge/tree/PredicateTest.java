// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import static org.chartbridge.tree.Truth.FALSE;
import static org.chartbridge.tree.Truth.TRUE;
import static org.chartbridge.tree.Truth.UNKNOWN;
import static org.junit.jupiter.api.Assertions.assertEquals;

import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.tree.Predicate.Compound;
import org.chartbridge.tree.Predicate.Constant;
import org.chartbridge.tree.Predicate.Join;
import org.chartbridge.tree.Predicate.Membership;
import org.chartbridge.tree.Predicate.Simple;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class PredicateTest {
  private static final FieldCatalog FIELDS = fields();
  private static final Simple YES = new Simple("x", Operator.EQUAL, "1");
  private static final Simple NO = new Simple("x", Operator.EQUAL, "2");
  private static final Simple OPEN = new Simple("y", Operator.EQUAL, "1");

  private static FieldCatalog fields() {
    FieldCatalog outer = new FieldCatalog(null);
    outer.add(new Field("x", "The x", true, "double", Map.of(), null, false));
    outer.add(new Field("y", "y", true, "double", Map.of(), null, false));
    outer.add(new Field("f", "f", true, "float", Map.of(), null, false));
    outer.add(new Field("code", "code", false, "string", Map.of(), null, false));
    Map<String, String> grades = new java.util.LinkedHashMap<>();
    grades.put("low", "Low");
    grades.put("middle", "middle");
    grades.put("high", "High");
    outer.add(new Field("grade", "grade", false, "string", grades, null, false));
    FieldCatalog inner = new FieldCatalog(outer);
    inner.add(new Field("double(f)", "double(f)", true, "double", Map.of(), "f", true));
    inner.add(new Field("again", "again", true, "double", Map.of(), "double(f)", true));
    inner.add(new Field("sum", "sum", true, "double", Map.of(), null, true));
    inner.add(new Field("loop", "loop", true, "double", Map.of(), "loop", true));
    return inner;
  }

  private static Truth test(Predicate predicate, String... namesAndValues) {
    Map<String, String> values = new HashMap<>();
    for (int i = 0; i < namesAndValues.length; i += 2) {
      values.put(namesAndValues[i], namesAndValues[i + 1]);
    }
    return predicate.test(FIELDS, values::get);
  }

  @ParameterizedTest
  @CsvSource({
    "EQUAL, FALSE, TRUE, FALSE", "NOT_EQUAL, TRUE, FALSE, TRUE", "LESS_THAN, TRUE, FALSE, FALSE",
    "LESS_OR_EQUAL, TRUE, TRUE, FALSE", "GREATER_THAN, FALSE, FALSE, TRUE",
    "GREATER_OR_EQUAL, FALSE, TRUE, TRUE"
  })
  void operatorsCompareNumbers(Operator operator, Truth below, Truth same, Truth above) {
    Simple predicate = new Simple("x", operator, "10");
    assertEquals(below, test(predicate, "x", "9.5"));
    assertEquals(same, test(predicate, "x", "1e1"));
    assertEquals(above, test(predicate, "x", "11"));
    assertEquals(UNKNOWN, test(predicate));
  }

  @Test
  void missingValuesCanBeAskedFor() {
    assertEquals(TRUE, test(new Simple("x", Operator.IS_MISSING, null)));
    assertEquals(FALSE, test(new Simple("x", Operator.IS_MISSING, null), "x", "1"));
    assertEquals(FALSE, test(new Simple("x", Operator.IS_NOT_MISSING, null)));
    assertEquals(TRUE, test(new Simple("x", Operator.IS_NOT_MISSING, null), "x", "1"));
  }

  @Test
  void textsCompareAsTexts() {
    assertEquals(FALSE, test(new Simple("code", Operator.EQUAL, "7"), "code", "007"));
    assertEquals(TRUE, test(new Simple("code", Operator.EQUAL, "007"), "code", "007"));
  }

  @Test
  void listedValuesCompareByTheirOrder() {
    Simple below = new Simple("grade", Operator.LESS_THAN, "high");
    assertEquals(TRUE, test(below, "grade", "low"));
    assertEquals(TRUE, test(below, "grade", "middle"));
    assertEquals(FALSE, test(below, "grade", "high"));
  }

  @Test
  void singlePrecisionFieldsCompareInSinglePrecision() {
    // 0.1 in single precision is 0.10000000149..., which is what tools that compute in it write.
    Simple below = new Simple("f", Operator.LESS_OR_EQUAL, "0.10000000149011612");
    Simple above = new Simple("f", Operator.GREATER_OR_EQUAL, "0.10000000149011612");
    assertEquals(TRUE, test(below, "f", "0.1"));
    assertEquals(TRUE, test(above, "f", "0.1"));
    assertEquals(FALSE, test(new Simple("x", Operator.GREATER_OR_EQUAL, "0.10000000149011612"),
        "x", "0.1"));
  }

  @Test
  void derivedFieldsTakeTheValueThatTheyPassOn() {
    Simple predicate = new Simple("again", Operator.LESS_THAN, "3");
    assertEquals(TRUE, test(predicate, "f", "2"));
    assertEquals(FALSE, test(predicate, "f", "2", "again", "4"));
    assertEquals(UNKNOWN, test(new Simple("sum", Operator.LESS_THAN, "3"), "f", "2"));
    assertEquals(TRUE, test(new Simple("sum", Operator.LESS_THAN, "3"), "sum", "2"));
    assertEquals(UNKNOWN, test(new Simple("loop", Operator.LESS_THAN, "3"), "f", "2"));
    assertEquals("f", FIELDS.label("again"));
    assertEquals("The x", FIELDS.label("x"));
    assertEquals("nobody knows", FIELDS.label("nobody knows"));
    assertEquals("High", FIELDS.valueLabel("grade", "high"));
  }

  @Test
  void membershipTakesOrRefusesTheList() {
    Membership in = new Membership("x", true, List.of("1", "2.0"));
    Membership notIn = new Membership("x", false, List.of("1", "2.0"));
    assertEquals(TRUE, test(in, "x", "2"));
    assertEquals(FALSE, test(in, "x", "3"));
    assertEquals(UNKNOWN, test(in));
    assertEquals(FALSE, test(notIn, "x", "2"));
    assertEquals(TRUE, test(notIn, "x", "3"));
    assertEquals(UNKNOWN, test(notIn));
  }

  /** The tables of the PMML standard; y is missing. */
  @ParameterizedTest
  @CsvSource({
    "AND, T, T, TRUE", "AND, T, F, FALSE", "AND, F, F, FALSE", "AND, T, U, UNKNOWN",
    "AND, F, U, FALSE", "AND, U, F, FALSE", "AND, U, U, UNKNOWN",
    "OR, T, T, TRUE", "OR, T, F, TRUE", "OR, F, F, FALSE", "OR, T, U, TRUE",
    "OR, U, T, TRUE", "OR, F, U, UNKNOWN", "OR, U, U, UNKNOWN",
    "XOR, T, T, FALSE", "XOR, T, F, TRUE", "XOR, F, F, FALSE", "XOR, T, U, UNKNOWN",
    "XOR, F, U, UNKNOWN", "XOR, U, U, UNKNOWN",
    "SURROGATE, T, F, TRUE", "SURROGATE, F, T, FALSE", "SURROGATE, U, T, TRUE",
    "SURROGATE, U, F, FALSE", "SURROGATE, U, U, UNKNOWN"
  })
  void compoundsFollowTheTables(Join join, String left, String right, Truth expected) {
    Compound compound = new Compound(join, List.of(part(left), part(right)));
    assertEquals(expected, test(compound, "x", "1"));
  }

  private static Predicate part(String letter) {
    return switch (letter) {
      case "T" -> YES;
      case "F" -> NO;
      default -> OPEN;
    };
  }

  @Test
  void constantsAreWhatTheyAre() {
    assertEquals(TRUE, test(new Constant(true)));
    assertEquals(FALSE, test(new Constant(false)));
  }
}
