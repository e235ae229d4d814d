// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** Where text stands between its margins. */
public enum Alignment {
  /** Where lines begin: on the left, in text from right to left on the right. */
  START,
  LEFT,
  CENTER,
  RIGHT,
  JUSTIFY
}
