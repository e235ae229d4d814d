// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTimeout;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.time.Duration;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.Random;
import org.chartbridge.tree.Predicate.Compound;
import org.chartbridge.tree.Predicate.Constant;
import org.chartbridge.tree.Predicate.Join;
import org.chartbridge.tree.Predicate.Membership;
import org.chartbridge.tree.Predicate.Simple;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class BranchesTest {
  private static final List<String> CATEGORIES = List.of("a", "b", "c");
  private static final FieldCatalog FIELDS = fields();

  private static FieldCatalog fields() {
    Map<String, String> values = new HashMap<>();
    CATEGORIES.forEach(value -> values.put(value, value));
    FieldCatalog fields = new FieldCatalog(null);
    fields.add(new Field("x", "x", true, "double", Map.of(), null, false));
    fields.add(new Field("c", "c", false, "string", values, null, false));
    fields.add(new Field("free", "free", false, "string", Map.of(), null, false));
    return fields;
  }

  /** For example {@code x<1}, {@code c=a}, {@code c:ab}, {@code c!ab}, {@code x?}, {@code true}. */
  private static Predicate predicate(String text) {
    if (text.equals("true") || text.equals("false")) {
      return new Constant(text.equals("true"));
    }
    String field = text.startsWith("free") ? "free" : text.substring(0, 1);
    String rest = text.substring(field.length());
    String value = rest.substring(1);
    return switch (rest.charAt(0)) {
      case '<' -> new Simple(field, Operator.LESS_THAN, value);
      case '[' -> new Simple(field, Operator.LESS_OR_EQUAL, value);
      case '>' -> new Simple(field, Operator.GREATER_THAN, value);
      case ']' -> new Simple(field, Operator.GREATER_OR_EQUAL, value);
      case '=' -> new Simple(field, Operator.EQUAL, value);
      case '~' -> new Simple(field, Operator.NOT_EQUAL, value);
      case '?' -> new Simple(field, Operator.IS_MISSING, null);
      case '*' -> new Simple(field, Operator.IS_NOT_MISSING, null);
      default -> new Membership(field, rest.charAt(0) == ':', List.of(value.split("")));
    };
  }

  private static List<Predicate> predicates(String texts) {
    List<Predicate> predicates = new ArrayList<>();
    for (String text : texts.split(" ")) {
      if (text.contains("/")) {
        List<Predicate> parts = new ArrayList<>();
        for (String part : text.split("/")) {
          parts.add(predicate(part));
        }
        predicates.add(new Compound(Join.SURROGATE, parts));
      } else if (text.contains("&")) {
        List<Predicate> parts = new ArrayList<>();
        for (String part : text.split("&")) {
          parts.add(predicate(part));
        }
        predicates.add(new Compound(Join.AND, parts));
      } else {
        predicates.add(predicate(text));
      }
    }
    return predicates;
  }

  @ParameterizedTest
  @CsvSource({"x<1 x]1, true", "x<1 x>1, true", "x[1 x>1, true", "x[1 x]1, false", "x<1 x<2, false",
      "x>1 x<2, false", "c=a c=b, true", "c=a c~a, true", "c=a c~b, false", "c:ab c:c, true",
      "c:ab c:bc, false", "c:ab c!ab, true", "c:a c!b, false", "x=1 x>1, true", "x=1 x]1, false",
      "x? x<1, true", "x? x*, true", "x* x<1, false", "x<1 c=a, false", "false true, true",
      "true x<1, false", "x<1&c=a x]1, true", "x<1&c=a x]0, false", "x<1/c=a x]1/c=b, true",
      "x<1/c=a x]1/c=a, false", "x<1/c=a c=b/x]1, false", "x=1 x=1.0, false"})
  void
  conditionsAreApartOnlyWhenTheirFormProvesIt(String pair, boolean apart) {
    List<Predicate> both = predicates(pair);
    assertEquals(apart, Branches.apart(FIELDS, both.get(0), both.get(1)));
    assertEquals(apart, Branches.apart(FIELDS, both.get(1), both.get(0)));
  }

  @ParameterizedTest
  @CsvSource({"x<1 x]1, true", "x<1 x>1, false", "x[1 x>1, true", "x<1 x]0, true", "x<0 x]1, false",
      "c=a c~a, true", "c:ab c!ab, true", "c:a c!ab, false", "c:ab c:c, true", "c:ab c=b, false",
      "free:ab free:c, false", "x? x*, true", "x<1, false", "true, true", "x<1 c=a true, true",
      "x<1 c=a c:bc, true", "x<1/c=a x]1/c=b, true", "x<1&c=a x]1, false", "false, false"})
  void
  conditionsCoverAllOnlyWhenTheirFormProvesIt(String conditions, boolean cover) {
    assertEquals(cover, Branches.cover(FIELDS, predicates(conditions)));
  }

  @Test
  void splitsOfThousandsOfBranchesTakeNoTime() {
    StringBuilder node = new StringBuilder("<Node score=\"A\"><True/>");
    for (int i = 0; i < 5000; i++) {
      node.append("<Node score=\"B\"><SimpleSetPredicate field=\"c\" booleanOperator=\"isIn\">")
          .append("<Array>v").append(i).append(" w").append(i).append("</Array>")
          .append("</SimpleSetPredicate></Node>");
    }
    String text = node + "%s</Node>";
    String twice = "<Node><SimplePredicate field=\"c\" operator=\"equal\" value=\"v7\"/></Node>";
    TreeModel tree = Models.read(Models.document(text.formatted(""))).tree(1);
    TreeModel ordered = Models.read(Models.document(text.formatted(twice))).tree(1);
    assertTimeout(Duration.ofSeconds(10), () -> {
      assertFalse(Branches.orderCounts(tree, tree.root()));
      assertTrue(Branches.leaveSomeOut(tree, tree.root()));
    });
    assertTrue(Branches.orderCounts(ordered, ordered.root()));
  }

  @Test
  void hugeConditionsAreNotComparedEachWithEach() {
    String part = "<SimplePredicate field=\"x\" operator=\"equal\" value=\"%d\"/>";
    StringBuilder odd = new StringBuilder("<CompoundPredicate booleanOperator=\"or\">");
    StringBuilder even = new StringBuilder(odd);
    for (int i = 0; i < 100_000; i++) {
      (i % 2 == 0 ? even : odd).append(part.formatted(i));
    }
    String end = "</CompoundPredicate></Node>";
    TreeModel tree = Models.read(Models.document("<Node score=\"A\"><True/><Node score=\"B\">" + odd
        + end + "<Node score=\"C\">" + even + end + "</Node>")).tree(1);
    assertTimeout(Duration.ofSeconds(10), () -> {
      assertTrue(Branches.orderCounts(tree, tree.root()));
      assertTrue(Branches.leaveSomeOut(tree, tree.root()));
    });
  }

  private static Predicate random(Random random, int depth) {
    String number = Integer.toString(random.nextInt(5) - 2);
    String letter = CATEGORIES.get(random.nextInt(3));
    return switch (random.nextInt(depth > 1 ? 3 : 5)) {
      case 0 -> predicate("x" + "<[>]=~?*".charAt(random.nextInt(8)) + number);
      case 1 -> predicate("c" + "=~:!".charAt(random.nextInt(4)) + letter);
      case 2 -> predicate("c" + ":!".charAt(random.nextInt(2)) + letter
          + CATEGORIES.get(random.nextInt(3)));
      case 3 -> new Constant(random.nextInt(4) == 0);
      default -> new Compound(Join.values()[random.nextInt(4)],
          List.of(random(random, depth + 1), random(random, depth + 1)));
    };
  }

  private static List<Map<String, String>> records(boolean complete) {
    List<Map<String, String>> records = new ArrayList<>();
    for (double x = -3; x <= 3.5; x += 0.5) {
      for (String c : List.of("a", "b", "c", "")) {
        Map<String, String> record = new HashMap<>();
        if (x <= 3) {
          record.put("x", Double.toString(x));
        }
        if (!c.isEmpty()) {
          record.put("c", c);
        }
        if (!complete || record.size() == 2) {
          records.add(record);
        }
      }
    }
    return records;
  }

  private static boolean holds(Predicate predicate, Map<String, String> record) {
    return predicate.test(FIELDS, record::get) == Truth.TRUE;
  }

  /** What is claimed of random conditions holds for every record that is tried. */
  @Test
  void noClaimIsWrong() {
    Random random = new Random(4711);
    int apart = 0;
    int covering = 0;
    for (int i = 0; i < 20_000; i++) {
      Predicate a = random(random, 0);
      Predicate b = random(random, 0);
      if (Branches.apart(FIELDS, a, b)) {
        apart++;
        for (Map<String, String> record : records(false)) {
          assertFalse(holds(a, record) && holds(b, record), a + " and " + b + ": " + record);
        }
      }
      if (Branches.cover(FIELDS, List.of(a, b))) {
        covering++;
        for (Map<String, String> record : records(true)) {
          assertTrue(holds(a, record) || holds(b, record), a + " or " + b + ": " + record);
        }
      }
    }
    assertTrue(apart > 1000 && covering > 500, apart + " and " + covering);
  }
}
