// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import java.awt.Rectangle;
import java.util.Arrays;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.draw.TreeDisplay;
import org.chartbridge.tree.draw.TreePicture;
import org.chartbridge.tree.draw.TreePictures;
import org.chartbridge.tree.draw.TreeReader;
import org.chartbridge.tree.pmml.PmmlBytes;

/**
 * Everything that the interactive editor knows, whether or not there is a window for it.
 * Thread-safe; no method waits for another thread longer than for the layout of a tree, and none of
 * them touches Swing.
 */
public final class EditorState {
  private static final int NORMAL_DPI = 96;
  private static final int LEAST_DPI = 24;
  private static final int MOST_DPI = 2400;

  private final TreeReader reader;

  private byte[] modelBytes;
  private byte[] displayBytes;
  private TreeDocument document;
  private TreeDisplay display;
  private TreePicture picture;
  private Rectangle bounds;
  private boolean visible;
  private boolean closed = true;
  private boolean needsRerendering = true;
  private int dpi = NORMAL_DPI;
  private int threadId;

  public EditorState(TreeReader reader) {
    this.reader = reader;
  }

  /**
   * Takes up a model and its display data, and shows them. The same bytes again, while no
   * rerendering is due, only move the window, and what the user collapsed stays collapsed.
   */
  public synchronized void render(Rectangle newBounds, byte[] model, byte[] displayData) {
    if (newBounds.width <= 0 || newBounds.height <= 0) {
      throw new TreeException("The extent of the window is " + newBounds.width + " x "
          + newBounds.height + "; both must be greater than 0.");
    }
    byte[] newDisplay = displayData == null ? new byte[0] : displayData;
    boolean same = picture != null && !needsRerendering && Arrays.equals(model, modelBytes)
        && Arrays.equals(newDisplay, displayBytes);
    if (!same) {
      TreeDocument newDocument = reader.model(model);
      TreeDisplay parsed = reader.display(displayData);
      picture = lay(newDocument, parsed);
      document = newDocument;
      display = parsed;
      modelBytes = model.clone();
      displayBytes = newDisplay.clone();
    }
    bounds = newBounds;
    visible = true;
    closed = false;
    needsRerendering = false;
  }

  private static TreePicture lay(TreeDocument document, TreeDisplay display) {
    return new TreePictures(document, display, null, SamplePaths.NONE).shown();
  }

  /**
   * Collapses or opens the node at a point of the picture, or opens a tree of the overview; nothing
   * happens elsewhere.
   */
  synchronized void click(double x, double y) {
    TreePicture.Hit hit = picture == null ? null : picture.hit(x, y);
    if (hit == null) {
      return;
    }
    change(hit.node() == null
        ? display.withTree(hit.tree())
        : display.toggled(document.tree(hit.tree()), hit.node()));
  }

  /** Goes back from a tree to the overview of its ensemble. */
  synchronized void showOverview() {
    if (picture != null) {
      change(display.withTree(0));
    }
  }

  /** Lets the tree grow to the right instead of downwards, or the other way round. */
  synchronized void turn() {
    if (picture != null) {
      change(display.withOrientation(!display.leftToRight()));
    }
  }

  private void change(TreeDisplay changed) {
    if (changed.equals(display)) {
      return;
    }
    picture = lay(document, changed);
    display = changed;
    needsRerendering = true;
  }

  public synchronized void hide() {
    visible = false;
  }

  public synchronized void close() {
    visible = false;
    closed = true;
  }

  public synchronized boolean needsRerendering() {
    return needsRerendering;
  }

  public synchronized void setNeedsRerendering(boolean flag) {
    needsRerendering = flag;
  }

  public synchronized void setThreadId(int id) {
    threadId = id;
  }

  /** @param newDpi pixels per inch of the screen; 96 shows pictures at 100 percent */
  public synchronized void setDpi(int newDpi) {
    if (newDpi < LEAST_DPI || newDpi > MOST_DPI) {
      throw new TreeException("The resolution is " + newDpi + " pixels per inch; it must be from "
          + LEAST_DPI + " to " + MOST_DPI + ".");
    }
    needsRerendering |= newDpi != dpi;
    dpi = newDpi;
  }

  /** The size of pictures in percent. */
  public synchronized double percent() {
    return 100.0 * dpi / NORMAL_DPI;
  }

  /**
   * Width and height of the picture in pixels of the screen; zeros when there is none or it was
   * closed.
   */
  public synchronized long[] size() {
    if (picture == null || closed) {
      return new long[] {0, 0};
    }
    return size(picture, percent());
  }

  public static long[] size(TreePicture picture, double percent) {
    return new long[] {
      Math.max(1, Math.round(picture.width() * percent / 100)),
      Math.max(1, Math.round(picture.height() * percent / 100))
    };
  }

  /** The display data as the user left them; null before the first rendering. */
  public synchronized byte[] displayData() {
    return display == null ? null : display.toXml();
  }

  /** The model, compressed with gzip; no bytes before the first rendering. */
  public synchronized byte[] compressedModel() {
    return modelBytes == null ? new byte[0] : PmmlBytes.compress(modelBytes);
  }

  synchronized EditorView view() {
    boolean inEnsemble = document != null && !document.isSingleTree() && display.tree() != 0;
    return new EditorView(
        visible, closed, bounds, picture, percent() / 100, threadId, inEnsemble);
  }
}
