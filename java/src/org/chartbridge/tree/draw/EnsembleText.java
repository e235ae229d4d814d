// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeModel;

/** What is said about ensembles. */
final class EnsembleText {
  private EnsembleText() {}

  /**
   * How the members of an ensemble work together, for example {@code majority vote of 25 models}.
   */
  static String joining(Ensemble ensemble) {
    int size = ensemble.segments().size();
    String models = " of " + size + (size == 1 ? " model" : " models");
    return switch (ensemble.method()) {
      case Ensemble.SEPARATE -> size + " separate models";
      case "selectFirst" -> "the first" + models + " that applies";
      case "selectAll" -> "all" + models + " that apply";
      default -> ensemble.methodLabel() + models;
    };
  }

  /**
   * Where a tree stands in its model: one line for each ensemble around it, the outermost first.
   */
  static List<String> place(ModelPart model, TreeModel tree, NumberText numbers) {
    List<String> lines = new ArrayList<>();
    find(model, tree, numbers, lines);
    return lines;
  }

  private static boolean find(
      ModelPart part, TreeModel tree, NumberText numbers, List<String> lines) {
    if (part instanceof TreeModel found) {
      return found.number() == tree.number();
    }
    if (!(part instanceof Ensemble ensemble)) {
      return false;
    }
    int number = 0;
    for (Ensemble.Segment segment : ensemble.segments()) {
      number++;
      List<String> inner = new ArrayList<>();
      if (find(segment.model(), tree, numbers, inner)) {
        lines.add(line(ensemble, segment, number, tree, numbers));
        lines.addAll(inner);
        return true;
      }
    }
    return false;
  }

  /** The weight of a member; empty for the usual one. */
  static String weight(Ensemble.Segment segment, NumberText numbers) {
    if (segment.weightField() != null) {
      return "weight: the value of " + segment.weightField();
    }
    return segment.weight() == 1 ? "" : "weight " + numbers.number(segment.weight());
  }

  private static String line(Ensemble ensemble, Ensemble.Segment segment, int number,
      TreeModel tree, NumberText numbers) {
    boolean separate = ensemble.method().equals(Ensemble.SEPARATE);
    StringBuilder text = new StringBuilder(separate
        ? "Model " + number + " of " + ensemble.segments().size()
        : "Part " + number + ", " + joining(ensemble));
    String weight = weight(segment, numbers);
    text.append(weight.isEmpty() ? "" : ", " + weight);
    boolean always = segment.predicate() instanceof Predicate.Constant constant && constant.value();
    if (!always) {
      text.append(", used when ")
          .append(new PredicateText(tree.fields(), numbers, false).of(segment.predicate()));
    }
    if (!ensemble.remarks().isEmpty()) {
      text.append(". ").append(new RemarkText(numbers).of(ensemble.remarks()));
    }
    return text.toString();
  }
}
