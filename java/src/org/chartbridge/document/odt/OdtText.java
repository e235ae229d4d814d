// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.export.WholeNumbers;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;
import org.chartbridge.document.model.TextDirection;

/** How the text of a document is set, with styles for what is set in another way than the rest. */
final class OdtText {
  private final Locale language;
  private final TextDirection direction;
  private final Markup styles;
  private final Map<String, String> names = new HashMap<>();

  /**
   * @param styles takes the styles that only some elements have
   */
  OdtText(Document document, Markup styles) {
    language = document.metadata().locale();
    direction = TextDirection.of(document);
    this.styles = styles;
  }

  boolean isRightToLeft() {
    return direction == TextDirection.RIGHT_TO_LEFT;
  }

  /** The mark of the direction of a text. */
  char mark(List<Inline> content) {
    return TextDirection.of(PlainText.of(content), direction).mark();
  }

  WholeNumbers numbers(List<Inline> content) {
    return new WholeNumbers(content, language, direction);
  }

  /** The name of a paragraph style, or of one like it for text that runs another way. */
  String style(String name, List<Inline> text) {
    return style(name, PlainText.of(text));
  }

  String style(String name, String text) {
    TextDirection own = TextDirection.of(text, direction);
    return own == direction ? name : variant(name, own, null, 0);
  }

  /**
   * The style of a cell.
   *
   * @param size of the type, in points
   */
  String style(String name, Table.Cell cell, double size) {
    TextDirection own = TextDirection.of(PlainText.of(cell.text()), direction);
    boolean other = own != direction;
    if (!other && size == PageTable.SIZE) {
      return name;
    }
    // Cells of a column stand below each other, whatever is in them.
    String align = other && cell.alignment() == Alignment.START
        ? isRightToLeft() ? "right" : "left" : null;
    return variant(name, other ? own : null, align, size == PageTable.SIZE ? 0 : size);
  }

  private String variant(String parent, TextDirection own, String align, double size) {
    return names.computeIfAbsent(parent + own + align + size, key -> {
      String name = "P" + (names.size() + 1);
      styles.open("style:style", "style:name", name, "style:family", "paragraph",
          "style:parent-style-name", parent);
      styles.empty("style:paragraph-properties", "style:writing-mode",
          own == null ? null : own.writingMode(), "fo:text-align", align);
      if (size > 0) {
        String points = String.format(Locale.ROOT, "%.2fpt", size);
        styles.empty("style:text-properties", "fo:font-size", points, "style:font-size-asian",
            points, "style:font-size-complex", points);
      }
      styles.close("style:style").line();
      return name;
    });
  }
}
