// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.tree.Field;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.FieldNeeds;
import org.chartbridge.tree.FieldUse;
import org.chartbridge.tree.Remark;
import org.chartbridge.tree.TreeModel;

/** What is said about a model besides its nodes and branches. */
final class RemarkText {
  /** A longer list of fields ends with how many more there are. */
  private static final int LISTED = 6;

  private final NumberText numbers;

  RemarkText(NumberText numbers) {
    this.numbers = numbers;
  }

  String of(Remark remark) {
    String text = remark.text();
    for (int i = 0; i < remark.values().size(); i++) {
      text = text.replace("{" + i + "}", numbers.value(remark.values().get(i)));
    }
    return text;
  }

  /** All remarks in one line; empty when there is none. */
  String of(List<Remark> remarks) {
    return String.join(" ", remarks.stream().map(this::of).toList());
  }

  /**
   * What happens to values before a tree sees them, so that its conditions alone do not tell which
   * way a record takes.
   */
  List<String> ofFields(TreeModel tree) {
    List<String> texts = new ArrayList<>();
    FieldNeeds needs = FieldNeeds.of(tree);
    Set<String> names = new LinkedHashSet<>(needs.named());
    names.addAll(needs.sources().keySet());
    for (String name : names) {
      addInvalid(texts, tree.fields(), name);
      for (FieldUse use : tree.fields().uses(name)) {
        add(texts, tree.fields(), name, use);
      }
      String passed = tree.fields().missingSource(name);
      if (passed != null) {
        texts.add("A missing " + tree.fields().label(name) + " is read as " + value(passed) + ".");
      }
    }
    List<String> shown = new ArrayList<>(new LinkedHashSet<>(texts));
    if (shown.size() > LISTED) {
      int hidden = shown.size() - LISTED + 1;
      shown = new ArrayList<>(shown.subList(0, LISTED - 1));
      shown.add(hidden + " more treatments of values are not listed.");
    }
    if (!needs.computed().isEmpty()) {
      List<String> computed =
          needs.computed().keySet().stream().map(tree.fields()::label).toList();
      texts = computed.subList(0, Math.min(LISTED, computed.size()));
      int hidden = computed.size() - texts.size();
      shown.add("Computed by the model, how is not shown: " + String.join(", ", texts)
          + (hidden == 0 ? "." : " and " + hidden + " more."));
    }
    return shown;
  }

  /**
   * The model has no prediction for invalid values unless it says otherwise; as they are, they take
   * the way that the conditions tell.
   */
  private void addInvalid(List<String> texts, FieldCatalog fields, String name) {
    Field field = fields.find(name);
    List<FieldUse> uses = fields.uses(name);
    if (field == null || field.derived() || !field.canBeInvalid() || uses.isEmpty()) {
      return;
    }
    // The outermost model decides; the others see what it passes on.
    FieldUse use = uses.get(0);
    String begin = "An invalid " + fields.label(name) + " is read as ";
    boolean replaced = use.invalid() == FieldUse.Invalid.AS_VALUE
        && use.invalidReplacement() != null;
    if (replaced) {
      texts.add(begin + value(fields.valueLabel(name, use.invalidReplacement())) + ".");
    } else if (use.invalid() == FieldUse.Invalid.AS_MISSING
        || use.invalid() == FieldUse.Invalid.AS_VALUE) {
      texts.add(begin + "missing.");
    } else if (use.invalid() == FieldUse.Invalid.AS_IS) {
      texts.add(begin + "it is.");
    }
  }

  private void add(List<String> texts, FieldCatalog fields, String name, FieldUse use) {
    String label = fields.label(name);
    if (use.rejectsMissing()) {
      texts.add("No prediction when " + label + " is missing.");
    }
    if (use.missingReplacement() != null) {
      String value = fields.valueLabel(name, use.missingReplacement());
      texts.add("A missing " + label + " is read as " + value(value) + ".");
    }
    if (use.outliers() == FieldUse.Outliers.AS_IS) {
      return;
    }
    String missing = use.outliers() == FieldUse.Outliers.AS_MISSING_VALUES ? "missing" : null;
    if (!Double.isNaN(use.low())) {
      String low = numbers.number(use.low());
      texts.add(label + " below " + low + " is read as " + (missing == null ? low : missing) + ".");
    }
    if (!Double.isNaN(use.high())) {
      String high = numbers.number(use.high());
      texts.add(
          label + " above " + high + " is read as " + (missing == null ? high : missing) + ".");
    }
  }

  private String value(String text) {
    return numbers.value(text);
  }
}
