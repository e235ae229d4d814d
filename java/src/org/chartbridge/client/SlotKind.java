// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

/** What a slot takes. */
enum SlotKind {
  /** The name of a data column. */
  COLUMN,
  NUMBER,
  TEXT,
  BOOLEAN,
  /** {@code #rrggbb}. */
  COLOR,
  /** One of some texts. */
  CHOICE
}
