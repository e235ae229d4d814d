// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/**
 * The headings of the document.
 *
 * @param title the line above them; empty for none
 * @param depth the last level that is listed
 */
public record Contents(String title, int depth) implements Block {
  @Override
  public void accept(BlockVisitor visitor) {
    visitor.contents(this);
  }
}
