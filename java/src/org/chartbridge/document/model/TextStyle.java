// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** How text stands out. */
public enum TextStyle {
  EMPHASIS,
  STRONG,
  CODE
}
