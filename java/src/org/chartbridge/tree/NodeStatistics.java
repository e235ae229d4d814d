// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * What is known about the training records of a node.
 *
 * @param count how many there are; NaN when unknown
 * @param share their share of the tree's records; NaN when unknown
 * @param classCounts how many have each class, in the order of the model's classes; null when
 *     unknown or for regression
 * @param probabilities whether {@code classCounts} are the classes' probabilities instead, because
 *     the document gives no counts
 * @param prediction the predicted value as the document writes it or as follows from it; null
 *     when there is none
 * @param mean for regression, the predicted number; NaN when unknown
 * @param spread for regression, the standard deviation of the target if the document gives its
 *     distribution, else of the predictions of the leaves below; NaN when unknown
 */
public record NodeStatistics(
    double count, double share, double[] classCounts, boolean probabilities, String prediction,
    double mean, double spread) {

  public boolean hasCount() {
    return !Double.isNaN(count);
  }

  public boolean hasShare() {
    return !Double.isNaN(share);
  }

  public boolean hasMean() {
    return !Double.isNaN(mean);
  }

  public boolean hasSpread() {
    return !Double.isNaN(spread);
  }
}
