// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Graphics;
import java.awt.font.TextLayout;
import java.awt.geom.AffineTransform;
import java.text.AttributedCharacterIterator;
import org.apache.fop.svg.PDFDocumentGraphics2D;

/**
 * Draws onto a PDF page. Text is real text wherever its font can be embedded and has all of its
 * characters; any other text is drawn as outlines, so that the page always shows what a picture
 * shows.
 */
final class PdfGraphics extends PDFDocumentGraphics2D {
  PdfGraphics() {
    super(false);
  }

  private PdfGraphics(PdfGraphics parent) {
    super(parent);
  }

  /**
   * Starts the page. The library would do so at the first stroke, and with it change the transform;
   * a drawing that puts back a transform from before would then come out at another size.
   */
  void begin() {
    preparePainting();
  }

  @Override
  public Graphics create() {
    return new PdfGraphics(this);
  }

  @Override
  public void drawString(String text, float x, float y) {
    if (text.isEmpty()) {
      return;
    }
    if (PdfFonts.find(getFontInfo(), getFont(), text) != null) {
      super.drawString(text, x, y);
      return;
    }
    drawOutlines(new TextLayout(text, getFont(), getFontRenderContext()), x, y);
  }

  @Override
  public void drawString(AttributedCharacterIterator text, float x, float y) {
    drawOutlines(new TextLayout(text, getFontRenderContext()), x, y);
  }

  private void drawOutlines(TextLayout layout, float x, float y) {
    fill(layout.getOutline(AffineTransform.getTranslateInstance(x, y)));
  }
}
