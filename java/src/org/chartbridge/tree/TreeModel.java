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
 * @param classes the target's values in their order: those that the document lists, then others
 *     that the nodes of its trees name; empty for regression
 * @param missingValues what happens to records with missing values
 * @param returnsLastPrediction whether a node whose children do not apply predicts itself
 * @param conditions the predicates of the segments that it stands in, the outermost first
 * @param remarks what else changes the meaning of its predictions
 * @param fields the fields that its predicates name
 */
public record TreeModel(int number, String name, boolean classification, String targetField,
    String target, List<String> classes, MissingValues missingValues,
    boolean returnsLastPrediction, List<Predicate> conditions, List<Remark> remarks,
    FieldCatalog fields, TreeNode root)
    implements ModelPart {
  public TreeModel {
    classes = List.copyOf(classes);
    conditions = List.copyOf(conditions);
    remarks = List.copyOf(remarks);
  }

  /** A value of the target for people. */
  public String classLabel(String value) {
    return targetField == null ? value : fields.valueLabel(targetField, value);
  }

  /** The same model of one branch: {@code root} and what is below it. */
  public TreeModel branch(TreeNode branchRoot) {
    return new TreeModel(number, name, classification, targetField, target, classes, missingValues,
        returnsLastPrediction, conditions, remarks, fields, branchRoot);
  }

  /** The same model with more remarks, in front of its own. */
  public TreeModel withRemarks(List<Remark> more) {
    return new TreeModel(number, name, classification, targetField, target, classes, missingValues,
        returnsLastPrediction, conditions, Remark.joined(more, remarks), fields, root);
  }

  /** What happens at a node to records whose value is missing. */
  public MissingValues missingValuesAt(TreeNode node) {
    return node.branching() == null ? missingValues : node.branching().missingValues();
  }

  /** Whether a node predicts for records to which none of its branches applies. */
  public boolean returnsLastPredictionAt(TreeNode node) {
    return node.branching() == null
        ? returnsLastPrediction : node.branching().returnsLastPrediction();
  }

  /** The same model with its classes listed. */
  public TreeModel withClasses(List<String> newClasses) {
    return new TreeModel(number, name, classification, targetField, target, newClasses,
        missingValues, returnsLastPrediction, conditions, remarks, fields, root);
  }

  /** What values of the target that stand for the same class have in common. */
  public String classIdentity(String value) {
    return targetField == null ? value : fields.identity(targetField, value);
  }
}
