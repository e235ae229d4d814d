// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.awt.Dimension;
import javax.xml.transform.Source;
import org.apache.xmlgraphics.image.loader.ImageContext;
import org.apache.xmlgraphics.image.loader.ImageInfo;
import org.apache.xmlgraphics.image.loader.ImageSize;
import org.apache.xmlgraphics.image.loader.impl.AbstractImagePreloader;
import org.chartbridge.document.figure.Illustration;

/** Tells the formatter how large a drawn figure is. */
final class FigurePreloader extends AbstractImagePreloader {
  static final String MEDIA_TYPE = "application/x-chartbridge-figure";

  private static final int FIRST = 1;
  private static final double PIXELS_PER_INCH = 96;

  @Override
  public int getPriority() {
    return FIRST;
  }

  @Override
  public ImageInfo preloadImage(String uri, Source source, ImageContext context) {
    Illustration illustration = PdfFigures.find(uri);
    if (illustration == null || illustration.picture() == null) {
      return null;
    }
    Dimension length = new FigurePainter(illustration.picture()).getImageSize();
    ImageSize size = new ImageSize();
    size.setResolution(PIXELS_PER_INCH);
    size.setSizeInMillipoints(length.width, length.height);
    size.calcPixelsFromSize();
    ImageInfo info = new ImageInfo(uri, MEDIA_TYPE);
    info.setSize(size);
    return info;
  }
}
