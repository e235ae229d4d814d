// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

import java.util.List;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.WholeNumbers;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.TextStyle;

/** Writes running text as HTML. */
final class InlineMarkup implements InlineVisitor {
  private final WholeNumbers numbers;
  private final Markup out;

  private InlineMarkup(WholeNumbers numbers, Markup out) {
    this.numbers = numbers;
    this.out = out;
  }

  static void write(List<Inline> content, HtmlText text, Markup out) {
    InlineMarkup markup = new InlineMarkup(text.numbers(content), out);
    content.forEach(inline -> inline.accept(markup));
  }

  @Override
  public void text(String text) {
    for (WholeNumbers.Part part : numbers.next(text)) {
      if (part.isFragile()) {
        out.element(part.turns() ? "bdi" : "span", part.text(), "class", "whole", "dir",
            part.turns() ? "ltr" : null);
      } else {
        out.text(part.text());
      }
    }
  }

  @Override
  public void begin(TextStyle style) {
    out.open(name(style));
  }

  @Override
  public void end(TextStyle style) {
    out.close(name(style));
  }

  private static String name(TextStyle style) {
    return switch (style) {
      case EMPHASIS -> "em";
      case STRONG -> "strong";
      case CODE -> "code";
    };
  }

  @Override
  public void beginLink(String target) {
    out.open("a", "href", target);
  }

  @Override
  public void endLink(String target) {
    out.close("a");
  }

  @Override
  public void lineBreak() {
    numbers.skip();
    out.empty("br");
  }
}
