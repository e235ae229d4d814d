// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.awt.Font;
import java.nio.file.Path;
import java.util.List;
import org.chartbridge.image.FontFiles;

/**
 * A typeface that pages are set in.
 *
 * @param name by which formatters know it
 * @param faces in the order of {@link Font#PLAIN}, BOLD, ITALIC and both; null where it has none
 */
public record Typeface(String name, List<FontFace> faces) {
  public static final int BOLD = Font.BOLD;
  public static final int ITALIC = Font.ITALIC;

  /** One of the families that are usually installed, or null. */
  static Typeface installed(String name) {
    for (FontFiles.Family family : FontFiles.FAMILIES) {
      if (family.name().equals(name)) {
        FontFace[] faces = new FontFace[family.fileNames().size()];
        for (int i = 0; i < faces.length; i++) {
          Path file = FontFiles.find(family.fileNames().get(i));
          FontFace[] read = file == null ? new FontFace[0] : FontFace.read(file);
          faces[i] = read.length == 0 ? null : read[0];
        }
        return faces[0] == null ? null : new Typeface(name, java.util.Arrays.asList(faces));
      }
    }
    return null;
  }

  /** The face of a style, or the one that stands in for it. */
  public FontFace face(int style) {
    FontFace face = faces.get(style & (BOLD | ITALIC));
    if (face == null) {
      face = faces.get(style & BOLD);
    }
    return face == null ? faces.get(Font.PLAIN) : face;
  }

  boolean has(int character) {
    return faces.get(Font.PLAIN).has(character);
  }
}
