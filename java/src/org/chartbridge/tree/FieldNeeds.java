// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.Map;
import java.util.Set;

/** The fields that decide which way a record takes through a tree. */
public final class FieldNeeds {
  private final TreeModel tree;
  private final Set<String> named = new LinkedHashSet<>();
  private final Map<String, Field> sources = new LinkedHashMap<>();
  private final Map<String, Field> computed = new LinkedHashMap<>();

  private FieldNeeds(TreeModel tree) {
    this.tree = tree;
  }

  /** What the predicates of a tree need, and those of the segments that it stands in. */
  public static FieldNeeds of(TreeModel tree) {
    FieldNeeds needs = new FieldNeeds(tree);
    tree.conditions().forEach(needs::add);
    needs.addBelow(tree.root());
    return needs;
  }

  /** The names in the predicates, in their order. */
  public Set<String> named() {
    return named;
  }

  /** Fields of the data, by name. */
  public Map<String, Field> sources() {
    return sources;
  }

  /** Fields that the model computes, or takes from another model, by name. */
  public Map<String, Field> computed() {
    return computed;
  }

  private void addBelow(TreeNode node) {
    add(node.predicate());
    node.children().forEach(this::addBelow);
  }

  private void add(Predicate predicate) {
    if (predicate instanceof Predicate.Simple simple) {
      add(simple.field());
    } else if (predicate instanceof Predicate.Membership membership) {
      add(membership.field());
    } else if (predicate instanceof Predicate.Compound compound) {
      compound.parts().forEach(this::add);
    }
  }

  private void add(String name) {
    if (!named.add(name)) {
      return;
    }
    Field source = tree.fields().source(name);
    if (source != null) {
      sources.put(source.name(), source);
    }
    Field made = tree.fields().computed(name);
    if (made != null) {
      computed.put(made.name(), made);
    }
  }
}
