// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import java.awt.Rectangle;
import java.nio.file.Path;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.draw.TreeDisplay;
import org.chartbridge.tree.draw.TreeOutput;
import org.chartbridge.tree.draw.TreePicture;
import org.chartbridge.tree.draw.TreePictures;
import org.chartbridge.tree.draw.TreeReader;
import org.chartbridge.tree.editor.EditorState;
import org.chartbridge.tree.editor.Screen;
import org.chartbridge.tree.editor.TreeWindow;

/**
 * The interactive tree editor. The native tree editor makes one of these and calls it by name and
 * signature.
 *
 * <p>Where there is a display the tree stands in a window, in which a click on a node collapses or
 * opens it. Where there is none, everything works the same without the window. Any thread may call
 * any method; none waits for the window.
 *
 * <p>Documents and image types are those of {@link TreeImager}. Every failure is a {@link
 * org.chartbridge.chart.ChartException} with a message.
 */
public final class TreeEditor {
  static {
    Screen.settle();
  }

  private final TreeReader reader = new TreeReader();
  private final EditorState state = new EditorState(reader);
  private final TreeWindow window = new TreeWindow(state);

  public TreeEditor() {}

  /**
   * @param path a folder with XML schemas by which documents are checked; null or empty for none
   */
  public void setSchemaPath(String path) {
    reader.setSchemaPath(path);
  }

  /**
   * Shows a model in the window, which is opened, moved or brought back as needed. The same
   * documents again, while no rerendering is due, leave the tree as the user has it.
   *
   * @param x the left edge of the window on the screen, in pixels
   * @param y its upper edge
   * @param width its width with its frame
   * @param height its height with its frame
   */
  public void renderPMMLToScreen(
      int x, int y, int width, int height, byte[] model, byte[] display) {
    TreeReader.guarded(() -> {
      state.render(new Rectangle(x, y, width, height), model, display);
      return null;
    });
    window.update();
  }

  /**
   * Whether what the host has from this editor is out of date: nothing was rendered yet, or
   * something changed since.
   */
  public boolean needsRerendering() {
    return state.needsRerendering();
  }

  /**
   * @param flag true to have the next {@link #renderPMMLToScreen} read its documents again even if
   *     they are the same
   */
  public void setNeedsRerendering(boolean flag) {
    state.setNeedsRerendering(flag);
  }

  /** @param id the host's number of the thread that the editor belongs to; it names the window */
  public void setThreadId(int id) {
    state.setThreadId(id);
    window.update();
  }

  /** @param dpi pixels per inch of the screen, from 24 to 2400; 96 shows pictures at 100 percent */
  public void setDPI(int dpi) {
    state.setDpi(dpi);
    window.update();
  }

  /**
   * Hides the window. The tree stays as it is, and the next {@link #renderPMMLToScreen} brings it
   * back.
   */
  public void deActivate() {
    state.hide();
    window.update();
  }

  /** Closes the window. The display data and the model can still be asked for. */
  public void close() {
    state.close();
    window.update();
  }

  /**
   * Width and height of the picture in the window, in pixels at the screen's resolution; zeros
   * before the first rendering and after the window was closed.
   */
  public long[] getSizeArray() {
    return state.size();
  }

  /** Width and height that the picture of a model takes, in pixels at the screen's resolution. */
  public long[] calculateSizeArray(byte[] model, byte[] display) {
    return TreeReader.guarded(() -> {
      TreePicture picture = picture(model, reader.display(display));
      return EditorState.size(picture, state.percent());
    });
  }

  /** The display data as the user left them; null before the first rendering. */
  public byte[] extractDisplayData() {
    return state.displayData();
  }

  /** The model in the window, compressed with gzip; no bytes before the first rendering. */
  public byte[] extractCompressedPMML() {
    return TreeReader.guarded(state::compressedModel);
  }

  /**
   * Writes the picture of a model to a file, at the screen's resolution. It appears whole or not at
   * all.
   *
   * @param leftToRight true to draw the tree from left to right; false for what the display
   *     data say
   * @return true: the file is there
   */
  public boolean renderToFile(
      byte[] model, byte[] display, String path, int imageType, boolean leftToRight) {
    return TreeReader.guarded(() -> {
      ImageType type = ImageType.of(imageType);
      Path target = OutputFiles.path(path);
      TreeDisplay shown = reader.display(display);
      TreePicture picture =
          picture(model, leftToRight ? shown.withOrientation(true) : shown);
      try (OutputFiles files = new OutputFiles()) {
        TreeOutput.stage(files, target, picture, type, state.percent());
        files.commit();
      }
      return true;
    });
  }

  private TreePicture picture(byte[] model, TreeDisplay display) {
    TreeDocument document = reader.model(model);
    return new TreePictures(document, display, null, SamplePaths.NONE).shown();
  }
}
