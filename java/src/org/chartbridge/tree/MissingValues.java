// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/** What a tree does with a record whose value is missing at a split. */
public enum MissingValues {
  NONE("none", ""),
  LAST_PREDICTION("lastPrediction", "the node above predicts"),
  NULL_PREDICTION("nullPrediction", "no prediction"),
  DEFAULT_CHILD("defaultChild", "the default branch"),
  WEIGHTED_CONFIDENCE("weightedConfidence", "all branches, weighted by confidence"),
  AGGREGATE_NODES("aggregateNodes", "all branches, added up");

  private final String pmmlName;
  private final String label;

  MissingValues(String pmmlName, String label) {
    this.pmmlName = pmmlName;
    this.label = label;
  }

  public String pmmlName() {
    return pmmlName;
  }

  /** For people; empty when there is nothing to say. */
  public String label() {
    return label;
  }
}
