// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * Mean and variance of weighted numbers, kept so that they can be joined: T. F. Chan, G. H. Golub
 * and R. J. LeVeque, "Updating Formulae and a Pairwise Algorithm for Computing Sample Variances",
 * COMPSTAT 1982. Sums of squares would lose every digit of the variance where the numbers are large
 * and close together.
 *
 * @param weight the sum of the weights; NaN when a weight or a number is unknown
 * @param mean the weighted mean
 * @param squares the weighted sum of the squared distances from the mean
 */
record Moments(double weight, double mean, double squares) {
  static final Moments NONE = new Moments(0, 0, 0);
  static final Moments UNKNOWN = new Moments(Double.NaN, Double.NaN, Double.NaN);

  static Moments of(double weight, double value) {
    boolean known = !Double.isNaN(weight) && !Double.isNaN(value);
    return known ? new Moments(weight, value, 0) : UNKNOWN;
  }

  Moments plus(Moments other) {
    double sum = weight + other.weight;
    if (Double.isNaN(sum)) {
      return UNKNOWN;
    }
    if (weight == 0 || other.weight == 0) {
      return weight == 0 ? other : this;
    }
    double distance = other.mean - mean;
    double newMean = Double.isInfinite(distance)
        ? mean * (weight / sum) + other.mean * (other.weight / sum)
        : mean + distance * (other.weight / sum);
    return new Moments(sum, newMean,
        squares + other.squares + distance * distance * weight * (other.weight / sum));
  }

  /** NaN when it is unknown. */
  double average() {
    return weight > 0 ? mean : Double.NaN;
  }

  /** The standard deviation; NaN when it is unknown or beyond the range of a double. */
  double deviation() {
    double variance = weight > 0 ? squares / weight : Double.NaN;
    return Double.isInfinite(variance) ? Double.NaN : Math.sqrt(variance);
  }
}
