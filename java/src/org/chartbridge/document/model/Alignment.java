// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** Where text stands between its margins. */
public enum Alignment {
  LEFT,
  CENTER,
  RIGHT,
  JUSTIFY
}
