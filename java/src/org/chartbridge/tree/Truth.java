// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/** What a predicate says about a record; {@code UNKNOWN} when a value that it needs is missing. */
public enum Truth {
  TRUE,
  FALSE,
  UNKNOWN;

  public static Truth of(boolean value) {
    return value ? TRUE : FALSE;
  }
}
