// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;

/**
 * Models that work together.
 *
 * @param name the model's name, or null
 * @param method the PMML name of how their results are joined, for example {@code majorityVote}
 * @param target what it predicts, for people; may be empty
 * @param remarks what else changes the meaning of its predictions
 * @param segments its members in order
 */
public record Ensemble(String name, String method, String target, List<Remark> remarks,
    List<Segment> segments)
    implements ModelPart {
  /** The method of models that only stand in the same document. */
  public static final String SEPARATE = "separate models";

  /**
   * One member.
   *
   * @param id its id in the document, or null
   * @param predicate when it is used
   * @param weight its weight; 1 when the document gives none
   * @param weightField the field whose value in a record is the weight, or null
   */
  public record Segment(String id, Predicate predicate, double weight, String weightField,
      ModelPart model) {}

  public Ensemble {
    remarks = List.copyOf(remarks);
    segments = List.copyOf(segments);
  }

  /** The same ensemble with more remarks, in front of its own. */
  public Ensemble withRemarks(List<Remark> more) {
    return new Ensemble(name, method, target, Remark.joined(more, remarks), segments);
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
