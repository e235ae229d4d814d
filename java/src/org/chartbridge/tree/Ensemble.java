// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;

/**
 * Models that work together.
 *
 * @param name the model's name, or null
 * @param method the PMML name of how their results are joined, for example {@code majorityVote}
 * @param target what it predicts, for people; may be empty
 * @param segments its members in order
 */
public record Ensemble(String name, String method, String target, List<Segment> segments)
    implements ModelPart {
  /**
   * One member.
   *
   * @param id its id in the document, or null
   * @param predicate when it is used
   * @param weight its weight; 1 when the document gives none
   */
  public record Segment(String id, Predicate predicate, double weight, ModelPart model) {}

  public Ensemble {
    segments = List.copyOf(segments);
  }

  /** How the results are joined, for people. */
  public String methodLabel() {
    return switch (method) {
      case "majorityVote" -> "majority vote";
      case "weightedMajorityVote" -> "weighted majority vote";
      case "weightedAverage" -> "weighted average";
      case "weightedMedian" -> "weighted median";
      case "weightedSum" -> "weighted sum";
      case "modelChain" -> "chain";
      case "x-weightedSum" -> "weighted sum";
      default -> method;
    };
  }
}
