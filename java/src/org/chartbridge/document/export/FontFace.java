// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.awt.Font;
import java.awt.FontFormatException;
import java.awt.font.FontRenderContext;
import java.io.IOException;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Locale;

/** One face of a typeface: a font in a file, with its measures. */
public final class FontFace {
  private static final FontRenderContext METRICS = new FontRenderContext(null, true, true);
  private static final int KNOWN = 0x250;
  /** Advances are measured at this size, so that rounding does not matter. */
  private static final int MEASURE = 1000;

  private final Path file;
  private final int index;
  private final Font font;
  private final float[] advances = new float[KNOWN];

  private FontFace(Path file, int index, Font font) {
    this.file = file;
    this.index = index;
    this.font = font.deriveFont((float) MEASURE);
    Arrays.fill(advances, -1);
  }

  /** The faces in a file, none when it cannot be read. */
  static FontFace[] read(Path file) {
    try {
      Font[] fonts = Font.createFonts(file.toFile());
      FontFace[] faces = new FontFace[fonts.length];
      for (int i = 0; i < fonts.length; i++) {
        faces[i] = new FontFace(file, i, fonts[i]);
      }
      return faces;
    } catch (FontFormatException | IOException e) {
      // A file that is no font has none for us.
      return new FontFace[0];
    }
  }

  public Path file() {
    return file;
  }

  /** Its place in the file, from 0; a file of one font has only this one. */
  public int index() {
    return index;
  }

  String name() {
    return font.getFontName(Locale.ENGLISH);
  }

  boolean has(int character) {
    return font.canDisplay(character);
  }

  /** Whether the character has an outline: fonts of coloured pictures have none to embed. */
  boolean draws(int character) {
    String text = Character.toString(character);
    return has(character)
        && !font.createGlyphVector(METRICS, text).getOutline().getBounds2D().isEmpty();
  }

  /** The width of a text in this face alone, for a size of 1. */
  double width(String text) {
    double width = 0;
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      if (c >= KNOWN) {
        // Marks and joined letters are measured together.
        return font.getStringBounds(text, METRICS).getWidth() / MEASURE;
      }
      if (advances[c] < 0) {
        advances[c] = (float) font.getStringBounds(Character.toString(c), METRICS).getWidth();
      }
      width += advances[c];
    }
    return width / MEASURE;
  }
}
