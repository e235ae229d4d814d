// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * How many training records of a node have a value of the target.
 *
 * @param count the number of records; weights may have made it a fraction
 * @param probability the probability of the value, from 0 to 1; NaN when the document gives none
 * @param confidence how sure the model is of the value; NaN when the document gives none
 */
public record ClassCount(String value, double count, double probability, double confidence) {
  public ClassCount(String value, double count) {
    this(value, count, Double.NaN, Double.NaN);
  }
}
