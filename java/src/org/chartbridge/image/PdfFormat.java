// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.IOException;
import java.io.OutputStream;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.apache.fop.pdf.PDFDictionary;
import org.apache.fop.pdf.PDFDocument;
import org.apache.fop.pdf.PDFFilterList;
import org.apache.xmlgraphics.java2d.GraphicContext;

/**
 * Writes one page of PDF, as large as the picture is at 96 pixels to the inch, with its fonts
 * embedded.
 */
final class PdfFormat {
  private static final double POINTS_PER_PIXEL = 72.0 / Raster.DPI;

  private PdfFormat() {}

  static void write(Picture picture, OutputStream out) throws IOException {
    int width = points(picture.width() * picture.scale());
    int height = points(picture.height() * picture.scale());
    PdfGraphics graphics = new PdfGraphics();
    graphics.setGraphicContext(new GraphicContext());
    graphics.setFontInfo(PdfFonts.create());
    graphics.setupDocument(out, width, height);
    // The library asks this map for null keys too, which Map.of() does not allow.
    Map<String, List<String>> filters = new HashMap<>();
    filters.put(PDFFilterList.DEFAULT_FILTER, List.of("flate"));
    graphics.getPDFDocument().setFilterMap(filters);
    graphics.getPDFDocument().setProducer("chartbridge");
    if (picture.words() != null) {
      describe(graphics.getPDFDocument(), picture.words());
    }
    graphics.begin();
    graphics.scale((double) width / picture.width(), (double) height / picture.height());
    picture.drawing().accept(graphics);
    graphics.finish();
  }

  private static void describe(PDFDocument document, PictureWords words) {
    document.getInfo().setTitle(words.title());
    if (!words.description().isBlank()) {
      document.getInfo().setSubject(words.description());
    }
    document.getRoot().setLanguage(Locale.forLanguageTag(words.language()));
    PDFDictionary viewer = new PDFDictionary();
    viewer.put("DisplayDocTitle", Boolean.TRUE);
    document.getRoot().put("ViewerPreferences", viewer);
  }

  private static int points(double pixels) {
    return (int) Math.max(1, Math.round(pixels * POINTS_PER_PIXEL));
  }
}
