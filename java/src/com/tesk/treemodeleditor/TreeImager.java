// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import java.nio.file.Path;
import java.util.HashMap;
import java.util.List;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.draw.PictureSet;
import org.chartbridge.tree.draw.TreeDisplay;
import org.chartbridge.tree.draw.TreeOutput;
import org.chartbridge.tree.draw.TreePicture;
import org.chartbridge.tree.draw.TreePictures;
import org.chartbridge.tree.draw.TreeReader;

/**
 * Renders tree models without a screen. The native tree editor makes one of these and calls it by
 * name and signature.
 *
 * <p>What all methods share:
 *
 * <ul>
 *   <li>{@code model}: PMML 4.0 to 4.4 with a tree or an ensemble of trees, as XML or
 *       compressed with gzip.
 *   <li>{@code display}: display data; null or empty for the defaults.
 *   <li>{@code imageType}: 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6 PDF, 7 image map.
 *   <li>{@code percent}: the size in percent of the picture's own, more than 0 and at most 10000.
 * </ul>
 *
 * <p>Every failure is a {@link org.chartbridge.chart.ChartException} with a message for the person
 * who asked for the picture. Any thread may use an object of this class.
 */
public final class TreeImager {
  static {
    // Before the first class that looks for a display. A host that opens the tree editor's window
    // has settled this earlier.
    if (System.getProperty("java.awt.headless") == null) {
      System.setProperty("java.awt.headless", "true");
    }
  }

  private final TreeReader reader = new TreeReader();

  public TreeImager() {}

  /**
   * @param path a folder with XML schemas by which documents are checked; null or empty for none
   */
  public void setSchemaPath(String path) {
    reader.setSchemaPath(path);
  }

  /**
   * Writes a picture to a file, which appears whole or not at all. Type 7 writes the map's files
   * too, with tooltips.
   *
   * @param path the file; its folder must exist
   * @param leftToRight true to draw the tree from left to right; false for what the display
   *     data say
   * @return true: the file is there
   */
  public boolean renderToFile(byte[] model, byte[] display, String path, int imageType,
      boolean leftToRight, int percent) {
    return TreeReader.guarded(() -> {
      ImageType type = ImageType.of(imageType);
      Path target = OutputFiles.path(path);
      TreeDisplay shown = reader.display(display);
      TreePicture picture =
          picture(model, leftToRight ? shown.withOrientation(true) : shown);
      try (OutputFiles files = new OutputFiles()) {
        TreeOutput.stage(files, target, picture, type, percent);
        files.commit();
      }
      return true;
    });
  }

  /**
   * Renders a picture to memory.
   *
   * @return its bytes; for type 7 blocks, each a length in four bytes, most significant first,
   *     and that many bytes: a PNG, the HTML {@code map} element and the map as JSON
   */
  public byte[] renderToMemory(byte[] model, byte[] display, int imageType, int percent) {
    return TreeReader.guarded(() -> {
      ImageType type = ImageType.of(imageType);
      return TreeOutput.encode(picture(model, reader.display(display)), type, percent);
    });
  }

  /**
   * The size that a picture has at 100 percent.
   *
   * @return width and height in pixels
   */
  public long[] calculateSizeArray(byte[] model, byte[] display) {
    return TreeReader.guarded(() -> {
      TreePicture picture = picture(model, reader.display(display));
      return new long[] {picture.width(), picture.height()};
    });
  }

  /**
   * Renders a model as a set of pictures: the overview and, of an ensemble, each tree, else each
   * top-level branch.
   *
   * @param style a style document that changes single settings of the style that the display
   *     data name; null or empty for none
   * @param samples CSV data with records whose ways through the trees are shown; null or empty
   *     for none
   * @param title the title, and the beginning of the names; null or empty for the model's own
   * @param depth how many levels below its root each picture shows; 0 for what the display data say
   * @return the bytes of each picture by its name
   */
  public HashMap<String, byte[]> renderModelToMemory(byte[] model, byte[] display, byte[] style,
      byte[] samples, String title, int imageType, int depth) {
    return TreeReader.guarded(() -> {
      ImageType type = ImageType.of(imageType);
      return new HashMap<>(set(model, display, style, samples, title, depth).encode(type));
    });
  }

  /**
   * Renders a model as a set of files, which appear together or not at all.
   *
   * @param folder where they go; it is made when it is not there
   * @return their paths, the overview first
   */
  public String[] renderModelToFiles(byte[] model, byte[] display, byte[] style, byte[] samples,
      String title, String folder, int imageType, int depth) {
    return TreeReader.guarded(() -> {
      ImageType type = ImageType.of(imageType);
      if (folder == null || folder.isEmpty()) {
        throw new TreeException("The output folder is empty.");
      }
      Path target = OutputFiles.path(folder);
      List<Path> files = set(model, display, style, samples, title, depth).write(target, type);
      return files.stream().map(Path::toString).toArray(String[]::new);
    });
  }

  private TreePicture picture(byte[] model, TreeDisplay display) {
    TreeDocument document = reader.model(model);
    return new TreePictures(
        document, display, null, TreeReader.samples(document, null)).shown();
  }

  private PictureSet set(byte[] model, byte[] display, byte[] style, byte[] samples, String title,
      int depth) {
    TreeDocument document = reader.model(model);
    TreeDisplay shown = reader.display(display);
    return new PictureSet(document, shown, TreeReader.style(shown, style),
        TreeReader.samples(document, samples), title, depth);
  }
}
