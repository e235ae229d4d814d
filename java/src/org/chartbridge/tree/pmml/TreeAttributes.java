// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import org.chartbridge.tree.MissingValues;
import org.chartbridge.tree.Remark;

/**
 * What the start tags of {@code TreeModel} and {@code DecisionTree} say.
 *
 * @param classification false for regression
 * @param missingValues what happens to records with missing values
 * @param returnsLastPrediction whether a node whose children do not apply predicts itself
 * @param remarks what else changes the meaning of the predictions
 */
record TreeAttributes(boolean classification, MissingValues missingValues,
    boolean returnsLastPrediction, List<Remark> remarks) {
  private static final String[] MISSING_VALUES =
      Arrays.stream(MissingValues.values()).map(MissingValues::pmmlName).toArray(String[]::new);
  private static final int NULL_PREDICTION = 0;

  /** Reads the current element's. */
  static TreeAttributes read(PmmlCursor in) {
    in.required("functionName");
    boolean classification =
        in.choice("functionName", 0, "classification", "regression") == 0;
    MissingValues missing = MissingValues.values()[
        in.choice("missingValueStrategy", MissingValues.NONE.ordinal(), MISSING_VALUES)];
    boolean lastPrediction = in.choice("noTrueChildStrategy", NULL_PREDICTION,
        "returnNullPrediction", "returnLastPrediction") != NULL_PREDICTION;
    List<Remark> remarks = new ArrayList<>(scorable(in));
    double penalty = in.number("missingValuePenalty", 1);
    boolean goesOn = missing == MissingValues.DEFAULT_CHILD
        || missing == MissingValues.AGGREGATE_NODES || missing == MissingValues.WEIGHTED_CONFIDENCE;
    if (penalty != 1 && goesOn) {
      remarks.add(
          Remark.of("Each missing value multiplies the confidence of the prediction by {0}.",
              in.attribute("missingValuePenalty").strip()));
    }
    return new TreeAttributes(classification, missing, lastPrediction, remarks);
  }

  /** What a model says about itself that no picture of it should hide. */
  static List<Remark> scorable(PmmlCursor in) {
    String scorable = in.attribute("isScorable");
    boolean no = scorable != null
        && (scorable.strip().equals("false") || scorable.strip().equals("0"));
    return no ? List.of(Remark.of("The document says that this model is not for predictions."))
        : List.of();
  }
}
