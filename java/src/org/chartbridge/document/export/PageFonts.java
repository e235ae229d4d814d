// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/**
 * The typefaces that pages are set in: Liberation, DejaVu for what that lacks, and for what both
 * lack any installed font that has it.
 */
public final class PageFonts {
  /** Added to the style of text of a fixed width. */
  public static final int CODE = 4;

  private static List<Typeface> text;
  private static List<Typeface> code;

  private PageFonts() {}

  private static synchronized List<Typeface> usual(boolean fixed) {
    if (text == null) {
      text = read("Liberation Sans", "DejaVu Sans");
      code = new ArrayList<>(read("Liberation Mono", "DejaVu Sans Mono"));
      code.addAll(text);
    }
    return fixed ? code : text;
  }

  private static List<Typeface> read(String... names) {
    List<Typeface> found = new ArrayList<>();
    for (String name : names) {
      Typeface typeface = Typeface.installed(name);
      if (typeface != null) {
        found.add(typeface);
      }
    }
    return found;
  }

  /** The typeface that all other text is set in, or null when there is none at all. */
  public static Typeface standard(int style) {
    List<Typeface> usual = usual((style & CODE) != 0);
    return usual.isEmpty() ? null : usual.get(0);
  }

  /**
   * The typeface for a character, or null when no installed font has it.
   *
   * @param style of {@link Typeface#BOLD}, {@link Typeface#ITALIC} and {@link #CODE}
   * @param language whose forms of Chinese characters are preferred
   */
  public static Typeface of(int character, int style, Locale language) {
    for (Typeface typeface : usual((style & CODE) != 0)) {
      if (typeface.has(character)) {
        return typeface;
      }
    }
    return InstalledFonts.find(character, language);
  }

  /** A character that says how others are set, and that no font needs to have. */
  public static boolean isControl(int character) {
    return Character.getType(character) == Character.FORMAT
        || character >= 0xFE00 && character <= 0xFE0F;
  }

  /** Whether characters of its script come out right, given a font. */
  public static boolean canBeSet(int character) {
    return InstalledFonts.isSet(character);
  }

  /** A part of a text in one typeface. */
  public record Run(String text, Typeface typeface) {}

  /** The text in runs of one typeface each, which is null for what no font has. */
  public static List<Run> runs(String text, int style, Locale language) {
    List<Run> runs = new ArrayList<>();
    Typeface standard = standard(style);
    Typeface current = null;
    int start = 0;
    for (int i = 0; i < text.length(); i += Character.charCount(text.codePointAt(i))) {
      int character = text.codePointAt(i);
      Typeface typeface;
      if (character >= ' ' && character <= '~') {
        typeface = standard;
      } else if (isControl(character)) {
        typeface = i == 0 ? standard : current;
      } else {
        typeface = goesWith(character, current) ? current : of(character, style, language);
      }
      if (i > 0 && typeface != current) {
        runs.add(new Run(text.substring(start, i), current));
        start = i;
      }
      current = typeface;
    }
    if (start < text.length()) {
      runs.add(new Run(text.substring(start), current));
    }
    return runs;
  }

  /** Marks are set with the letters that they stand on. */
  private static boolean goesWith(int character, Typeface current) {
    int type = Character.getType(character);
    return (type == Character.NON_SPACING_MARK || type == Character.ENCLOSING_MARK)
        && current != null && current.has(character);
  }

  /** The width of a text of one style, for a size of 1. */
  static double width(String text, int style, Locale language) {
    double width = 0;
    for (Run run : runs(text, style, language)) {
      if (run.typeface() != null) {
        width += run.typeface().face(style).width(run.text());
      }
    }
    return width;
  }
}
