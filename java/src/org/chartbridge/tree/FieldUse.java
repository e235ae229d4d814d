// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * What a model does with the values of a field before anything else sees them.
 *
 * @param missingReplacement what stands in for a missing value, or null
 * @param rejectsMissing whether the model has no result for a record whose value is missing
 * @param outliers what happens to numbers outside {@code low} to {@code high}
 * @param low the least number that is no outlier; NaN for no bound
 * @param high the greatest number that is no outlier; NaN for no bound
 * @param invalid what happens to values that the field cannot have
 * @param invalidReplacement what stands in for such a value, or null
 */
public record FieldUse(String missingReplacement, boolean rejectsMissing, Outliers outliers,
    double low, double high, Invalid invalid, String invalidReplacement) {
  /** The treatments of outliers, with the names of PMML in mind. */
  public enum Outliers {
    AS_IS,
    AS_MISSING_VALUES,
    AS_EXTREME_VALUES
  }

  /** The treatments of invalid values. */
  public enum Invalid {
    /** The model has no result for the record. */
    RETURN_INVALID,
    AS_IS,
    AS_MISSING,
    AS_VALUE
  }

  /** @param value null when it is missing */
  String treated(String value) {
    String inside = value == null ? null : withoutOutlier(value);
    return inside == null ? missingReplacement : inside;
  }

  /**
   * Whether the model has no result for that value.
   *
   * @param value null when it is missing
   */
  boolean rejects(String value) {
    return rejectsMissing && (value == null || withoutOutlier(value) == null);
  }

  private String withoutOutlier(String value) {
    if (outliers == Outliers.AS_IS) {
      return value;
    }
    double number;
    try {
      number = Double.parseDouble(value);
    } catch (NumberFormatException e) {
      return value;
    }
    double bound = number < low ? low : number > high ? high : Double.NaN;
    if (Double.isNaN(bound)) {
      return value;
    }
    return outliers == Outliers.AS_MISSING_VALUES ? null : Double.toString(bound);
  }
}
