// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import java.util.Locale;
import java.util.regex.Pattern;
import org.jfree.svg.SVGGraphics2D;
import org.jfree.svg.ViewBox;

/**
 * Writes SVG with text as text. The view box has the picture's own units, so the same picture
 * scales to any size.
 */
final class SvgFormat {
  /** Hundredths of a pixel are finer than any eye, and keep the file small. */
  private static final int DECIMALS = 2;

  private static final Pattern CONTROLS =
      Pattern.compile("[\\x00-\\x08\\x0B\\x0C\\x0E-\\x1F\\uFFFE\\uFFFF]|\\p{Cs}");

  private SvgFormat() {}

  static void write(Picture picture, OutputStream out) throws IOException {
    SVGGraphics2D graphics = new SVGGraphics2D(picture.pixelWidth(), picture.pixelHeight());
    graphics.setGeometryDP(DECIMALS);
    graphics.setTransformDP(DECIMALS);
    // The library's default is a clock reading; equal charts should give equal files.
    graphics.setDefsKeyPrefix("c");
    graphics.setFontMapper(SvgFormat::fontFamily);
    picture.drawing().accept(graphics);
    ViewBox viewBox = new ViewBox(0, 0, picture.width(), picture.height());
    String svg = graphics.getSVGElement(null, true, viewBox, null, null);
    svg = picture.words() == null ? svg : withWords(svg, picture.words());
    out.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n".getBytes(StandardCharsets.UTF_8));
    out.write(withoutControls(svg).getBytes(StandardCharsets.UTF_8));
    out.write('\n');
  }

  /** The family and, for viewers that do not have it, others whose letters are about as wide. */
  private static String fontFamily(String family) {
    String name = family.toLowerCase(Locale.ROOT);
    String quoted = "'" + family.replaceAll("[^\\p{L}\\p{N} _.-]", " ") + "'";
    if (name.startsWith("mono") || name.contains(" mono") || name.contains("courier")) {
      return quoted + ", 'Courier New', Courier, monospace";
    }
    if (name.equals("serif") || name.contains(" serif") || name.contains("times")) {
      return quoted + ", 'Times New Roman', Times, serif";
    }
    return quoted + ", Arial, Helvetica, sans-serif";
  }

  /**
   * Programs that read pictures aloud take a graphic with a role as one image, and its title and
   * description as what it shows. They have no ids, which would clash where a page holds several.
   */
  private static String withWords(String svg, PictureWords words) {
    int end = svg.indexOf('>');
    boolean described = !words.description().isBlank();
    return svg.substring(0, end) + " role=\"img\" xml:lang=\"" + escaped(words.language()) + "\">"
        + "<title>" + escaped(words.title()) + "</title>"
        + (described ? "<desc>" + escaped(words.description()) + "</desc>" : "")
        + svg.substring(end + 1);
  }

  private static String escaped(String text) {
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
        .replace("\"", "&quot;");
  }

  /** XML 1.0 has no way to write most control characters, not even escaped. */
  private static String withoutControls(String svg) {
    return CONTROLS.matcher(svg).replaceAll("\uFFFD");
  }
}
