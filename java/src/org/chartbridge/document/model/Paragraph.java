// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/** A paragraph. */
public record Paragraph(Alignment alignment, List<Inline> text) implements Block {
  public Paragraph {
    text = List.copyOf(text);
  }

  @Override
  public void accept(BlockVisitor visitor) {
    visitor.paragraph(this);
  }
}
