// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.image.BufferedImage;
import java.io.IOException;
import java.io.OutputStream;
import javax.imageio.ImageTypeSpecifier;
import javax.imageio.ImageWriteParam;
import javax.imageio.ImageWriter;
import javax.imageio.metadata.IIOMetadata;
import org.w3c.dom.Element;
import org.w3c.dom.Node;
import org.w3c.dom.NodeList;

/**
 * Writes JPEG for charts: high quality and full colour resolution, since thin coloured lines and
 * type show every saving.
 */
final class JpegFormat {
  private static final float QUALITY = 0.92f;
  private static final String DOTS_PER_INCH = "1";
  private static final int MAX_DENSITY = 65535;

  private JpegFormat() {}

  static void write(BufferedImage image, double scale, OutputStream out) throws IOException {
    ImageWriter writer = ImageIoFormat.writer("jpeg");
    ImageWriteParam parameters = writer.getDefaultWriteParam();
    parameters.setCompressionMode(ImageWriteParam.MODE_EXPLICIT);
    parameters.setCompressionQuality(QUALITY);
    IIOMetadata metadata =
        writer.getDefaultImageMetadata(new ImageTypeSpecifier(image), parameters);
    String format = metadata.getNativeMetadataFormatName();
    Node root = metadata.getAsTree(format);
    setResolution((Element) root, scale);
    keepColorResolution((Element) root);
    metadata.setFromTree(format, root);
    ImageIoFormat.write(writer, parameters, metadata, image, out);
  }

  private static void setResolution(Element root, double scale) {
    String density =
        Long.toString(Math.max(1, Math.min(MAX_DENSITY, Math.round(Raster.DPI * scale))));
    Element jfif = (Element) root.getElementsByTagName("app0JFIF").item(0);
    jfif.setAttribute("resUnits", DOTS_PER_INCH);
    jfif.setAttribute("Xdensity", density);
    jfif.setAttribute("Ydensity", density);
  }

  private static void keepColorResolution(Element root) {
    NodeList components = root.getElementsByTagName("componentSpec");
    for (int i = 0; i < components.getLength(); i++) {
      Element component = (Element) components.item(i);
      component.setAttribute("HsamplingFactor", "1");
      component.setAttribute("VsamplingFactor", "1");
    }
  }
}
