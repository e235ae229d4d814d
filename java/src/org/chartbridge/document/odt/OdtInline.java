// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.util.List;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.TextStyle;

/** Writes running text as OpenDocument. */
final class OdtInline implements InlineVisitor {
  private final Markup out;

  private OdtInline(Markup out) {
    this.out = out;
  }

  static void write(List<Inline> content, Markup out) {
    OdtInline odt = new OdtInline(out);
    content.forEach(inline -> inline.accept(odt));
  }

  @Override
  public void text(String text) {
    out.text(text);
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
    out.empty("text:line-break");
  }
}
