// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.io.IOException;
import java.util.LinkedHashMap;
import java.util.Map;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.ImageData;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;
import org.chartbridge.image.input.SvgPicture;

/** The pictures of a document, each a file of its own. */
final class OdtPictures {
  private static final double SCALE = 2;
  private static final double MAX_PIXELS = 16e6;

  private record PictureFile(ImageData.Format format, byte[] bytes) {}

  private final OdtPackage files;
  private final Map<String, PictureFile> pictures = new LinkedHashMap<>();
  private int count;

  OdtPictures(OdtPackage files) {
    this.files = files;
  }

  /** Refers to a picture: to an SVG first, where there is one, and then to a PNG of the same. */
  void refer(Illustration illustration, Markup out) {
    count++;
    ImageData image = illustration.image();
    if (image != null && image.format() != ImageData.Format.SVG) {
      refer(image.format(), image.bytes(), out);
      return;
    }
    byte[] svg = image == null
        ? PictureEncoder.encode(illustration.picture(), ImageType.SVG) : image.bytes();
    Picture picture = image == null ? illustration.picture() : SvgPicture.read(svg);
    refer(ImageData.Format.SVG, svg, out);
    refer(ImageData.Format.PNG, png(picture), out);
  }

  private void refer(ImageData.Format format, byte[] bytes, Markup out) {
    String path = "Pictures/figure-" + count + format.ending();
    pictures.put(path, new PictureFile(format, bytes));
    out.empty("draw:image", "xlink:href", path, "xlink:type", "simple", "xlink:show", "embed",
        "xlink:actuate", "onLoad", "draw:mime-type", format.mediaType());
  }

  private static byte[] png(Picture picture) {
    double pixels = (double) picture.width() * picture.height();
    double scale = Math.min(SCALE, Math.sqrt(MAX_PIXELS / pixels));
    return PictureEncoder.encode(
        new Picture(picture.width(), picture.height(), scale, picture.drawing()), ImageType.PNG);
  }

  void write() throws IOException {
    for (Map.Entry<String, PictureFile> picture : pictures.entrySet()) {
      PictureFile file = picture.getValue();
      files.add(picture.getKey(), file.format().mediaType(), file.bytes());
    }
  }
}
