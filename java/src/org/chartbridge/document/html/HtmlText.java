// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.WholeNumbers;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.TextDirection;

/** Which way the texts of a document run. */
final class HtmlText {
  private final Locale language;
  private final TextDirection direction;

  HtmlText(Document document) {
    language = document.metadata().locale();
    direction = TextDirection.of(document);
  }

  /** The {@code dir} of the page, or null for the usual one. */
  String page() {
    return direction == TextDirection.RIGHT_TO_LEFT ? direction.word() : null;
  }

  /** The {@code dir} of a text, or null when it runs as the page does. */
  String of(String text) {
    TextDirection own = TextDirection.of(text, direction);
    return own == direction ? null : own.word();
  }

  String of(List<Inline> text) {
    return of(PlainText.of(text));
  }

  /** Whether cells that say nothing else stand on the left. */
  String start() {
    return direction == TextDirection.RIGHT_TO_LEFT ? "right" : "left";
  }

  WholeNumbers numbers(List<Inline> content) {
    return new WholeNumbers(content, language, direction);
  }
}
