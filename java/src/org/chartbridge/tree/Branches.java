// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.tree.Predicate.Compound;
import org.chartbridge.tree.Predicate.Constant;
import org.chartbridge.tree.Predicate.Join;
import org.chartbridge.tree.Predicate.Membership;
import org.chartbridge.tree.Predicate.Simple;

/**
 * What follows from the conditions of a node's branches taken together. A record takes the first
 * branch whose condition holds. What cannot be shown from the conditions alone counts as possible.
 */
public final class Branches {
  /** Conditions of more values together are not compared, each with each; that would take long. */
  private static final int MOST_VALUES = 2000;

  private Branches() {}

  /**
   * Whether two branches of a node can apply to the same record, so that their order decides. A
   * last branch that takes all that is left does not count.
   */
  public static boolean orderCounts(TreeModel tree, TreeNode node) {
    List<Predicate> conditions = conditions(node);
    int last = conditions.size() - 1;
    if (last >= 0 && isAlways(conditions.get(last))) {
      conditions = conditions.subList(0, last);
    }
    if (nameDifferentValues(tree.fields(), conditions)) {
      return false;
    }
    if (size(conditions) > MOST_VALUES) {
      return true;
    }
    NamedValues values = new NamedValues(tree.fields());
    for (int i = 0; i < conditions.size(); i++) {
      for (int j = i + 1; j < conditions.size(); j++) {
        if (!apart(values, conditions.get(i), conditions.get(j))) {
          return true;
        }
      }
    }
    return false;
  }

  /**
   * Whether all conditions name the values of one field for which they hold, each value once.
   * Splits by category may have thousands of branches, too many to compare each with each.
   */
  private static boolean nameDifferentValues(FieldCatalog fields, List<Predicate> conditions) {
    Set<String> values = new HashSet<>();
    for (Predicate condition : conditions) {
      List<String> named = named(condition);
      if (named == null || !field(condition).equals(field(conditions.get(0)))) {
        return false;
      }
      Set<String> own = identities(fields, field(condition), named);
      int before = values.size();
      values.addAll(own);
      if (values.size() < before + own.size()) {
        return false;
      }
    }
    return true;
  }

  private static Set<String> identities(FieldCatalog fields, String field, List<String> values) {
    Set<String> identities = new HashSet<>();
    values.forEach(value -> identities.add(fields.identity(field, value)));
    return identities;
  }

  /** Whether there can be records without missing values to which no branch of a node applies. */
  public static boolean leaveSomeOut(TreeModel tree, TreeNode node) {
    return !node.isLeaf() && !cover(tree.fields(), conditions(node));
  }

  /** How many values the predicates ask for. */
  private static int size(List<Predicate> predicates) {
    int size = 0;
    for (Predicate predicate : predicates) {
      if (predicate instanceof Compound compound) {
        size += size(compound.parts());
      } else {
        size += predicate instanceof Membership membership ? membership.members().size() : 1;
      }
    }
    return size;
  }

  /** Whether a record can end at a node that has branches, and be predicted there. */
  public static boolean endsAt(TreeModel tree, TreeNode node) {
    boolean predicts = node.score() != null || !node.distribution().isEmpty();
    return predicts && tree.returnsLastPredictionAt(node) && leaveSomeOut(tree, node);
  }

  private static List<Predicate> conditions(TreeNode node) {
    List<Predicate> conditions = new ArrayList<>();
    node.children().forEach(child -> conditions.add(child.predicate()));
    return conditions;
  }

  private static boolean isAlways(Predicate predicate) {
    return predicate instanceof Constant constant && constant.value();
  }

  /** Whether two predicates are never true at once. */
  static boolean apart(FieldCatalog fields, Predicate a, Predicate b) {
    return apart(new NamedValues(fields), a, b);
  }

  private static boolean apart(NamedValues values, Predicate a, Predicate b) {
    if (a instanceof Constant constant) {
      return !constant.value() || b instanceof Constant other && !other.value();
    }
    if (b instanceof Constant) {
      return apart(values, b, a);
    }
    if (a instanceof Compound first && first.join() == Join.SURROGATE
        && b instanceof Compound second && second.join() == Join.SURROGATE
        && inStep(values, first, second)) {
      return true;
    }
    if (a instanceof Compound compound) {
      return compoundApart(values, compound, b);
    }
    if (b instanceof Compound compound) {
      return compoundApart(values, compound, a);
    }
    return field(a).equals(field(b)) && (noneOf(values, a, b) || noneOf(values, b, a)
        || rangesApart(values, a, b) || rangesApart(values, b, a));
  }

  private static boolean compoundApart(NamedValues values, Compound compound, Predicate other) {
    return switch (compound.join()) {
      case AND -> compound.parts().stream().anyMatch(part -> apart(values, part, other));
      case OR, SURROGATE ->
          compound.parts().stream().allMatch(part -> apart(values, part, other));
      case XOR -> false;
    };
  }

  /** Surrogates that turn to the same fields in the same order, and say the opposite at each. */
  private static boolean inStep(NamedValues values, Compound a, Compound b) {
    boolean same = a.parts().size() == b.parts().size();
    for (int i = 0; same && i < a.parts().size(); i++) {
      Predicate left = a.parts().get(i);
      Predicate right = b.parts().get(i);
      same = field(left) != null && field(left).equals(field(right))
          && apart(values, left, right);
    }
    return same;
  }

  /** The field that a predicate asks for; null when it is none or several. */
  private static String field(Predicate predicate) {
    if (predicate instanceof Simple simple) {
      return simple.field();
    }
    return predicate instanceof Membership membership ? membership.field() : null;
  }

  /** Whether {@code a} names all values for which it is true, and {@code b} is false for each. */
  private static boolean noneOf(NamedValues values, Predicate a, Predicate b) {
    if (a instanceof Simple simple && simple.operator() == Operator.IS_MISSING) {
      // Missing values make every other comparison unknown.
      return !(b instanceof Simple other && other.operator() == Operator.IS_MISSING);
    }
    Set<String> named = values.of(a);
    return named != null && named.stream().noneMatch(value -> holds(values, b, value));
  }

  /** The values for which a predicate is true, when it names them; else null. */
  private static List<String> named(Predicate predicate) {
    if (predicate instanceof Simple simple && simple.operator() == Operator.EQUAL) {
      return List.of(simple.value());
    }
    return predicate instanceof Membership membership && membership.isIn()
        ? membership.members() : null;
  }

  /**
   * Whether a predicate on one field is true for a value of it.
   *
   * @param value as {@link FieldCatalog#equality} gives it
   */
  private static boolean holds(NamedValues values, Predicate predicate, String value) {
    Set<String> named = values.of(predicate);
    if (named != null) {
      return named.contains(value);
    }
    Set<String> exceptions = values.exceptions(predicate);
    if (exceptions != null) {
      return !exceptions.contains(value);
    }
    Simple simple = (Simple) predicate;
    return simple.operator().takesValue()
        ? simple.operator().holds(values.fields().compare(simple.field(), value, simple.value()))
            == Truth.TRUE
        : simple.operator() == Operator.IS_NOT_MISSING;
  }

  private static boolean isBelow(Predicate predicate) {
    return predicate instanceof Simple simple
        && (simple.operator() == Operator.LESS_THAN || simple.operator() == Operator.LESS_OR_EQUAL);
  }

  private static boolean isAbove(Predicate predicate) {
    return predicate instanceof Simple simple && (simple.operator() == Operator.GREATER_THAN
        || simple.operator() == Operator.GREATER_OR_EQUAL);
  }

  private static boolean holdsAtItsBound(Predicate predicate) {
    Operator operator = ((Simple) predicate).operator();
    return operator == Operator.LESS_OR_EQUAL || operator == Operator.GREATER_OR_EQUAL;
  }

  private static boolean rangesApart(NamedValues values, Predicate low, Predicate high) {
    if (!isBelow(low) || !isAbove(high)) {
      return false;
    }
    int order = bounds(values, low, high);
    return order < 0 || order == 0 && !(holdsAtItsBound(low) && holdsAtItsBound(high));
  }

  private static int bounds(NamedValues values, Predicate a, Predicate b) {
    return values.fields().compare(field(a), ((Simple) a).value(), ((Simple) b).value());
  }

  /** Whether one of the predicates is true for every record without missing values. */
  static boolean cover(FieldCatalog fields, List<Predicate> conditions) {
    NamedValues values = new NamedValues(fields);
    List<Predicate> deciding = new ArrayList<>();
    for (Predicate condition : conditions) {
      if (isAlways(condition)) {
        return true;
      }
      // Without missing values the first of a chain of surrogates decides.
      boolean chain = condition instanceof Compound compound && compound.join() == Join.SURROGATE;
      deciding.add(chain ? ((Compound) condition).parts().get(0) : condition);
    }
    Set<String> seen = new HashSet<>();
    deciding.removeIf(predicate -> field(predicate) == null);
    for (Predicate predicate : deciding) {
      if (!seen.add(field(predicate))) {
        continue;
      }
      List<Predicate> same = new ArrayList<>(deciding);
      same.removeIf(other -> !field(other).equals(field(predicate)));
      if (coverField(values, field(predicate), same)) {
        return true;
      }
    }
    return false;
  }

  private static boolean coverField(
      NamedValues values, String field, List<Predicate> conditions) {
    boolean small = size(conditions) <= MOST_VALUES;
    for (Predicate a : conditions) {
      if (a instanceof Simple simple && simple.operator() == Operator.IS_NOT_MISSING) {
        return true;
      }
      Set<String> exceptions = small ? values.exceptions(a) : null;
      if (exceptions != null
          && exceptions.stream().allMatch(value -> holdsOne(values, conditions, value))) {
        return true;
      }
      for (Predicate b : small ? conditions : List.<Predicate>of()) {
        if (isBelow(a) && isAbove(b)) {
          int order = bounds(values, b, a);
          if (order < 0 || order == 0 && (holdsAtItsBound(a) || holdsAtItsBound(b))) {
            return true;
          }
        }
      }
    }
    Set<String> known = new HashSet<>();
    List<Predicate> others = new ArrayList<>();
    for (Predicate condition : conditions) {
      if (named(condition) == null) {
        others.add(condition);
      } else {
        known.addAll(identities(values.fields(), field, named(condition)));
      }
    }
    Set<String> categories = values.fields().categories(field);
    return !categories.isEmpty() && categories.stream().allMatch(category ->
        known.contains(values.fields().identity(field, category))
            || small && holdsOne(values, others, values.fields().equality(field, category)));
  }

  private static boolean holdsOne(NamedValues values, List<Predicate> conditions, String value) {
    return conditions.stream().anyMatch(condition -> holds(values, condition, value));
  }
}
