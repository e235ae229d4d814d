// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.io.IOException;
import java.io.InputStream;
import java.nio.charset.StandardCharsets;
import java.util.Locale;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.TextDirection;

/** The styles of a document: those of styles.xml in the jar, with what depends on the document. */
final class OdtStyles {
  private static final int LIST_LEVELS = 10;
  private static final double LIST_INDENT = 6.5;

  private OdtStyles() {}

  static String of(Document document) throws IOException {
    Paper paper = document.paper();
    Locale locale = Locale.forLanguageTag(document.metadata().language());
    String title = document.metadata().title();
    String country = locale.getCountry().isEmpty() ? "none" : locale.getCountry();
    // Word processors keep the properties of three kinds of scripts apart.
    return template().replace("@CONTENTS@", contents(paper))
        .replaceAll("fo:(font-size|font-weight|font-style|language|country)=(\"[^\"]*\")",
            "fo:$1=$2 style:$1-asian=$2 style:$1-complex=$2")
        .replace("@LANGUAGE@", locale.getLanguage())
        .replace("@COUNTRY@", country)
        .replace("@WRITING_MODE@", TextDirection.of(document).writingMode())
        .replace("@BULLETS@", bullets())
        .replace("@NUMBERS@", numbers())
        .replace("@PAGE_WIDTH@", paper.width() + "mm")
        .replace("@PAGE_HEIGHT@", paper.height() + "mm")
        .replace("@TEXT_WIDTH@", textWidth(paper) + "mm")
        .replace("@TEXT_HEIGHT@", paper.height() - 2 * Paper.TOP_MARGIN + "mm")
        .replace("@TOP@", Paper.TOP_MARGIN + "mm")
        .replace("@SIDE@", Paper.SIDE_MARGIN + "mm")
        .replace("@TITLE@", new Markup().text(title == null ? "" : title).toString());
  }

  private static String template() throws IOException {
    try (InputStream in = OdtStyles.class.getResourceAsStream("styles.xml")) {
      if (in == null) {
        throw new IllegalStateException("styles.xml is missing in the jar");
      }
      String text = new String(in.readAllBytes(), StandardCharsets.UTF_8);
      // The licence of the file is not that of the document.
      return text.replaceFirst("<!--[^>]*-->\n", "");
    }
  }

  private static double textWidth(Paper paper) {
    return paper.width() - 2 * Paper.SIDE_MARGIN;
  }

  private static String contents(Paper paper) {
    Markup styles = new Markup();
    for (int level = 1; level <= Heading.MAX_LEVEL; level++) {
      double indent = 5.0 * (level - 1);
      styles.open("style:style", "style:name", "Contents_20_" + level, "style:display-name",
          "Contents " + level, "style:family", "paragraph", "style:parent-style-name", "Standard",
          "style:class", "index");
      styles.open("style:paragraph-properties", "fo:margin-left", indent + "mm",
          "fo:margin-bottom", "1.5pt").open("style:tab-stops");
      styles.empty("style:tab-stop", "style:position", textWidth(paper) - indent + "mm",
          "style:type", "right", "style:leader-style", "dotted", "style:leader-text", ".");
      styles.close("style:tab-stops").close("style:paragraph-properties").close("style:style");
      styles.line();
    }
    return styles.toString();
  }

  private static String bullets() {
    Markup levels = new Markup();
    for (int level = 1; level <= LIST_LEVELS; level++) {
      levels.open("text:list-level-style-bullet", "text:level", Integer.toString(level),
          "text:bullet-char", "\u2022");
      indent(level, levels);
      levels.close("text:list-level-style-bullet").line();
    }
    return levels.toString();
  }

  private static String numbers() {
    Markup levels = new Markup();
    for (int level = 1; level <= LIST_LEVELS; level++) {
      levels.open("text:list-level-style-number", "text:level", Integer.toString(level),
          "style:num-format", "1", "style:num-suffix", ".");
      indent(level, levels);
      levels.close("text:list-level-style-number").line();
    }
    return levels.toString();
  }

  private static void indent(int level, Markup levels) {
    String left = LIST_INDENT * level + "mm";
    levels.open("style:list-level-properties", "text:list-level-position-and-space-mode",
        "label-alignment");
    levels.empty("style:list-level-label-alignment", "text:label-followed-by", "listtab",
        "text:list-tab-stop-position", left, "fo:text-indent", "-5mm", "fo:margin-left", left);
    levels.close("style:list-level-properties");
  }
}
