// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.File;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import org.apache.fop.apps.io.InternalResourceResolver;
import org.apache.fop.apps.io.ResourceResolverFactory;
import org.apache.fop.fonts.CustomFontCollection;
import org.apache.fop.fonts.EmbedFontInfo;
import org.apache.fop.fonts.Font;
import org.apache.fop.fonts.FontInfo;
import org.apache.fop.fonts.FontTriplet;
import org.apache.fop.fonts.FontUris;

/**
 * The fonts that a PDF document can embed. The files are opened when the first text is set in
 * them.
 */
public final class PdfFonts {
  static {
    LibraryLogs.silence();
  }

  private PdfFonts() {}

  /** A new set for one document; it remembers which fonts and characters that document uses. */
  static FontInfo create() {
    List<EmbedFontInfo> fonts = new ArrayList<>();
    for (FontFiles.Family family : FontFiles.FAMILIES) {
      for (int face = 0; face < family.fileNames().size(); face++) {
        Path file = FontFiles.find(family.fileNames().get(face));
        if (file != null) {
          fonts.add(font(family.name(), face, file));
        }
      }
    }
    FontInfo info = new FontInfo();
    InternalResourceResolver resolver =
        ResourceResolverFactory.createDefaultInternalResourceResolver(new File("/").toURI());
    new CustomFontCollection(resolver, fonts, false).setup(0, info);
    return info;
  }

  private static EmbedFontInfo font(String family, int face, Path file) {
    FontUris uris = new FontUris(file.toUri(), null);
    // No kerning: positions were computed from Java's metrics, which have none either.
    return new EmbedFontInfo(uris, false, false, List.of(triplet(family, face)), null);
  }

  private static FontTriplet triplet(String family, int face) {
    String style = (face & java.awt.Font.ITALIC) != 0 ? Font.STYLE_ITALIC : Font.STYLE_NORMAL;
    int weight = (face & java.awt.Font.BOLD) != 0 ? Font.WEIGHT_BOLD : Font.WEIGHT_NORMAL;
    return new FontTriplet(family, style, weight);
  }

  /** The embedded font that can show all of the text as that Java font does, or null. */
  public static Font find(FontInfo info, java.awt.Font font, String text) {
    FontTriplet triplet = triplet(font.getFamily(), font.getStyle());
    if (font.isTransformed() || !info.getFontTriplets().containsKey(triplet)) {
      return null;
    }
    Font found = info.getFontInstance(triplet, Math.round(font.getSize2D() * 1000));
    for (int i = 0; i < text.length(); i++) {
      if (!found.hasChar(text.charAt(i))) {
        return null;
      }
    }
    return found;
  }
}
