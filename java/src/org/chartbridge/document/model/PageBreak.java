// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** What follows begins on a new page, where there are pages. */
public record PageBreak() implements Block {
  @Override
  public void accept(BlockVisitor visitor) {
    visitor.pageBreak(this);
  }
}
