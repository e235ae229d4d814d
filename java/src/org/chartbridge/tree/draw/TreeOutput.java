// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import org.chartbridge.image.Blocks;
import org.chartbridge.image.ImageMap;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;
import org.chartbridge.tree.TreeException;

/** Tree pictures as bytes and files of the image types. */
public final class TreeOutput {
  private static final long MAX_PIXELS = 100_000_000;

  /** Readers of PDF show no pages larger than 200 inches, which is this many pixels. */
  private static final double MAX_PDF_PIXELS = 200 * 96;

  private TreeOutput() {}

  /**
   * The bytes of a picture; for an image map its three blocks: a PNG, the HTML {@code map} element,
   * and the map as JSON.
   *
   * @param percent the size, 100 for the picture's own
   */
  public static byte[] encode(TreePicture tree, ImageType type, double percent) {
    Picture picture = picture(tree, type, percent);
    byte[] bytes = PictureEncoder.encode(picture, type);
    if (type != ImageType.IMAGE_MAP) {
      return bytes;
    }
    ImageMap map = new ImageMap(picture, tree.marks(), true);
    return Blocks.join(bytes, map.html(), map.json());
  }

  /**
   * Stages a picture, and for an image map the page and the JSON beside it.
   *
   * @return the files that will appear, the picture first
   */
  public static List<Path> stage(
      OutputFiles files, Path target, TreePicture tree, ImageType type, double percent) {
    Picture picture = picture(tree, type, percent);
    List<Path> paths = new ArrayList<>();
    paths.add(target);
    if (type != ImageType.IMAGE_MAP) {
      files.stage(target, out -> PictureEncoder.write(picture, type, out));
      return paths;
    }
    Path html = beside(target, ".html");
    Path json = beside(target, ".json");
    files.stage(target, out -> PictureEncoder.write(picture, type, out));
    ImageMap map = new ImageMap(picture, tree.marks(), true);
    byte[] page = map.page(target.getFileName().toString(), null);
    files.stage(html, out -> out.write(page));
    files.stage(json, out -> out.write(map.json()));
    paths.add(html);
    paths.add(json);
    return paths;
  }

  /** The ending of a file of that type, with its point. */
  public static String ending(ImageType type) {
    return switch (type) {
      case JPEG -> ".jpg";
      case PNG, IMAGE_MAP -> ".png";
      case BMP -> ".bmp";
      case GIF -> ".gif";
      case SVG -> ".svg";
      case PDF -> ".pdf";
    };
  }

  private static Path beside(Path picture, String ending) {
    Path last = picture.getFileName();
    if (last == null) {
      throw new TreeException("Cannot write \"" + picture + "\": it is a folder.");
    }
    String name = last.toString();
    if (name.toLowerCase(Locale.ROOT).endsWith(ending)) {
      throw new TreeException("Cannot write \"" + picture + "\": the picture of an image map needs"
          + " a name such as tree.png; its map gets the endings .html and .json.");
    }
    int dot = name.lastIndexOf('.');
    return picture.resolveSibling((dot > 0 ? name.substring(0, dot) : name) + ending);
  }

  static Picture picture(TreePicture tree, ImageType type, double percent) {
    // Checks the range of the percentage.
    Picture.ofPercent(1, 1, percent, g -> { });
    double scale = percent / 100;
    if (type == ImageType.PDF) {
      double longest = Math.max(tree.width(), tree.height()) * scale;
      scale *= Math.min(1, MAX_PDF_PIXELS / longest);
    }
    Picture picture = new Picture(tree.width(), tree.height(), scale, tree::draw, tree.words());
    boolean vector = type == ImageType.SVG || type == ImageType.PDF;
    if (!vector && (long) picture.pixelWidth() * picture.pixelHeight() > MAX_PIXELS) {
      throw new TreeException("The picture would have " + picture.pixelWidth() + " x "
          + picture.pixelHeight() + " pixels; at most 100 million are drawn. Show less of the tree"
          + " (a depth limit, collapsed nodes, one branch), or choose SVG or PDF.");
    }
    return picture;
  }
}
