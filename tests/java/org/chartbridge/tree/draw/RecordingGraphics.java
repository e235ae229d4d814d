// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.FontMetrics;
import java.awt.Graphics;
import java.awt.GraphicsConfiguration;
import java.awt.Image;
import java.awt.Shape;
import java.awt.geom.AffineTransform;
import java.awt.geom.Rectangle2D;
import java.awt.image.ImageObserver;
import java.awt.image.RenderedImage;
import java.awt.image.renderable.RenderableImage;
import java.text.AttributedCharacterIterator;
import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import org.apache.xmlgraphics.java2d.AbstractGraphics2D;
import org.apache.xmlgraphics.java2d.GraphicContext;

/**
 * Draws nothing, but remembers where each text stands, measured by the font that is set, and how it
 * looks; and the colours of lines.
 */
final class RecordingGraphics extends AbstractGraphics2D {
  /** A drawn text, the area of its letters, and their look. */
  record Text(String text, Rectangle2D area, Font font, Color color) {}

  final List<Text> texts = new ArrayList<>();
  final Set<Color> lineColors = new HashSet<>();

  RecordingGraphics() {
    super(false);
    gc = new GraphicContext();
  }

  @Override
  public void drawString(String text, float x, float y) {
    Rectangle2D ink = getFont().createGlyphVector(TreeStyle.FONT_CONTEXT, text).getVisualBounds();
    Rectangle2D placed = new Rectangle2D.Double(
        x + ink.getX(), y + ink.getY(), ink.getWidth(), ink.getHeight());
    Rectangle2D area = getTransform().createTransformedShape(placed).getBounds2D();
    texts.add(new Text(text, area, getFont(), getColor()));
  }

  @Override
  public void drawString(AttributedCharacterIterator text, float x, float y) {
    throw new UnsupportedOperationException();
  }

  @Override
  public void draw(Shape shape) {
    lineColors.add(getColor());
  }

  @Override
  public void fill(Shape shape) {}

  @Override
  public void drawRenderedImage(RenderedImage image, AffineTransform transform) {
    throw new UnsupportedOperationException();
  }

  @Override
  public void drawRenderableImage(RenderableImage image, AffineTransform transform) {
    throw new UnsupportedOperationException();
  }

  @Override
  public boolean drawImage(Image image, int x, int y, ImageObserver observer) {
    throw new UnsupportedOperationException();
  }

  @Override
  public boolean drawImage(
      Image image, int x, int y, int width, int height, ImageObserver observer) {
    throw new UnsupportedOperationException();
  }

  @Override
  public GraphicsConfiguration getDeviceConfiguration() {
    throw new UnsupportedOperationException();
  }

  @Override
  public void copyArea(int x, int y, int width, int height, int dx, int dy) {
    throw new UnsupportedOperationException();
  }

  @Override
  public Graphics create() {
    throw new UnsupportedOperationException();
  }

  @Override
  public void dispose() {}

  @Override
  public FontMetrics getFontMetrics(Font font) {
    throw new UnsupportedOperationException();
  }

  @Override
  public void setXORMode(Color color) {
    throw new UnsupportedOperationException();
  }
}
