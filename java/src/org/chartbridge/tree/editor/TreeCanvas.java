// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import java.awt.Cursor;
import java.awt.Dimension;
import java.awt.Graphics;
import java.awt.Graphics2D;
import java.awt.Point;
import java.awt.Rectangle;
import java.awt.RenderingHints;
import java.awt.event.MouseAdapter;
import java.awt.event.MouseEvent;
import java.awt.event.MouseWheelEvent;
import java.util.function.BiConsumer;
import javax.swing.JComponent;
import javax.swing.JViewport;
import javax.swing.SwingUtilities;
import javax.swing.ToolTipManager;
import org.chartbridge.draw.Mark;
import org.chartbridge.tree.draw.TreePicture;

/**
 * Shows a picture, zoomed as the user likes. A click goes to the listener, a drag moves the view.
 * For the event thread only.
 */
final class TreeCanvas extends JComponent {
  private static final long serialVersionUID = 1L;
  private static final double ZOOM_STEP = 1.25;
  private static final double LEAST_ZOOM = 0.05;
  private static final double MOST_ZOOM = 8;
  private static final int CLICK_DISTANCE = 4;

  private final transient BiConsumer<Double, Double> clicked;
  private transient TreePicture picture;
  private double scale = 1;
  private double zoom = 1;

  /** @param clicked gets the point of a click in the picture's own pixels */
  TreeCanvas(BiConsumer<Double, Double> clicked) {
    this.clicked = clicked;
    setName("tree-canvas");
    setOpaque(true);
    setFocusable(true);
    Pointer pointer = new Pointer();
    addMouseListener(pointer);
    addMouseMotionListener(pointer);
    addMouseWheelListener(pointer);
    ToolTipManager.sharedInstance().registerComponent(this);
  }

  void show(TreePicture newPicture, double newScale) {
    boolean changed = newPicture != picture || newScale != scale;
    picture = newPicture;
    scale = newScale;
    if (changed) {
      revalidate();
      repaint();
    }
  }

  /** Pixels of the screen for one of the picture. */
  double factor() {
    return scale * zoom;
  }

  void zoomIn() {
    zoomTo(zoom * ZOOM_STEP, middle());
  }

  void zoomOut() {
    zoomTo(zoom / ZOOM_STEP, middle());
  }

  void zoomNormal() {
    zoomTo(1, middle());
  }

  /** As large as the whole picture fits into the view, but not larger than normal. */
  void zoomToFit() {
    if (picture == null || !(getParent() instanceof JViewport viewport)) {
      return;
    }
    double wide = viewport.getWidth() / (picture.width() * scale);
    double high = viewport.getHeight() / (picture.height() * scale);
    zoomTo(Math.min(1, Math.min(wide, high)), new Point(0, 0));
  }

  private Point middle() {
    Rectangle visible = getVisibleRect();
    return new Point((int) visible.getCenterX(), (int) visible.getCenterY());
  }

  /** The picture stays where it is under the fixed point. */
  private void zoomTo(double wanted, Point fixed) {
    double newZoom = Math.min(MOST_ZOOM, Math.max(LEAST_ZOOM, wanted));
    double ratio = newZoom / zoom;
    Rectangle visible = getVisibleRect();
    zoom = newZoom;
    setSize(getPreferredSize());
    Rectangle target = new Rectangle(
        (int) Math.round(fixed.x * ratio - (fixed.x - visible.x)),
        (int) Math.round(fixed.y * ratio - (fixed.y - visible.y)), visible.width, visible.height);
    revalidate();
    scrollRectToVisible(target);
    repaint();
  }

  @Override
  public Dimension getPreferredSize() {
    if (picture == null) {
      return new Dimension(1, 1);
    }
    return new Dimension((int) Math.ceil(picture.width() * factor()),
        (int) Math.ceil(picture.height() * factor()));
  }

  @Override
  protected void paintComponent(Graphics graphics) {
    Graphics2D g = (Graphics2D) graphics.create();
    try {
      g.setColor(picture == null ? getBackground() : picture.background());
      g.fill(g.getClipBounds());
      if (picture != null) {
        g.setRenderingHint(RenderingHints.KEY_TEXT_ANTIALIASING,
            RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
        g.setRenderingHint(RenderingHints.KEY_FRACTIONALMETRICS,
            RenderingHints.VALUE_FRACTIONALMETRICS_ON);
        g.scale(factor(), factor());
        picture.draw(g);
      }
    } finally {
      g.dispose();
    }
  }

  @Override
  public String getToolTipText(MouseEvent event) {
    if (picture == null) {
      return null;
    }
    double x = event.getX() / factor();
    double y = event.getY() / factor();
    for (Mark mark : picture.marks()) {
      if (mark.area().contains(x, y)) {
        return html(mark.tooltip());
      }
    }
    return null;
  }

  private static String html(String text) {
    String escaped = text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;");
    return "<html>" + escaped.replace("\n", "<br>") + "</html>";
  }

  private boolean isOverSomething(MouseEvent event) {
    return picture != null
        && picture.hit(event.getX() / factor(), event.getY() / factor()) != null;
  }

  /** What the mouse does. */
  private final class Pointer extends MouseAdapter {
    private Point pressedOnScreen;
    private Point viewAtPress;
    private boolean dragged;

    @Override
    public void mousePressed(MouseEvent event) {
      requestFocusInWindow();
      dragged = false;
      pressedOnScreen =
          SwingUtilities.isLeftMouseButton(event) ? event.getLocationOnScreen() : null;
      viewAtPress = getVisibleRect().getLocation();
    }

    @Override
    public void mouseDragged(MouseEvent event) {
      if (pressedOnScreen == null) {
        return;
      }
      Point now = event.getLocationOnScreen();
      dragged |= pressedOnScreen.distance(now) > CLICK_DISTANCE;
      if (dragged) {
        Rectangle visible = getVisibleRect();
        visible.setLocation(viewAtPress.x + pressedOnScreen.x - now.x,
            viewAtPress.y + pressedOnScreen.y - now.y);
        scrollRectToVisible(visible);
      }
    }

    @Override
    public void mouseReleased(MouseEvent event) {
      if (pressedOnScreen != null && !dragged) {
        clicked.accept(event.getX() / factor(), event.getY() / factor());
      }
      pressedOnScreen = null;
    }

    @Override
    public void mouseMoved(MouseEvent event) {
      int kind = isOverSomething(event) ? Cursor.HAND_CURSOR : Cursor.DEFAULT_CURSOR;
      setCursor(Cursor.getPredefinedCursor(kind));
    }

    @Override
    public void mouseWheelMoved(MouseWheelEvent event) {
      if (event.isControlDown()) {
        double steps = -event.getPreciseWheelRotation();
        zoomTo(zoom * Math.pow(ZOOM_STEP, steps), event.getPoint());
      } else if (getParent() != null) {
        getParent().dispatchEvent(
            SwingUtilities.convertMouseEvent(TreeCanvas.this, event, getParent()));
      }
    }
  }
}
