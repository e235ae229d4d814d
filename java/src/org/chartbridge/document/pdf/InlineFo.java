// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.List;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.TextStyle;

/** Writes running text as formatting objects. */
final class InlineFo implements InlineVisitor {
  private static final String ZERO_WIDTH_SPACE = "\u200B";

  private final FoEvents out;
  private final int longestWord;

  private InlineFo(FoEvents out, int longestWord) {
    this.out = out;
    this.longestWord = longestWord;
  }

  /**
   * @param longestWord words of more characters may be broken anywhere
   */
  static void write(List<Inline> content, FoEvents out, int longestWord) {
    InlineFo fo = new InlineFo(out, longestWord);
    content.forEach(inline -> inline.accept(fo));
  }

  @Override
  public void text(String text) {
    out.text(breakable(text, longestWord));
  }

  private static String breakable(String text, int longestWord) {
    if (text.length() <= longestWord) {
      return text;
    }
    StringBuilder broken = new StringBuilder();
    for (String word : text.split("(?<= )")) {
      broken.append(word.length() <= longestWord
          ? word : word.replaceAll("(\\p{L}\\p{M}*|.)(?! )", "$1" + ZERO_WIDTH_SPACE));
    }
    return broken.toString();
  }

  @Override
  public void begin(TextStyle style) {
    switch (style) {
      case EMPHASIS -> out.open("inline", "font-style", "italic");
      case STRONG -> out.open("inline", "font-weight", "bold");
      case CODE -> out.open("inline", "font-family", PdfStyle.CODE_FAMILIES, "font-size", "0.92em");
    }
  }

  @Override
  public void end(TextStyle style) {
    out.close("inline");
  }

  @Override
  public void beginLink(String target) {
    if (target.startsWith("#")) {
      out.open("basic-link", "internal-destination", target.substring(1), "color", PdfStyle.LINK);
    } else {
      out.open("basic-link", "external-destination", "url('" + target.replace("'", "%27") + "')",
          "color", PdfStyle.LINK);
    }
  }

  @Override
  public void endLink(String target) {
    out.close("basic-link");
  }

  @Override
  public void lineBreak() {
    out.empty("block");
  }
}
