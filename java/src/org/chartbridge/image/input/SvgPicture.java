// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.awt.Dimension;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.geom.Dimension2D;
import java.awt.image.BufferedImage;
import java.io.UncheckedIOException;
import java.lang.ref.WeakReference;
import org.apache.batik.ext.awt.RenderingHintsKeyExt;
import org.apache.batik.bridge.BridgeContext;
import org.apache.batik.bridge.BridgeException;
import org.apache.batik.bridge.DocumentLoader;
import org.apache.batik.bridge.GVTBuilder;
import org.apache.batik.gvt.GraphicsNode;
import org.apache.batik.parser.ParseException;
import org.chartbridge.chart.ChartException;
import org.chartbridge.image.LibraryLogs;
import org.chartbridge.image.Picture;
import org.chartbridge.xml.XmlElement;
import org.w3c.css.sac.CSSException;
import org.w3c.dom.DOMException;
import org.w3c.dom.Document;
import org.w3c.dom.Element;

/**
 * An SVG image, ready to be drawn. Nothing is loaded for it and no script of it runs.
 */
public final class SvgPicture {
  /** The size of an image that names none, as browsers have it. */
  private static final Dimension UNNAMED = new Dimension(300, 150);

  static {
    LibraryLogs.silence();
  }

  private SvgPicture() {}

  /**
   * Reads an image.
   *
   * @return a picture of its own size at 96 pixels to the inch
   * @throws ChartException when it is damaged, refers to something outside or is too large
   */
  public static Picture read(byte[] bytes) {
    SvgDocument source = SvgDocument.read(bytes);
    Document document = source.document();
    try {
      SvgRules rules = new SvgRules(viewport(document.getDocumentElement()));
      Context context = new Context(rules);
      context.prepare(document);
      checkExpansion(source);
      SvgUses.removeEmpty(document, rules);
      GraphicsNode drawing = new GVTBuilder().build(context, document);
      SvgDashes.check(drawing);
      return picture(context.getDocumentSize(), drawing);
    } catch (BridgeException e) {
      XmlElement place = e.getElement() == null ? null : source.place(e.getElement());
      String where = place == null ? "" : place.position() + ": ";
      throw new ChartException("The SVG image cannot be drawn: " + where + reason(e) + ".", e);
    } catch (ChartException e) {
      throw e;
    } catch (RuntimeException e) {
      throw undrawable(e);
    }
  }

  private static void checkExpansion(SvgDocument source) {
    try {
      SvgExpansion.check(source);
    } catch (ChartException e) {
      throw new ChartException("The SVG image: " + e.getMessage(), e);
    }
  }

  /** The library says so in many ways that it does not know what to do with a document. */
  private static ChartException undrawable(RuntimeException e) {
    boolean worded = e instanceof DOMException || e instanceof ParseException
        || e instanceof CSSException || e.getClass() == IllegalArgumentException.class;
    String reason = worded && e.getMessage() != null
        ? cleaned(e.getMessage()) : "the SVG library can make nothing of a part of it";
    return new ChartException("The SVG image cannot be drawn: " + reason + ".", e);
  }

  private static void paint(GraphicsNode drawing, Graphics2D graphics) {
    try {
      drawing.paint(graphics);
    } catch (ChartException | UncheckedIOException e) {
      throw e;
    } catch (RuntimeException e) {
      throw undrawable(e);
    }
  }

  /** Knows the styles of a document before anything of it is built. */
  private static final class Context extends BridgeContext {
    Context(SvgRules rules) {
      super(rules, new DocumentLoader(rules));
      setDynamicState(STATIC);
    }

    void prepare(Document document) {
      setDocument(document);
      initializeDocument(document);
    }
  }

  /** Its pixels, clear where it draws nothing. */
  static BufferedImage pixels(Picture picture) {
    BufferedImage image = new BufferedImage(
        picture.pixelWidth(), picture.pixelHeight(), BufferedImage.TYPE_INT_ARGB);
    Graphics2D graphics = image.createGraphics();
    try {
      graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
      graphics.setRenderingHint(
          RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
      graphics.setRenderingHint(
          RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
      graphics.setRenderingHint(
          RenderingHints.KEY_INTERPOLATION, RenderingHints.VALUE_INTERPOLATION_BILINEAR);
      // Without it the library complains on standard error, and blends more slowly.
      graphics.setRenderingHint(
          RenderingHintsKeyExt.KEY_BUFFERED_IMAGE, new WeakReference<>(image));
      picture.drawing().accept(graphics);
    } finally {
      graphics.dispose();
    }
    return image;
  }

  private static Dimension viewport(Element root) {
    ViewBox box = ViewBox.parse(root.getAttributeNS(null, "viewBox"));
    if (box == null || box.width() < 0 || box.height() < 0) {
      return UNNAMED;
    }
    return new Dimension((int) Math.ceil(box.width()), (int) Math.ceil(box.height()));
  }

  private static Picture picture(Dimension2D size, GraphicsNode drawing) {
    double width = Math.ceil(size.getWidth());
    double height = Math.ceil(size.getHeight());
    if (!(width >= 1 && height >= 1)) {
      throw new ChartException("The SVG image has no width or no height, so it shows nothing.");
    }
    if (width * height > PixelReader.MAX_PIXELS) {
      throw new ChartException("The SVG image has " + (long) width + " x " + (long) height
          + " pixels; at most 100 million are drawn.");
    }
    return new Picture((int) width, (int) height, 1,
        graphics -> paint(drawing, graphics));
  }

  /** The library's messages begin with the address of the document, which has none here. */
  private static String reason(BridgeException e) {
    return cleaned(String.valueOf(e.getMessage()));
  }

  private static String cleaned(String message) {
    return message.replace(SvgDocument.ADDRESS, "").strip().replaceAll("\\s+", " ").replaceAll("^\\S*:-?[0-9]+ ", "")
        .replaceAll("\\.$", "");
  }
}
