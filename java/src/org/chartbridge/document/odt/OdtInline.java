// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.util.List;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.WholeNumbers;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.TextDirection;
import org.chartbridge.document.model.TextStyle;

/** Writes running text as OpenDocument. */
final class OdtInline implements InlineVisitor {
  private static final char NO_BREAK_SPACE = '\u00A0';
  private static final char WORD_JOINER = '\u2060';

  private final Markup out;
  private final WholeNumbers numbers;
  /** What stands behind a number that is kept in order, so that what follows is not drawn to it. */
  private final char end;

  private OdtInline(WholeNumbers numbers, char end, Markup out) {
    this.numbers = numbers;
    this.end = end;
    this.out = out;
  }

  static void write(List<Inline> content, OdtText text, Markup out) {
    OdtInline odt = new OdtInline(text.numbers(content), text.mark(content), out);
    content.forEach(inline -> inline.accept(odt));
  }

  @Override
  public void text(String text) {
    for (WholeNumbers.Part part : numbers.next(text)) {
      out.text(part.isFragile() ? held(part) : part.text());
    }
  }

  /** A number or date with signs that nobody sees where it would be broken or turned around. */
  private String held(WholeNumbers.Part part) {
    String number = part.text();
    StringBuilder held = new StringBuilder(number.replace(' ', NO_BREAK_SPACE));
    for (int i = part.breaks().size() - 1; i >= 0; i--) {
      int place = part.breaks().get(i);
      if (number.charAt(place - 1) != ' ') {
        held.insert(place, WORD_JOINER);
      }
    }
    return part.turns()
        ? TextDirection.LEFT_TO_RIGHT.mark() + held.toString() + end : held.toString();
  }

  @Override
  public void begin(TextStyle style) {
    out.open("text:span", "text:style-name", switch (style) {
      case EMPHASIS -> "Emphasis";
      case STRONG -> "Strong";
      case CODE -> "Code";
    });
  }

  @Override
  public void end(TextStyle style) {
    out.close("text:span");
  }

  @Override
  public void beginLink(String target) {
    out.open("text:a", "xlink:type", "simple", "xlink:href", target, "text:style-name",
        "Internet_20_link");
  }

  @Override
  public void endLink(String target) {
    out.close("text:a");
  }

  @Override
  public void lineBreak() {
    numbers.skip();
    out.empty("text:line-break");
  }
}
