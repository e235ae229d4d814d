// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.awt.Dimension;
import java.awt.Graphics2D;
import java.awt.geom.Rectangle2D;
import org.apache.fop.svg.PDFGraphics2D;
import org.apache.xmlgraphics.java2d.Graphics2DImagePainter;
import org.chartbridge.image.Picture;

/** Draws a picture into the room that the formatter has for it. */
record FigurePainter(Picture picture) implements Graphics2DImagePainter {
  private static final double MILLIPOINTS_PER_PIXEL = 750;

  @Override
  public void paint(Graphics2D page, Rectangle2D area) {
    Graphics2D graphics =
        page instanceof PDFGraphics2D pdf ? new FigureGraphics(pdf) : (Graphics2D) page.create();
    graphics.translate(area.getX(), area.getY());
    graphics.scale(area.getWidth() / picture.width(), area.getHeight() / picture.height());
    picture.drawing().accept(graphics);
  }

  @Override
  public Dimension getImageSize() {
    return new Dimension(millipoints(picture.width()), millipoints(picture.height()));
  }

  private static int millipoints(int pixels) {
    return (int) Math.round(pixels * MILLIPOINTS_PER_PIXEL);
  }
}
