// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.awt.Graphics;
import java.awt.font.TextLayout;
import java.awt.geom.AffineTransform;
import java.text.AttributedCharacterIterator;
import org.apache.fop.svg.PDFGraphics2D;
import org.chartbridge.image.PdfFonts;

/**
 * Draws a figure onto a page. Text is real text wherever its font can be embedded and has all of
 * its characters; any other text is drawn as outlines.
 */
final class FigureGraphics extends PDFGraphics2D {
  FigureGraphics(PDFGraphics2D page) {
    super(page);
  }

  @Override
  public Graphics create() {
    preparePainting();
    return new FigureGraphics(this);
  }

  @Override
  public void drawString(String text, float x, float y) {
    if (text.isEmpty()) {
      return;
    }
    if (PdfFonts.find(fontInfo, getFont(), text) != null) {
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
