// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.List;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.TextStyle;

/**
 * Running text with the marks that stand for emphasis in plain text, and with the addresses that
 * links lead to.
 */
final class MarkedText implements InlineVisitor {
  private final StringBuilder text = new StringBuilder();
  private int linkStart;

  private MarkedText() {}

  /** Line breaks are line ends. */
  static String of(List<Inline> content) {
    MarkedText marked = new MarkedText();
    content.forEach(inline -> inline.accept(marked));
    return marked.text.toString();
  }

  /** Without marks. */
  static String plain(List<Inline> content) {
    return PlainText.of(content, '\n');
  }

  @Override
  public void text(String characters) {
    text.append(characters);
  }

  @Override
  public void begin(TextStyle style) {
    text.append(mark(style));
  }

  @Override
  public void end(TextStyle style) {
    text.append(mark(style));
  }

  private static String mark(TextStyle style) {
    return switch (style) {
      case EMPHASIS -> "_";
      case STRONG -> "**";
      case CODE -> "`";
    };
  }

  @Override
  public void beginLink(String target) {
    linkStart = text.length();
  }

  @Override
  public void endLink(String target) {
    String shown = text.substring(linkStart);
    boolean says = shown.equals(target) || ("mailto:" + shown).equals(target);
    if (!target.startsWith("#") && !says) {
      text.append(" <").append(target).append('>');
    }
  }

  @Override
  public void lineBreak() {
    text.append('\n');
  }
}
