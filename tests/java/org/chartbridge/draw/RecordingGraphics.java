// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Composite;
import java.awt.Font;
import java.awt.FontMetrics;
import java.awt.Graphics;
import java.awt.Graphics2D;
import java.awt.GraphicsConfiguration;
import java.awt.Image;
import java.awt.Paint;
import java.awt.Rectangle;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.Stroke;
import java.awt.font.FontRenderContext;
import java.awt.font.GlyphVector;
import java.awt.geom.AffineTransform;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.awt.image.BufferedImageOp;
import java.awt.image.ImageObserver;
import java.awt.image.RenderedImage;
import java.awt.image.renderable.RenderableImage;
import java.text.AttributedCharacterIterator;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;

/**
 * A vector graphics that remembers the texts drawn on it, with their outlines in pixels of the
 * picture. What it does not support must not be used on vector graphics: images would make SVG and
 * PDF files large and blurred.
 */
final class RecordingGraphics extends Graphics2D {
  /** A text with its colour, its turned outline, and the clip it was drawn under. */
  record TextRun(String text, Font font, Color color, Shape outline, Shape clip) {
    Rectangle2D bounds() {
      return outline.getBounds2D();
    }
  }

  /** A filled shape in pixels of the picture. */
  record Fill(Shape shape, Color color) {}

  final List<TextRun> texts;
  final List<Fill> fills;
  private final Graphics2D to;

  RecordingGraphics(int width, int height) {
    this(new BufferedImage(width, height, BufferedImage.TYPE_INT_RGB).createGraphics(),
        new ArrayList<>(), new ArrayList<>());
  }

  private RecordingGraphics(Graphics2D to, List<TextRun> texts, List<Fill> fills) {
    this.to = to;
    this.texts = texts;
    this.fills = fills;
  }

  @Override
  public Graphics create() {
    return new RecordingGraphics((Graphics2D) to.create(), texts, fills);
  }

  @Override
  public void drawString(String text, float x, float y) {
    Rectangle2D ink =
        to.getFont().createGlyphVector(to.getFontRenderContext(), text).getVisualBounds();
    Rectangle2D box = new Rectangle2D.Double(
        x + ink.getX(), y + ink.getY(), ink.getWidth(), ink.getHeight());
    Shape clip =
        to.getClip() == null ? null : to.getTransform().createTransformedShape(to.getClip());
    texts.add(new TextRun(
        text, to.getFont(), to.getColor(), to.getTransform().createTransformedShape(box), clip));
    to.drawString(text, x, y);
  }

  @Override
  public void drawString(String text, int x, int y) {
    drawString(text, (float) x, (float) y);
  }

  @Override
  public void drawString(AttributedCharacterIterator text, int x, int y) {
    throw new UnsupportedOperationException("attributed text");
  }

  @Override
  public void drawString(AttributedCharacterIterator text, float x, float y) {
    throw new UnsupportedOperationException("attributed text");
  }

  @Override
  public void draw(Shape a0) {
    to.draw(a0);
  }

  @Override
  public boolean drawImage(Image a0, AffineTransform a1, ImageObserver a2) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public void drawImage(BufferedImage a0, BufferedImageOp a1, int a2, int a3) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public void drawRenderedImage(RenderedImage a0, AffineTransform a1) {
    throw new UnsupportedOperationException("drawRenderedImage");
  }

  @Override
  public void drawRenderableImage(RenderableImage a0, AffineTransform a1) {
    throw new UnsupportedOperationException("drawRenderableImage");
  }

  @Override
  public void drawGlyphVector(GlyphVector a0, float a1, float a2) {
    throw new UnsupportedOperationException("drawGlyphVector");
  }

  @Override
  public void fill(Shape a0) {
    fills.add(new Fill(to.getTransform().createTransformedShape(a0), to.getColor()));
    to.fill(a0);
  }

  @Override
  public boolean hit(Rectangle a0, Shape a1, boolean a2) {
    throw new UnsupportedOperationException("hit");
  }

  @Override
  public GraphicsConfiguration getDeviceConfiguration() {
    return to.getDeviceConfiguration();
  }

  @Override
  public void setComposite(Composite a0) {
    to.setComposite(a0);
  }

  @Override
  public void setPaint(Paint a0) {
    to.setPaint(a0);
  }

  @Override
  public void setStroke(Stroke a0) {
    to.setStroke(a0);
  }

  @Override
  public void setRenderingHint(RenderingHints.Key a0, Object a1) {
    to.setRenderingHint(a0, a1);
  }

  @Override
  public Object getRenderingHint(RenderingHints.Key a0) {
    return to.getRenderingHint(a0);
  }

  @Override
  public void setRenderingHints(Map<?, ?> a0) {
    to.setRenderingHints(a0);
  }

  @Override
  public void addRenderingHints(Map<?, ?> a0) {
    to.addRenderingHints(a0);
  }

  @Override
  public RenderingHints getRenderingHints() {
    return to.getRenderingHints();
  }

  @Override
  public void translate(int a0, int a1) {
    to.translate(a0, a1);
  }

  @Override
  public void translate(double a0, double a1) {
    to.translate(a0, a1);
  }

  @Override
  public void rotate(double a0) {
    to.rotate(a0);
  }

  @Override
  public void rotate(double a0, double a1, double a2) {
    to.rotate(a0, a1, a2);
  }

  @Override
  public void scale(double a0, double a1) {
    to.scale(a0, a1);
  }

  @Override
  public void shear(double a0, double a1) {
    throw new UnsupportedOperationException("shear");
  }

  @Override
  public void transform(AffineTransform a0) {
    to.transform(a0);
  }

  @Override
  public void setTransform(AffineTransform a0) {
    to.setTransform(a0);
  }

  @Override
  public AffineTransform getTransform() {
    return to.getTransform();
  }

  @Override
  public Paint getPaint() {
    return to.getPaint();
  }

  @Override
  public Composite getComposite() {
    return to.getComposite();
  }

  @Override
  public void setBackground(Color a0) {
    to.setBackground(a0);
  }

  @Override
  public Color getBackground() {
    return to.getBackground();
  }

  @Override
  public Stroke getStroke() {
    return to.getStroke();
  }

  @Override
  public void clip(Shape a0) {
    to.clip(a0);
  }

  @Override
  public FontRenderContext getFontRenderContext() {
    return to.getFontRenderContext();
  }

  @Override
  public Color getColor() {
    return to.getColor();
  }

  @Override
  public void setColor(Color a0) {
    to.setColor(a0);
  }

  @Override
  public void setPaintMode() {
    throw new UnsupportedOperationException("setPaintMode");
  }

  @Override
  public void setXORMode(Color a0) {
    throw new UnsupportedOperationException("setXORMode");
  }

  @Override
  public Font getFont() {
    return to.getFont();
  }

  @Override
  public void setFont(Font a0) {
    to.setFont(a0);
  }

  @Override
  public FontMetrics getFontMetrics(Font a0) {
    return to.getFontMetrics(a0);
  }

  @Override
  public Rectangle getClipBounds() {
    return to.getClipBounds();
  }

  @Override
  public void clipRect(int a0, int a1, int a2, int a3) {
    to.clipRect(a0, a1, a2, a3);
  }

  @Override
  public void setClip(int a0, int a1, int a2, int a3) {
    to.setClip(a0, a1, a2, a3);
  }

  @Override
  public Shape getClip() {
    return to.getClip();
  }

  @Override
  public void setClip(Shape a0) {
    to.setClip(a0);
  }

  @Override
  public void copyArea(int a0, int a1, int a2, int a3, int a4, int a5) {
    throw new UnsupportedOperationException("copyArea");
  }

  @Override
  public void drawLine(int a0, int a1, int a2, int a3) {
    to.drawLine(a0, a1, a2, a3);
  }

  @Override
  public void fillRect(int a0, int a1, int a2, int a3) {
    to.fillRect(a0, a1, a2, a3);
  }

  @Override
  public void clearRect(int a0, int a1, int a2, int a3) {
    throw new UnsupportedOperationException("clearRect");
  }

  @Override
  public void drawRoundRect(int a0, int a1, int a2, int a3, int a4, int a5) {
    throw new UnsupportedOperationException("drawRoundRect");
  }

  @Override
  public void fillRoundRect(int a0, int a1, int a2, int a3, int a4, int a5) {
    throw new UnsupportedOperationException("fillRoundRect");
  }

  @Override
  public void drawOval(int a0, int a1, int a2, int a3) {
    throw new UnsupportedOperationException("drawOval");
  }

  @Override
  public void fillOval(int a0, int a1, int a2, int a3) {
    throw new UnsupportedOperationException("fillOval");
  }

  @Override
  public void drawArc(int a0, int a1, int a2, int a3, int a4, int a5) {
    throw new UnsupportedOperationException("drawArc");
  }

  @Override
  public void fillArc(int a0, int a1, int a2, int a3, int a4, int a5) {
    throw new UnsupportedOperationException("fillArc");
  }

  @Override
  public void drawPolyline(int[] a0, int[] a1, int a2) {
    throw new UnsupportedOperationException("drawPolyline");
  }

  @Override
  public void drawPolygon(int[] a0, int[] a1, int a2) {
    throw new UnsupportedOperationException("drawPolygon");
  }

  @Override
  public void fillPolygon(int[] a0, int[] a1, int a2) {
    throw new UnsupportedOperationException("fillPolygon");
  }

  @Override
  public boolean drawImage(Image a0, int a1, int a2, ImageObserver a3) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public boolean drawImage(Image a0, int a1, int a2, int a3, int a4, ImageObserver a5) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public boolean drawImage(Image a0, int a1, int a2, Color a3, ImageObserver a4) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public boolean drawImage(Image a0, int a1, int a2, int a3, int a4, Color a5, ImageObserver a6) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public boolean drawImage(
      Image a0, int a1, int a2, int a3, int a4, int a5, int a6, int a7, int a8, ImageObserver a9) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public boolean drawImage(Image a0, int a1, int a2, int a3, int a4,
      int a5, int a6, int a7, int a8, Color a9, ImageObserver a10) {
    throw new UnsupportedOperationException("drawImage");
  }

  @Override
  public void dispose() {
    to.dispose();
  }
}
