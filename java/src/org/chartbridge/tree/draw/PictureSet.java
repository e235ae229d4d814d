// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.nio.file.Path;
import java.text.Normalizer;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Supplier;
import org.chartbridge.draw.Style;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;

/**
 * All pictures of a model, each with its name: {@code -overview}, then {@code -tree-1} and so on
 * for the trees of an ensemble, or {@code -branch-1} and so on for the top-level branches of a
 * single tree, behind the base name of the set. Numbers have leading zeros, so that names sort in
 * order. Names are ASCII: they pass through hosts and file systems of any encoding.
 */
public final class PictureSet {
  private static final int LONGEST_NAME = 80;
  private static final String MAP_ENDING = ".map";

  private final Map<String, Supplier<TreePicture>> pictures = new LinkedHashMap<>();

  /**
   * @param title the title of the pictures, unless the display data have one; its ASCII letters
   *     and digits are the base name. Null or empty for the model's own name
   * @param depth how many levels each picture shows; 0 for what the display data say
   */
  public PictureSet(TreeDocument document, TreeDisplay display, Style style, SamplePaths samples,
      String title, int depth) {
    if (depth < 0) {
      throw new TreeException("The depth limit is " + depth + "; it must be 0 (none) or more.");
    }
    boolean titled = title != null && !title.isBlank();
    TreeDisplay shown = depth == 0 ? display : display.withDepth(depth);
    if (titled && display.title() == null) {
      shown = shown.withTitle(title.strip());
    }
    TreePictures all = new TreePictures(document, shown, style, samples);
    String base = baseName(titled ? title : modelName(document.model()));
    pictures.put(base + "-overview", all::overview);
    if (!document.isSingleTree()) {
      for (TreeModel tree : document.trees()) {
        pictures.put(base + "-tree-" + number(tree.number(), document.trees().size()),
            () -> all.tree(tree));
      }
      return;
    }
    TreeModel tree = document.trees().get(0);
    List<TreeNode> branches = tree.root().children();
    for (int i = 0; i < branches.size(); i++) {
      TreeNode branch = branches.get(i);
      pictures.put(base + "-branch-" + number(i + 1, branches.size()),
          () -> all.branch(tree, branch));
    }
  }

  private static String number(int number, int count) {
    int digits = Integer.toString(count).length();
    return String.format("%0" + digits + "d", number);
  }

  private static String modelName(ModelPart model) {
    String name = null;
    if (model instanceof TreeModel tree) {
      name = tree.name();
    } else if (model instanceof Ensemble ensemble) {
      name = ensemble.name();
    }
    return name == null ? "" : name;
  }

  /** The ASCII letters and digits of a text; other characters become single hyphens. */
  static String baseName(String text) {
    String plain = Normalizer.normalize(text, Normalizer.Form.NFD).replaceAll("\\p{M}+", "");
    String name = plain.replaceAll("[^A-Za-z0-9_]+", "-").replaceAll("^-+|-+$", "");
    String cut = name.length() > LONGEST_NAME ? name.substring(0, LONGEST_NAME) : name;
    return cut.isEmpty() ? "tree" : cut;
  }

  /** The names without endings, in order. */
  public List<String> names() {
    return List.copyOf(pictures.keySet());
  }

  /**
   * The bytes of each picture by its name with the ending of the type; {@code .map} for the blocks
   * of an image map.
   */
  public Map<String, byte[]> encode(ImageType type) {
    Map<String, byte[]> encoded = new LinkedHashMap<>();
    String ending = type == ImageType.IMAGE_MAP ? MAP_ENDING : TreeOutput.ending(type);
    pictures.forEach((name, picture) ->
        encoded.put(name + ending, TreeOutput.encode(picture.get(), type, 100)));
    return encoded;
  }

  /**
   * Writes all pictures into a folder: all of them, or none.
   *
   * @param folder is made, with the folders above it, when it is not there
   * @return the files, the overview first
   */
  public List<Path> write(Path folder, ImageType type) {
    List<Path> paths = new ArrayList<>();
    try (OutputFiles files = new OutputFiles()) {
      files.makeFolder(folder);
      for (Map.Entry<String, Supplier<TreePicture>> entry : pictures.entrySet()) {
        Path target = folder.resolve(entry.getKey() + TreeOutput.ending(type));
        paths.addAll(TreeOutput.stage(files, target, entry.getValue().get(), type, 100));
      }
      files.commit();
    }
    return paths;
  }
}
