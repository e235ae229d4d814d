// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.HashSet;
import java.util.IdentityHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.tree.Predicate.Membership;
import org.chartbridge.tree.Predicate.Simple;

/**
 * The values that the conditions of one node name, by what equal values have in common. Each
 * condition is looked at once, however often it is compared with others: splits by category may
 * name thousands of values.
 */
final class NamedValues {
  private final FieldCatalog fields;
  private final Map<Predicate, Set<String>> named = new IdentityHashMap<>();

  NamedValues(FieldCatalog fields) {
    this.fields = fields;
  }

  FieldCatalog fields() {
    return fields;
  }

  /** The values for which a predicate is true, when it names them; else null. */
  Set<String> of(Predicate predicate) {
    boolean names = predicate instanceof Simple simple && simple.operator() == Operator.EQUAL
        || predicate instanceof Membership membership && membership.isIn();
    return names ? all(predicate) : null;
  }

  /** The only values for which a predicate is false, when it names them; else null. */
  Set<String> exceptions(Predicate predicate) {
    boolean names = predicate instanceof Simple simple && simple.operator() == Operator.NOT_EQUAL
        || predicate instanceof Membership membership && !membership.isIn();
    return names ? all(predicate) : null;
  }

  private Set<String> all(Predicate predicate) {
    return named.computeIfAbsent(predicate, this::read);
  }

  private Set<String> read(Predicate predicate) {
    Set<String> values = new HashSet<>();
    if (predicate instanceof Simple simple) {
      values.add(fields.equality(simple.field(), simple.value()));
    } else if (predicate instanceof Membership membership) {
      List<String> members = membership.members();
      members.forEach(member -> values.add(fields.equality(membership.field(), member)));
    }
    return values;
  }
}
