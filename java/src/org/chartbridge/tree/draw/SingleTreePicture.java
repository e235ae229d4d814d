// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.Rectangle;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.draw.Mark;
import org.chartbridge.image.PictureWords;
import org.chartbridge.tree.Branches;
import org.chartbridge.tree.MissingValues;
import org.chartbridge.tree.TreeNode;

/** The picture of one tree, or of one branch of it. */
final class SingleTreePicture implements TreePicture {
  private static final double MARGIN = 22;
  private static final double LEAST_WIDTH = 430;

  private final Scene scene;
  private final TreeLayout layout;
  private final Header header;
  private final double treeX;
  private final double treeY;
  private final int width;
  private final int height;

  /** @param notes lines about the tree's place in its model */
  SingleTreePicture(Scene scene, String title, List<String> facts, List<String> notes) {
    this.scene = scene;
    layout = new TreeLayout(scene);
    header = header(title, facts, notes);
    double margin = margin();
    header.layOut(Math.max(layout.width(), LEAST_WIDTH * scene.unit));
    double inner = Math.max(layout.width(), header.width());
    treeX = Math.round(margin + (scene.display.leftToRight() ? 0 : (inner - layout.width()) / 2));
    treeY = Math.round(margin + header.height() + 16 * scene.unit);
    width = (int) Math.ceil(inner + 2 * margin);
    height = (int) Math.ceil(treeY + layout.height() + margin);
  }

  private double margin() {
    return Math.round(MARGIN * scene.unit);
  }

  private Header header(String title, List<String> facts, List<String> notes) {
    Header made = new Header(scene.style).title(title).facts(facts);
    notes.forEach(made::note);
    if (scene.display.show().missing()) {
      noteMissingValues(made);
    }
    noteBranches(made);
    RemarkText remarks = new RemarkText(scene.numbers);
    made.note(remarks.of(scene.tree.remarks()));
    made.note(String.join(" ", remarks.ofFields(scene.tree)));
    if (scene.display.show().legend()) {
      legend(made);
    }
    return made;
  }

  private void noteMissingValues(Header made) {
    List<String> texts = new ArrayList<>();
    if (scene.tree.missingValues() != MissingValues.NONE) {
      texts.add("When a value is missing: " + scene.tree.missingValues().label());
    }
    if (scene.tree.returnsLastPrediction()) {
      texts.add("When no branch applies: the node above predicts");
    }
    if (!texts.isEmpty()) {
      made.note(String.join(". ", texts) + ".");
    }
  }

  private void noteBranches(Header made) {
    boolean ordered = false;
    boolean leavesOut = false;
    for (TreeLayout.Placed placed : layout.nodes()) {
      TreeNode node = placed.box.node;
      ordered |= placed.parent != null && scene.order(node, placed.parent.box.node) > 0;
      leavesOut |= placed.box.hidden == 0 && !scene.tree.returnsLastPredictionAt(node)
          && Branches.leaveSomeOut(scene.tree, node);
    }
    if (ordered) {
      made.note("Where branches are numbered, a record takes the first that applies.");
    }
    if (leavesOut) {
      made.note("When no branch applies: no prediction.");
    }
  }

  private void legend(Header made) {
    List<String> classes = scene.statistics.classes();
    for (int i = 0; i < classes.size(); i++) {
      made.group(scene.style.group(scene.classIndex(classes.get(i))),
          scene.tree.classLabel(classes.get(i)));
    }
    boolean scale = !scene.tree.classification() && scene.display.show().distribution()
        && scene.statistics.highest() > scene.statistics.lowest();
    if (scale) {
      boolean spread = layout.nodes().stream()
          .anyMatch(node -> scene.statistics(node.box.node).hasSpread());
      made.remark("Bars from " + scene.predicted(scene.statistics.lowest()) + " to "
          + scene.predicted(scene.statistics.highest()) + ": the mark is the prediction"
          + (spread ? ", the band \u00B1 the standard deviation of the predictions below." : "."));
    }
    boolean probabilities = scene.display.show().distribution() && layout.nodes().stream()
        .anyMatch(node -> scene.statistics(node.box.node).probabilities());
    if (probabilities) {
      made.remark("Bars show probabilities where the document gives no counts.");
    }
    if (layout.nodes().stream().anyMatch(node -> node.box.hidden > 0)) {
      made.badge("hidden nodes");
    }
    SampleText.legend(made, scene.samples, List.of(scene.tree));
  }

  TreeLayout layout() {
    return layout;
  }

  boolean isLeftToRight() {
    return scene.display.leftToRight();
  }

  @Override
  public int width() {
    return width;
  }

  @Override
  public int height() {
    return height;
  }

  @Override
  public PictureWords words() {
    return header.words();
  }

  @Override
  public Color background() {
    return scene.style.background;
  }

  @Override
  public void draw(Graphics2D g) {
    g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    g.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
    g.setColor(scene.style.background);
    g.fillRect(0, 0, width, height);
    header.draw(g, margin(), margin());
    Shape clip = g.getClip();
    Rectangle visible = clip == null ? new Rectangle(width, height) : clip.getBounds();
    Rectangle2D area = new Rectangle2D.Double(
        visible.x - treeX, visible.y - treeY, visible.width, visible.height);
    g.translate(treeX, treeY);
    for (boolean onPath : new boolean[] {false, true}) {
      for (TreeLayout.Placed node : layout.nodes()) {
        if (node.parent != null && node.box.onPath == onPath && branchArea(node).intersects(area)) {
          drawBranch(g, node);
        }
      }
    }
    for (TreeLayout.Placed node : layout.nodes()) {
      if (nodeArea(node).intersects(area)) {
        drawNode(g, node);
      }
    }
    g.translate(-treeX, -treeY);
  }

  private Rectangle2D branchArea(TreeLayout.Placed node) {
    Rectangle2D area = node.boxArea().createUnion(node.parent.boxArea());
    return grown(area);
  }

  private Rectangle2D nodeArea(TreeLayout.Placed node) {
    Rectangle2D area = node.boxArea();
    if (!node.box.label.isEmpty()) {
      area = area.createUnion(node.labelArea());
    }
    if (node.box.hidden > 0) {
      area = area.createUnion(node.badgeArea(scene.display.leftToRight()));
    }
    return grown(area);
  }

  private static Rectangle2D grown(Rectangle2D r) {
    return new Rectangle2D.Double(r.getX() - 4, r.getY() - 4, r.getWidth() + 8, r.getHeight() + 8);
  }

  /**
   * From the side of the parent, across in the middle of the room between the levels, to the side
   * of the child.
   */
  private void drawBranch(Graphics2D g, TreeLayout.Placed node) {
    TreeLayout.Placed parent = node.parent;
    boolean turned = scene.display.leftToRight();
    double fromAlong = turned ? parent.x + parent.box.boxWidth : parent.y + parent.box.boxHeight;
    double fromAcross = turned
        ? parent.y + parent.box.boxHeight / 2 : parent.x + parent.box.boxWidth / 2;
    double toAlong = turned ? node.x : node.y;
    double toAcross = turned ? node.y + node.box.boxHeight / 2 : node.x + node.box.boxWidth / 2;
    double middle = (node.gapStart + node.gapEnd) / 2;
    double across = toAcross - fromAcross;
    double radius = Math.min(7 * scene.unit, Math.abs(across) / 2);
    double sign = Math.signum(across);
    Path2D path = new Path2D.Double();
    move(path, turned, fromAlong, fromAcross);
    if (radius < 0.75) {
      line(path, turned, toAlong, toAcross);
    } else {
      line(path, turned, middle - radius, fromAcross);
      curve(path, turned, middle, fromAcross, middle, fromAcross + sign * radius);
      line(path, turned, middle, toAcross - sign * radius);
      curve(path, turned, middle, toAcross, middle + radius, toAcross);
      line(path, turned, toAlong, toAcross);
    }
    Color color = node.box.onPath ? scene.style.highlight : scene.style.line;
    g.setColor(color);
    g.setStroke(new BasicStroke((float) ((node.box.onPath ? 3 : 1.2) * scene.unit),
        BasicStroke.CAP_BUTT, BasicStroke.JOIN_ROUND));
    g.draw(path);
  }

  private static void move(Path2D path, boolean turned, double along, double across) {
    path.moveTo(turned ? along : across, turned ? across : along);
  }

  private static void line(Path2D path, boolean turned, double along, double across) {
    path.lineTo(turned ? along : across, turned ? across : along);
  }

  private static void curve(Path2D path, boolean turned, double controlAlong, double controlAcross,
      double along, double across) {
    path.quadTo(turned ? controlAlong : controlAcross, turned ? controlAcross : controlAlong,
        turned ? along : across, turned ? across : along);
  }

  private void drawNode(Graphics2D g, TreeLayout.Placed node) {
    if (!node.box.label.isEmpty()) {
      Rectangle2D label = node.labelArea();
      double edge = 2 * scene.unit;
      g.setColor(scene.style.background);
      g.fill(new Rectangle2D.Double(label.getX() - edge, label.getY(),
          label.getWidth() + 2 * edge, label.getHeight()));
      boolean left = scene.display.leftToRight();
      node.box.label.draw(g, label.getX(), label.getY(), label.getWidth(),
          left ? TextBlock.Align.LEFT : TextBlock.Align.CENTER);
    }
    node.box.drawBox(g, node.x, node.y);
    if (node.box.hidden > 0) {
      boolean turned = scene.display.leftToRight();
      Rectangle2D badge = node.badgeArea(turned);
      node.box.drawBadge(g, badge.getCenterX(), badge.getCenterY(), turned);
    }
  }

  @Override
  public List<Mark> marks() {
    List<Mark> marks = new ArrayList<>();
    for (TreeLayout.Placed node : layout.nodes()) {
      Rectangle2D area = new Rectangle2D.Double(
          treeX + node.x, treeY + node.y, node.box.boxWidth, node.box.boxHeight);
      TreeNode parent = node.parent == null ? null : node.parent.box.node;
      marks.add(new Mark(area, scene.describe(node.box.node, parent, node.box.hidden),
          scene.tree.number() - 1, ""));
    }
    return marks;
  }

  @Override
  public Hit hit(double x, double y) {
    for (TreeLayout.Placed node : layout.nodes()) {
      boolean inBadge = node.box.hidden > 0
          && node.badgeArea(scene.display.leftToRight()).contains(x - treeX, y - treeY);
      if (inBadge || node.boxArea().contains(x - treeX, y - treeY)) {
        return new Hit(scene.tree.number(), node.box.node);
      }
    }
    return null;
  }
}
