// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import java.util.TreeMap;
import org.chartbridge.draw.Mark;

/** Checks that a picture can be read: no text on another one, none outside its box or the page. */
final class Tidiness {
  private Tidiness() {}

  private static List<RecordingGraphics.Text> texts(TreePicture picture) {
    RecordingGraphics g = new RecordingGraphics();
    picture.draw(g);
    return g.texts;
  }

  /** No two of these areas overlap, and all are within the picture. */
  private static void assertApart(String what, TreePicture picture, List<Rectangle2D> areas,
      List<String> names) {
    Rectangle2D page = new Rectangle2D.Double(0, 0, picture.width(), picture.height());
    // A sweep from left to right, so that large trees take no quadratic time.
    TreeMap<Double, List<Integer>> byLeft = new TreeMap<>();
    double widest = 0;
    for (int i = 0; i < areas.size(); i++) {
      byLeft.computeIfAbsent(areas.get(i).getX(), key -> new ArrayList<>()).add(i);
      widest = Math.max(widest, areas.get(i).getWidth());
      assertTrue(page.contains(areas.get(i)), what + ": " + names.get(i) + " at " + areas.get(i)
          + " leaves the picture of " + page);
    }
    for (int i = 0; i < areas.size(); i++) {
      Rectangle2D area = areas.get(i);
      for (List<Integer> others :
          byLeft.subMap(area.getX() - widest, true, area.getMaxX(), true).values()) {
        for (int other : others) {
          assertFalse(other != i && area.intersects(areas.get(other)), what + ": " + names.get(i)
              + " at " + area + " overlaps " + names.get(other) + " at " + areas.get(other));
        }
      }
    }
  }

  /** A text of a box does not reach out of it. */
  private static void assertInside(
      String what, List<RecordingGraphics.Text> texts, List<Mark> boxes) {
    for (Mark box : boxes) {
      Rectangle2D area = box.area().getBounds2D();
      for (RecordingGraphics.Text text : texts) {
        assertTrue(!area.intersects(text.area()) || area.contains(text.area()), what + ": "
            + text.text() + " at " + text.area() + " reaches out of its box at " + area);
      }
    }
  }

  static void check(String what, TreePicture picture) {
    List<RecordingGraphics.Text> texts = texts(picture);
    assertApart(what, picture, texts.stream().map(RecordingGraphics.Text::area).toList(),
        texts.stream().map(RecordingGraphics.Text::text).toList());
    assertInside(what, texts, picture.marks());
    if (!(picture instanceof SingleTreePicture tree)) {
      List<Rectangle2D> areas = ((OverviewPicture) picture).areas();
      assertApart(what, picture, areas, areas.stream().map(Object::toString).toList());
      return;
    }
    List<Rectangle2D> areas = new ArrayList<>();
    List<String> names = new ArrayList<>();
    for (TreeLayout.Placed node : tree.layout().nodes()) {
      areas.add(node.boxArea());
      names.add("box " + node.box.node.path());
      if (!node.box.label.isEmpty()) {
        areas.add(node.labelArea());
        names.add("label " + node.box.node.path());
      }
      if (node.box.hidden > 0) {
        areas.add(node.badgeArea(tree.isLeftToRight()));
        names.add("badge " + node.box.node.path());
      }
    }
    assertApart(what, picture, areas, names);
  }
}
