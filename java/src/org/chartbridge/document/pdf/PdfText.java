// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.LinkedHashSet;
import java.util.Locale;
import java.util.Set;
import java.util.TreeSet;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.PageFonts;
import org.chartbridge.document.export.Typeface;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.TextDirection;

/** How the text of a document is set, and the fonts and characters that were met on the way. */
final class PdfText {
  private static final int NAMED = 20;

  private final Locale language;
  private final TextDirection direction;
  private final Set<Typeface> typefaces = new LinkedHashSet<>();
  private final Set<Integer> missing = new TreeSet<>();

  PdfText(Document document) {
    language = document.metadata().locale();
    direction = TextDirection.of(document);
  }

  Locale language() {
    return language;
  }

  /** Which way the document runs. */
  TextDirection direction() {
    return direction;
  }

  void use(PageFonts.Run run) {
    if (run.typeface() != null) {
      typefaces.add(run.typeface());
      return;
    }
    run.text().codePoints().filter(character -> !PageFonts.isControl(character))
        .forEach(missing::add);
  }

  Set<Typeface> typefaces() {
    return typefaces;
  }

  /**
   * @throws ChartException when no font has a character; the message names the characters and what
   *     helps
   */
  void check() {
    if (missing.isEmpty()) {
      return;
    }
    StringBuilder shown = new StringBuilder();
    StringBuilder codes = new StringBuilder();
    boolean isSet = true;
    int count = 0;
    for (int character : missing) {
      if (count++ == NAMED) {
        shown.append('\u2026');
        codes.append(", \u2026");
        break;
      }
      shown.appendCodePoint(character);
      codes.append(codes.length() == 0 ? "" : ", ").append(String.format("U+%04X", character));
      isSet &= PageFonts.canBeSet(character);
    }
    String characters = (missing.size() == 1 ? "the character \"" : "the characters \"") + shown
        + "\" (" + codes + ")";
    throw new ChartException(isSet
        ? "no installed font that PDF can embed has " + characters
            + "; install a font package for the language of the text"
        : "PDF cannot set " + characters + ", whose script needs its letters rearranged; HTML and"
            + " ODT can");
  }
}
