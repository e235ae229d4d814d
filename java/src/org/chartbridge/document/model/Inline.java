// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/** A piece of running text. Runs of blanks are one space, and texts begin and end with none. */
public sealed interface Inline
    permits Inline.Text, Inline.Styled, Inline.Link, Inline.LineBreak {
  void accept(InlineVisitor visitor);

  /** Characters. */
  record Text(String text) implements Inline {
    @Override
    public void accept(InlineVisitor visitor) {
      visitor.text(text);
    }
  }

  /** Text that stands out. */
  record Styled(TextStyle style, List<Inline> content) implements Inline {
    public Styled {
      content = List.copyOf(content);
    }

    @Override
    public void accept(InlineVisitor visitor) {
      visitor.begin(style);
      content.forEach(inline -> inline.accept(visitor));
      visitor.end(style);
    }
  }

  /**
   * Text that leads somewhere.
   *
   * @param target a URL, or {@code #} and the id of a heading
   */
  record Link(String target, List<Inline> content) implements Inline {
    public Link {
      content = List.copyOf(content);
    }

    @Override
    public void accept(InlineVisitor visitor) {
      visitor.beginLink(target);
      content.forEach(inline -> inline.accept(visitor));
      visitor.endLink(target);
    }
  }

  /** What follows begins on a new line. */
  record LineBreak() implements Inline {
    @Override
    public void accept(InlineVisitor visitor) {
      visitor.lineBreak();
    }
  }
}
