// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/** Running text as characters only. */
public final class PlainText implements InlineVisitor {
  private final StringBuilder text = new StringBuilder();
  private final char lineBreak;

  private PlainText(char lineBreak) {
    this.lineBreak = lineBreak;
  }

  /** The text on one line. */
  public static String of(List<Inline> content) {
    return of(content, ' ');
  }

  /**
   * @param lineBreak what stands for a line break
   */
  public static String of(List<Inline> content, char lineBreak) {
    PlainText plain = new PlainText(lineBreak);
    content.forEach(inline -> inline.accept(plain));
    return plain.text.toString();
  }

  /** The texts of a list and of the lists in it, one a line. */
  public static String of(ItemList list) {
    StringBuilder text = new StringBuilder();
    for (ItemList.Item item : list.items()) {
      text.append(of(item.text())).append('\n');
      item.lists().forEach(below -> text.append(of(below)));
    }
    return text.toString();
  }

  @Override
  public void text(String characters) {
    text.append(characters);
  }

  @Override
  public void lineBreak() {
    text.append(lineBreak);
  }

  @Override
  public void begin(TextStyle style) {}

  @Override
  public void end(TextStyle style) {}

  @Override
  public void beginLink(String target) {}

  @Override
  public void endLink(String target) {}
}
