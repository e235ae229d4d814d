// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.Map;
import org.apache.xmlgraphics.image.loader.Image;
import org.apache.xmlgraphics.image.loader.ImageFlavor;
import org.apache.xmlgraphics.image.loader.ImageInfo;
import org.apache.xmlgraphics.image.loader.ImageSessionContext;
import org.apache.xmlgraphics.image.loader.impl.AbstractImageLoader;
import org.apache.xmlgraphics.image.loader.impl.ImageGraphics2D;
import org.apache.xmlgraphics.image.loader.spi.ImageLoader;
import org.apache.xmlgraphics.image.loader.spi.ImageLoaderFactory;

/** Hands the formatter the figures that {@link FigurePreloader} told it of. */
final class FigureLoaderFactory implements ImageLoaderFactory {
  @Override
  public String[] getSupportedMIMETypes() {
    return new String[] {FigurePreloader.MEDIA_TYPE};
  }

  @Override
  public ImageFlavor[] getSupportedFlavors(String mediaType) {
    return new ImageFlavor[] {ImageFlavor.GRAPHICS2D};
  }

  @Override
  public boolean isSupported(ImageInfo info) {
    return FigurePreloader.MEDIA_TYPE.equals(info.getMimeType());
  }

  @Override
  public ImageLoader newImageLoader(ImageFlavor target) {
    return new Loader();
  }

  @Override
  @Deprecated
  public int getUsagePenalty(String mediaType, ImageFlavor flavor) {
    return 0;
  }

  @Override
  public boolean isAvailable() {
    return true;
  }

  /** A figure is drawn when its page is. */
  private static final class Loader extends AbstractImageLoader {
    @Override
    public ImageFlavor getTargetFlavor() {
      return ImageFlavor.GRAPHICS2D;
    }

    @Override
    @SuppressWarnings("rawtypes")
    public Image loadImage(ImageInfo info, Map hints, ImageSessionContext session) {
      return new ImageGraphics2D(
          info, new FigurePainter(PdfFigures.find(info.getOriginalURI()).picture()));
    }
  }
}
