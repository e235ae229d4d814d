// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.draw.Style;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;

/** All pictures of one document. */
public final class TreePictures {
  private final TreeDocument document;
  private final TreeDisplay display;
  private final TreeStyle style;
  private final SamplePaths samples;
  private final NumberText numbers;

  /**
   * @param style the chart style whose font and colours are used; null for the one that the display
   *     data name
   * @param samples the records whose ways are shown
   */
  public TreePictures(
      TreeDocument document, TreeDisplay display, Style style, SamplePaths samples) {
    this.document = document;
    this.display = display;
    Style chosen = style == null ? Style.named(display.style()) : style;
    this.style = new TreeStyle(chosen, display.fontSize());
    this.samples = samples;
    numbers = new NumberText(display.locale(), display.digits());
  }

  /**
   * What the display data ask for: a certain tree, else the overview.
   *
   * @throws org.chartbridge.tree.TreeException when they name a tree that there is not
   */
  public TreePicture shown() {
    return display.tree() == 0 ? overview() : tree(document.tree(display.tree()));
  }

  /** The whole model: the tree, or of an ensemble a small drawing of each of its trees. */
  public TreePicture overview() {
    if (document.isSingleTree()) {
      return tree(document.trees().get(0));
    }
    return new OverviewPicture(document, display, style, samples, document.classes());
  }

  public TreePicture tree(TreeModel tree) {
    Scene scene = new Scene(tree, tree, display, style, samples, document.classes());
    List<String> notes = EnsembleText.place(document.model(), tree, numbers);
    return new SingleTreePicture(scene, title(tree), facts(scene), notes);
  }

  /** One branch of a tree: a child of the root with all that is below it. */
  public TreePicture branch(TreeModel tree, TreeNode root) {
    Scene scene = new Scene(tree.branch(root), tree, display, style, samples, document.classes());
    List<String> notes = new ArrayList<>();
    notes.add("The branch of "
        + scene.plural(1 + TreeLayout.below(root), "node") + " at node " + root.path());
    notes.addAll(EnsembleText.place(document.model(), tree, numbers));
    return new SingleTreePicture(scene, title(tree), facts(scene), notes);
  }

  private String title(TreeModel tree) {
    if (display.title() != null) {
      return display.title();
    }
    if (!tree.target().isEmpty()) {
      return tree.target();
    }
    return tree.name() == null || tree.name().isBlank() ? "Decision tree" : tree.name();
  }

  private List<String> facts(Scene scene) {
    List<String> facts = new ArrayList<>();
    if (!document.isSingleTree()) {
      facts.add("Tree " + numbers.count(scene.tree.number()) + " of "
          + numbers.count(document.trees().size()));
    }
    facts.addAll(scene.facts());
    return facts;
  }
}
