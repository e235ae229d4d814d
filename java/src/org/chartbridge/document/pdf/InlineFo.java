// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.LineBreaks;
import org.chartbridge.document.export.PageFonts;
import org.chartbridge.document.export.Typeface;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.InlineVisitor;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.TextDirection;
import org.chartbridge.document.model.TextStyle;

/**
 * Writes running text as formatting objects: each run in a font that has its characters, with signs
 * that nobody sees where lines may and must not be broken.
 */
final class InlineFo implements InlineVisitor {
  private static final char ZERO_WIDTH_SPACE = '\u200B';
  private static final char WORD_JOINER = '\u2060';
  private static final String SIGNS = "+\u2212\u00B1";
  private static final char NO_BREAK_SPACE = '\u00A0';
  /** Fonts file the shapes of joined letters under languages of their own choice. */
  private static final String ANY_LANGUAGE = "*";

  private final PdfText setting;
  private final FoEvents out;
  private final String whole;
  private final LineBreaks breaks;
  private final LineBreaks.Detail detail;
  private final boolean mixed;
  /** What stands behind a number that is kept in order, so that what follows is not drawn to it. */
  private final char end;
  private int place;
  private int code;

  private InlineFo(List<Inline> content, LineBreaks.Detail detail, PdfText setting, FoEvents out) {
    this.setting = setting;
    this.out = out;
    this.detail = detail;
    whole = PlainText.of(content, '\n');
    Locale language = setting.language();
    breaks = detail == null
        ? LineBreaks.running(whole, language) : new LineBreaks(whole, language);
    end = TextDirection.of(whole, setting.direction()).mark();
    mixed = setting.direction() == TextDirection.RIGHT_TO_LEFT || TextDirection.isMixed(whole);
  }

  /** Text that has the whole width of the page. */
  static void write(List<Inline> content, PdfText setting, FoEvents out) {
    write(content, null, setting, out);
  }

  static void write(String text, PdfText setting, FoEvents out) {
    write(List.of(new Inline.Text(text)), setting, out);
  }

  /**
   * @param detail where it may be broken; null for text that has the whole width of the page
   */
  static void write(
      List<Inline> content, LineBreaks.Detail detail, PdfText setting, FoEvents out) {
    InlineFo fo = new InlineFo(content, detail, setting, out);
    content.forEach(inline -> inline.accept(fo));
  }

  @Override
  public void text(String text) {
    String marked = marked(text.length());
    for (PageFonts.Run run : PageFonts.runs(marked, code, setting.language())) {
      Typeface typeface = run.typeface();
      setting.use(run);
      boolean usual = typeface == null || typeface.equals(PageFonts.standard(code));
      boolean joined = TextDirection.isMixed(run.text());
      if (usual && !joined) {
        out.text(run.text());
      } else {
        out.open("inline", "font-family", usual ? null : PdfStyle.quoted(typeface.name()),
            "language", joined ? ANY_LANGUAGE : null, "hyphenation-character",
            usual ? null : first(run.text()));
        out.text(run.text()).close("inline");
      }
    }
  }

  /** Nothing is hyphenated, but the formatter wants a character that the font has. */
  private static String first(String text) {
    return Character.isSurrogate(text.charAt(0)) ? null : text.substring(0, 1);
  }

  /** The next characters with what keeps them together or apart. */
  private String marked(int length) {
    StringBuilder text = new StringBuilder(length + 8);
    for (int i = place; i < place + length; i++) {
      if (i > 0 && breaks.isInside(i)) {
        inside(i, text);
      } else {
        if (i > place && breaks.mayBreak(i, detail == null ? LineBreaks.Detail.ANYWHERE : detail)
            && (isUnknownList(i) || !breaks.mayBreak(i, LineBreaks.Detail.WORDS)
                && (detail != null || !isSeparator(whole.charAt(i - 1))))) {
          text.append(ZERO_WIDTH_SPACE);
        }
        if (isOrdered(i)) {
          text.append(TextDirection.LEFT_TO_RIGHT.mark());
        }
        text.append(whole.charAt(i));
      }
      if (mixed && i > 0 && breaks.isInside(i) && !breaks.isInside(i + 1)
          && isOrdered(start(i))) {
        text.append(end);
      }
    }
    place += length;
    return text.toString();
  }

  private void inside(int i, StringBuilder text) {
    char before = whole.charAt(i - 1);
    // The formatter goes by older rules, which break on either side of a sign.
    boolean isSign = SIGNS.indexOf(before) >= 0 || SIGNS.indexOf(whole.charAt(i)) >= 0;
    if (before != ' ' && (isSign || breaks.wouldBreak(i))) {
      text.append(WORD_JOINER);
    }
    text.append(whole.charAt(i) == ' ' ? NO_BREAK_SPACE : whole.charAt(i));
  }

  /** The formatter breaks numbers at blanks only. */
  private boolean isUnknownList(int place) {
    return breaks.isInList(place) && whole.charAt(place - 1) != ' ';
  }

  private static boolean isSeparator(char c) {
    return c == '_' || c == '-' || c == '/';
  }

  private int start(int inside) {
    int start = inside;
    while (breaks.isInside(start)) {
      start--;
    }
    return start;
  }

  /** Whether a number or date begins there whose parts would change places between letters that run
   * from right to left. */
  private boolean isOrdered(int start) {
    if (!mixed || start + 1 >= whole.length() || !breaks.isInside(start + 1)) {
      return false;
    }
    for (int i = start; i < breaks.end(start + 1); i++) {
      if ("-/+\u2212\u2013".indexOf(whole.charAt(i)) >= 0) {
        return true;
      }
    }
    return false;
  }

  @Override
  public void begin(TextStyle style) {
    switch (style) {
      case EMPHASIS -> out.open("inline", "font-style", "italic");
      case STRONG -> out.open("inline", "font-weight", "bold");
      case CODE -> {
        code = PageFonts.CODE;
        out.open("inline", "font-family", PdfStyle.CODE_FAMILIES, "font-size", "0.92em");
      }
    }
  }

  @Override
  public void end(TextStyle style) {
    if (style == TextStyle.CODE) {
      code = 0;
    }
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
    place++;
    out.empty("block");
  }
}
