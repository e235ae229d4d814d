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
    return Character.getType(character) == Character.FORMAT || isUnseen(character);
  }

  /** Selectors of variants and the like, which programs leave out where a font lacks them. */
  private static boolean isUnseen(int character) {
    return character >= 0xFE00 && character <= 0xFE0F
        || character >= 0xE0100 && character <= 0xE01EF
        || character >= 0x180B && character <= 0x180F
        || character == 0x034F || character == 0x17B4 || character == 0x17B5;
  }

  /** A character that leaves room free: a font needs no outline for it, nor to have it. */
  static boolean isBlank(int character) {
    return Character.isSpaceChar(character) || Character.isWhitespace(character)
        || isFiller(character);
  }

  /** Blanks that count as letters or signs. */
  private static boolean isFiller(int character) {
    return character == 0x115F || character == 0x1160 || character == 0x2800
        || character == 0x3164 || character == 0xFFA0;
  }

  /** Whether characters of its script come out right, given a font. */
  public static boolean canBeSet(int character) {
    return InstalledFonts.isSet(character);
  }

  /** A part of a text in one typeface. */
  public record Run(String text, Typeface typeface) {}

  /**
   * The text in runs of one typeface each, which is null for what no font has. Where no font has a
   * blank or a selector of variants, another blank or nothing stands for it.
   */
  public static List<Run> runs(String text, int style, Locale language) {
    List<Run> runs = new ArrayList<>();
    Typeface standard = standard(style);
    Typeface current = null;
    StringBuilder run = new StringBuilder();
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
      boolean isMissing = typeface == null && isBlank(character);
      if (isMissing) {
        typeface = current == null ? standard : current;
      }
      if (i > 0 && typeface != current) {
        add(run, current, runs);
      }
      if (isMissing) {
        run.append(substitute(character));
      } else if (!isUnseen(character) || typeface == null || typeface.has(character)) {
        run.appendCodePoint(character);
      }
      current = typeface;
    }
    add(run, current, runs);
    return runs;
  }

  private static void add(StringBuilder run, Typeface typeface, List<Run> runs) {
    if (run.length() > 0) {
      runs.add(new Run(run.toString(), typeface));
      run.setLength(0);
    }
  }

  /** Marks are set with the letters that they stand on, and blanks with what is before them. */
  private static boolean goesWith(int character, Typeface current) {
    int type = Character.getType(character);
    boolean depends = type == Character.NON_SPACING_MARK || type == Character.ENCLOSING_MARK
        || isBlank(character);
    return depends && current != null && current.has(character);
  }

  /** The formatter makes wide blanks of any font; for others a usual one does. */
  private static char substitute(int blank) {
    if (blank >= 0x2000 && blank <= 0x200A || blank == 0x3000) {
      return (char) blank;
    }
    return blank == 0x3164 ? '\u3000' : ' ';
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
