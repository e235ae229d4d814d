// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.Collections;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.NavigableSet;
import java.util.TreeSet;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.Operator;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;

/** Predicates as texts for people. */
final class PredicateText {
  /** A longer list of values is cut short in the picture; the tooltip has all of them. */
  private static final int LONG_LIST = 90;

  private static final char NO_BREAK_SPACE = '\u00A0';

  private final FieldCatalog fields;
  private final NumberText numbers;
  private final boolean complete;
  /** The numbers that the tree compares each field with. */
  private final Map<String, NavigableSet<Double>> splits = new HashMap<>();

  /**
   * @param complete whether long lists of values are written out, and numbers with all their digits
   */
  PredicateText(FieldCatalog fields, NumberText numbers, boolean complete) {
    this.fields = fields;
    this.numbers = numbers;
    this.complete = complete;
  }

  /** The same for a tree, whose splits have digits enough to be told apart. */
  static PredicateText ofTree(TreeModel tree, NumberText numbers, boolean complete) {
    PredicateText text = new PredicateText(tree.fields(), numbers, complete);
    text.collect(tree.root());
    return text;
  }

  private void collect(TreeNode node) {
    collect(node.predicate());
    node.children().forEach(this::collect);
  }

  private void collect(Predicate predicate) {
    if (predicate instanceof Predicate.Compound compound) {
      compound.parts().forEach(this::collect);
    } else if (predicate instanceof Predicate.Simple simple && simple.value() != null) {
      double number = NumberText.parsed(simple.value());
      if (!Double.isNaN(number)) {
        splits.computeIfAbsent(fields.label(simple.field()), label -> new TreeSet<>()).add(number);
      }
    }
  }

  private String number(String field, String value) {
    return numbers.split(
        value, splits.getOrDefault(fields.label(field), Collections.emptyNavigableSet()));
  }

  /** The condition on a branch; of a surrogate chain, the one that decides as a rule. */
  String of(Predicate predicate) {
    if (predicate instanceof Predicate.Constant constant) {
      return constant.value() ? "always" : "never";
    }
    if (predicate instanceof Predicate.Simple simple) {
      return simple(simple);
    }
    if (predicate instanceof Predicate.Membership membership) {
      return membership(membership);
    }
    Predicate.Compound compound = (Predicate.Compound) predicate;
    if (compound.join() == Predicate.Join.SURROGATE) {
      return of(compound.parts().get(0));
    }
    return joined(compound);
  }

  /**
   * What decides in turn when the value for {@link #of} is missing; empty unless it is a surrogate
   * chain.
   */
  List<String> surrogates(Predicate predicate) {
    List<String> texts = new ArrayList<>();
    if (predicate instanceof Predicate.Compound compound
        && compound.join() == Predicate.Join.SURROGATE) {
      List<Predicate> parts = compound.parts();
      parts.subList(1, parts.size()).forEach(part -> texts.add(of(part)));
    }
    return texts;
  }

  private String joined(Predicate.Compound compound) {
    String word = switch (compound.join()) {
      case AND -> " and ";
      case OR -> " or ";
      default -> " xor ";
    };
    List<String> texts = new ArrayList<>();
    for (Predicate part : compound.parts()) {
      boolean nested = part instanceof Predicate.Compound inner
          && inner.join() != Predicate.Join.SURROGATE && inner.join() != compound.join()
          && inner.parts().size() > 1;
      texts.add(nested ? "(" + of(part) + ")" : of(part));
    }
    return String.join(word, texts);
  }

  private String simple(Predicate.Simple simple) {
    String label = fields.label(simple.field());
    Operator operator = simple.operator();
    if (!operator.takesValue()) {
      return label + " " + operator.symbol();
    }
    return label + " " + operator.symbol() + NO_BREAK_SPACE
        + value(simple.field(), operator, simple.value());
  }

  private String value(String field, Operator operator, String value) {
    boolean ordering = operator != Operator.EQUAL && operator != Operator.NOT_EQUAL;
    boolean number = fields.find(field) == null ? ordering : fields.isNumeric(field);
    String label = fields.valueLabel(field, value);
    return number && !complete && label.equals(value) ? number(field, value) : label;
  }

  private String membership(Predicate.Membership membership) {
    String label = fields.label(membership.field());
    Operator single = membership.isIn() ? Operator.EQUAL : Operator.NOT_EQUAL;
    List<String> members = membership.members();
    if (members.size() == 1) {
      return label + " " + single.symbol() + NO_BREAK_SPACE
          + value(membership.field(), single, members.get(0));
    }
    StringBuilder list = new StringBuilder();
    int shown = 0;
    for (String member : members) {
      String text = value(membership.field(), single, member);
      if (!complete && shown > 0 && list.length() + text.length() > LONG_LIST) {
        break;
      }
      list.append(shown == 0 ? "" : ", ").append(text);
      shown++;
    }
    int hidden = members.size() - shown;
    String more = hidden == 0 ? "" : ", \u2026 " + hidden + NO_BREAK_SPACE + "more";
    return label + (membership.isIn() ? " in {" : " not in {") + list + more + "}";
  }
}
