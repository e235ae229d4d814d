// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.AffineTransform;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.util.HashMap;
import java.util.Map;

/**
 * Draws many equal markers on a raster picture by stamping images of them: filling thousands of
 * anti-aliased ovals takes ten times as long. Each marker has images for four by four places within
 * a pixel, so that stamped ones stand as exactly as drawn ones.
 */
final class Stamps {
  private static final int PHASES = 4;
  private static final double LARGEST = 64;

  private final Graphics2D g;
  private final AffineTransform transform;
  private final double scale;
  private final Map<Key, BufferedImage[]> stamps = new HashMap<>();

  private record Key(Color fill, Color edge, int shape, double diameter) {}

  private Stamps(Graphics2D g) {
    this.g = g;
    transform = g.getTransform();
    scale = transform.getScaleX();
  }

  /** Stamps for a graphics, or null when it keeps shapes as shapes or turns them. */
  static Stamps on(Graphics2D g) {
    AffineTransform transform = g.getTransform();
    boolean straight = transform.getShearX() == 0 && transform.getShearY() == 0
        && transform.getScaleX() > 0 && transform.getScaleX() == transform.getScaleY();
    boolean raster = g.getClass().getName().startsWith("sun.java2d.");
    return raster && straight ? new Stamps(g) : null;
  }

  /** From here on the graphics is in device pixels, until {@link #end}. */
  void begin() {
    g.setTransform(new AffineTransform());
  }

  void end() {
    g.setTransform(transform);
  }

  static boolean fits(double diameter, double scale) {
    return diameter * scale <= LARGEST;
  }

  double scale() {
    return scale;
  }

  void draw(int shape, double diameter, Color fill, Color edge, double x, double y) {
    BufferedImage[] images = stamps.computeIfAbsent(
        new Key(fill, edge, shape, diameter), key -> new BufferedImage[PHASES * PHASES]);
    double deviceX = x * scale + transform.getTranslateX();
    double deviceY = y * scale + transform.getTranslateY();
    long quarterX = Math.round(deviceX * PHASES);
    long quarterY = Math.round(deviceY * PHASES);
    int phaseX = (int) Math.floorMod(quarterX, (long) PHASES);
    int phaseY = (int) Math.floorMod(quarterY, (long) PHASES);
    int phase = phaseY * PHASES + phaseX;
    if (images[phase] == null) {
      images[phase] = render(shape, diameter, fill, edge, phaseX, phaseY);
    }
    BufferedImage image = images[phase];
    int half = image.getWidth() / 2;
    g.drawImage(image, (int) Math.floorDiv(quarterX, (long) PHASES) - half,
        (int) Math.floorDiv(quarterY, (long) PHASES) - half, null);
  }

  private BufferedImage render(
      int shape, double diameter, Color fill, Color edge, int phaseX, int phaseY) {
    Shape marker = Inks.marker(shape, diameter);
    Rectangle2D bounds = marker.getBounds2D();
    double reach = Math.max(
        bounds.getMaxX(), Math.max(-bounds.getX(), Math.max(bounds.getMaxY(), -bounds.getY())));
    int half = (int) Math.ceil(reach * scale + 2);
    BufferedImage image =
        new BufferedImage(2 * half, 2 * half, BufferedImage.TYPE_INT_ARGB_PRE);
    Graphics2D stamp = image.createGraphics();
    stamp.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    stamp.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
    stamp.translate(half + (double) phaseX / PHASES, half + (double) phaseY / PHASES);
    stamp.scale(scale, scale);
    PointLayer.drawMarker(stamp, marker, fill, edge);
    stamp.dispose();
    return image;
  }
}
