// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.Set;

/** Which way texts run. */
public enum TextDirection {
  LEFT_TO_RIGHT("ltr", "lr-tb", '\u200E'),
  RIGHT_TO_LEFT("rtl", "rl-tb", '\u200F');

  private static final Set<String> RIGHT_TO_LEFT_LANGUAGES =
      Set.of("ar", "arc", "ckb", "dv", "fa", "he", "iw", "ji", "ps", "sd", "syr", "ug", "ur", "yi");
  private static final Set<String> RIGHT_TO_LEFT_SCRIPTS = Set.of("Arab", "Hebr", "Syrc", "Thaa");

  private final String word;
  private final String writingMode;
  private final char mark;

  TextDirection(String word, String writingMode, char mark) {
    this.word = word;
    this.writingMode = writingMode;
    this.mark = mark;
  }

  /** What HTML calls it. */
  public String word() {
    return word;
  }

  /** What OpenDocument and formatting objects call it. */
  public String writingMode() {
    return writingMode;
  }

  /** A letter that nobody sees and that runs this way. */
  public char mark() {
    return mark;
  }

  /** That of the document's language; without one, that of its first letter. */
  public static TextDirection of(Document document) {
    Metadata metadata = document.metadata();
    if (!metadata.locale().getScript().isEmpty()) {
      return of(RIGHT_TO_LEFT_SCRIPTS.contains(metadata.locale().getScript()));
    }
    if (!metadata.locale().getLanguage().isEmpty()) {
      return of(RIGHT_TO_LEFT_LANGUAGES.contains(metadata.locale().getLanguage()));
    }
    TextDirection direction = metadata.title() == null ? null : first(metadata.title());
    FirstLetter letters = new FirstLetter();
    for (Block block : document.blocks()) {
      if (direction != null) {
        return direction;
      }
      block.accept(letters);
      direction = letters.direction;
    }
    return direction == null ? LEFT_TO_RIGHT : direction;
  }

  private static TextDirection of(boolean rightToLeft) {
    return rightToLeft ? RIGHT_TO_LEFT : LEFT_TO_RIGHT;
  }

  /** That of the first letter of a text, or the one given when it has none. */
  public static TextDirection of(String text, TextDirection otherwise) {
    TextDirection first = first(text);
    return first == null ? otherwise : first;
  }

  private static TextDirection first(String text) {
    for (int i = 0; i < text.length(); i += Character.charCount(text.codePointAt(i))) {
      switch (Character.getDirectionality(text.codePointAt(i))) {
        case Character.DIRECTIONALITY_LEFT_TO_RIGHT:
          return LEFT_TO_RIGHT;
        case Character.DIRECTIONALITY_RIGHT_TO_LEFT:
        case Character.DIRECTIONALITY_RIGHT_TO_LEFT_ARABIC:
          return RIGHT_TO_LEFT;
        default:
          break;
      }
    }
    return null;
  }

  /** Whether anything in a text runs from right to left. */
  public static boolean isMixed(String text) {
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      // Everything before Hebrew runs from left to right.
      if (c >= '\u0590') {
        byte direction = Character.getDirectionality(text.codePointAt(i));
        if (direction == Character.DIRECTIONALITY_RIGHT_TO_LEFT
            || direction == Character.DIRECTIONALITY_RIGHT_TO_LEFT_ARABIC) {
          return true;
        }
      }
    }
    return false;
  }

  /** Looks for a letter in the blocks of a document. */
  private static final class FirstLetter implements BlockVisitor {
    private TextDirection direction;

    @Override
    public void heading(Heading heading) {
      direction = first(PlainText.of(heading.text()));
    }

    @Override
    public void paragraph(Paragraph paragraph) {
      direction = first(PlainText.of(paragraph.text()));
    }

    @Override
    public void list(ItemList list) {
      direction = first(PlainText.of(list.items().get(0).text()));
    }

    @Override
    public void table(Table table) {
      direction = table.caption() == null ? null : first(table.caption());
    }

    @Override
    public void figure(Figure figure) {
      direction = figure.caption() == null ? null : first(figure.caption());
    }

    @Override
    public void contents(Contents contents) {
      // Its headings follow.
    }

    @Override
    public void pageBreak(PageBreak pageBreak) {
      // It has no text.
    }
  }
}
