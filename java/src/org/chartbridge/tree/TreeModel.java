// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;

/**
 * One tree.
 *
 * @param number its place among the trees of the document, from 1
 * @param name the model's name, or null
 * @param classification false for regression
 * @param targetField the field that it predicts, or null when the document does not say
 * @param target what it predicts, for people; may be empty
 * @param classes the target's values in their order; empty for regression
 * @param missingValues what happens to records with missing values
 * @param returnsLastPrediction whether a node whose children do not apply predicts itself
 * @param conditions the predicates of the segments that it stands in, the outermost first
 * @param fields the fields that its predicates name
 */
public record TreeModel(int number, String name, boolean classification, String targetField,
    String target, List<String> classes, MissingValues missingValues,
    boolean returnsLastPrediction, List<Predicate> conditions, FieldCatalog fields, TreeNode root)
    implements ModelPart {
  public TreeModel {
    classes = List.copyOf(classes);
    conditions = List.copyOf(conditions);
  }

  /** A value of the target for people. */
  public String classLabel(String value) {
    return targetField == null ? value : fields.valueLabel(targetField, value);
  }

  /** The same model of one branch: {@code root} and what is below it. */
  public TreeModel branch(TreeNode branchRoot) {
    return new TreeModel(number, name, classification, targetField, target, classes, missingValues,
        returnsLastPrediction, conditions, fields, branchRoot);
  }
}
