// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import org.chartbridge.chart.TextPosition;

/**
 * Something to look at.
 *
 * @param caption the line below it, or null
 * @param alternative what it shows, in words for those who do not see it; null for what follows
 *     from caption and content
 * @param width how wide it is shown, in pixels of which 96 make an inch; 0 for its own width
 * @param position where it stands in the document; null in a document that was not read
 */
public record Figure(FigureContent content, String caption, String alternative, double width,
    TextPosition position) implements Block {
  @Override
  public void accept(BlockVisitor visitor) {
    visitor.figure(this);
  }
}
