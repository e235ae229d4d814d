// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/**
 * A heading.
 *
 * @param level from 1 to {@link #MAX_LEVEL}
 * @param id what links refer to; unique in the document
 */
public record Heading(int level, String id, List<Inline> text) implements Block {
  public static final int MAX_LEVEL = 6;

  public Heading {
    text = List.copyOf(text);
  }

  @Override
  public void accept(BlockVisitor visitor) {
    visitor.heading(this);
  }
}
