// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeStatistics;

/**
 * Gives all trees with the same target the same classes in the same order. Where the document does
 * not list them, each tree knows only those that its own nodes name, and a colour would mean
 * another class in every tree.
 */
final class ClassUnion {
  private final List<TreeModel> trees = new ArrayList<>();

  /** @param found the trees of a document in their order */
  ClassUnion(List<TreeModel> found) {
    Map<String, Map<String, String>> byTarget = new HashMap<>();
    for (TreeModel tree : found) {
      Map<String, String> classes =
          byTarget.computeIfAbsent(tree.targetField(), target -> new LinkedHashMap<>());
      TreeStatistics.classesOf(tree).forEach(
          value -> classes.putIfAbsent(tree.classIdentity(value), value));
    }
    for (TreeModel tree : found) {
      trees.add(tree.classification()
          ? tree.withClasses(List.copyOf(byTarget.get(tree.targetField()).values())) : tree);
    }
  }

  TreeDocument document(String version, ModelPart model) {
    return new TreeDocument(version, replaced(model), trees);
  }

  private ModelPart replaced(ModelPart part) {
    if (part instanceof TreeModel tree) {
      return trees.get(tree.number() - 1);
    }
    if (!(part instanceof Ensemble ensemble)) {
      return part;
    }
    List<Ensemble.Segment> segments = new ArrayList<>();
    for (Ensemble.Segment segment : ensemble.segments()) {
      segments.add(new Ensemble.Segment(segment.id(), segment.predicate(), segment.weight(),
          segment.weightField(), replaced(segment.model())));
    }
    return new Ensemble(
        ensemble.name(), ensemble.method(), ensemble.target(), ensemble.remarks(), segments);
  }
}
