// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.Line2D;
import java.awt.geom.Rectangle2D;
import java.awt.geom.RoundRectangle2D;
import java.util.List;
import org.chartbridge.tree.Embedded;
import org.chartbridge.tree.NodeStatistics;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeNode;

/**
 * What is drawn for one node: the label of the branch that leads to it, its box, and, when its
 * children are hidden, a badge with the number of nodes below it on the side where they would be.
 */
final class NodeBox {
  private static final double TINT = 0.13;
  private static final double MAX_TEXT = 170;
  private static final double MAX_LABEL = 150;
  private static final int MAX_LABEL_LINES = 5;
  private static final int MAX_SURROGATES = 3;
  private static final int MAX_EQUATIONS = 3;

  final TreeNode node;
  final int hidden;
  final boolean onPath;
  final TextBlock label = new TextBlock();
  final double boxWidth;
  final double boxHeight;
  final double badgeWidth;
  final double badgeHeight;
  /** The length of the line between the box and the badge. */
  final double badgeStem;

  private final Scene scene;
  private final TreeStyle style;
  private final double unit;
  private final NodeStatistics statistics;
  private final TextBlock heading = new TextBlock();
  private final TextBlock details = new TextBlock();
  private final String badge;
  private final boolean swatch;
  private final boolean bar;
  private final boolean regression;

  /** @param hidden how many nodes below this one are not shown */
  NodeBox(Scene scene, TreeNode node, TreeNode parent, int hidden) {
    this.scene = scene;
    this.node = node;
    this.hidden = hidden;
    style = scene.style;
    unit = scene.unit;
    statistics = scene.statistics(node);
    onPath = scene.passing(node) > 0;
    swatch = scene.tree.classification() && scene.classIndex(statistics.prediction()) >= 0;
    bar = scene.display.show().distribution() && hasBar();
    regression = node.predictsByRegression();
    writeLabel(parent);
    writeTexts();
    double textWidth = Math.max(heading.width() + swatchRoom(), details.width());
    boxWidth = Math.ceil(Math.max(textWidth, 56 * unit) + 2 * padding());
    double barHeight = bar ? barHeight() + 5 * unit : 0;
    boxHeight = Math.ceil(heading.height() + details.height() + barHeight + 11 * unit);
    badge = hidden == 0 ? "" : "+" + scene.numbers.count(hidden);
    badgeWidth = hidden == 0 ? 0
        : Math.ceil(TreeStyle.width(badge, badgeFont()) + 12 * unit);
    badgeStem = hidden == 0 ? 0 : Math.round(7 * unit);
    badgeHeight = hidden == 0 ? 0 : Math.ceil(TreeStyle.lineHeight(badgeFont()) + 2 * unit);
  }

  private Font badgeFont() {
    return style.small.deriveFont(Font.BOLD);
  }

  private double padding() {
    return 9 * unit;
  }

  private double swatchRoom() {
    return swatch ? 15 * unit : 0;
  }

  private double barHeight() {
    return Math.round(8 * unit);
  }

  private boolean hasBar() {
    if (scene.tree.classification()) {
      return statistics.classCounts() != null;
    }
    return statistics.hasMean() && scene.statistics.highest() > scene.statistics.lowest();
  }

  private void writeLabel(TreeNode parent) {
    boolean always = node.predicate() instanceof Predicate.Constant constant && constant.value();
    if (parent == null && always) {
      return;
    }
    String text = Scene.isRest(node, parent)
        ? "otherwise" : scene.predicates.of(node.predicate());
    int order = scene.order(node, parent);
    label.wrapped(order == 0 ? text : order + ".\u00A0" + text, style.small, style.text,
        MAX_LABEL * unit, MAX_LABEL_LINES);
    if (!scene.display.show().missing()) {
      return;
    }
    List<String> surrogates = scene.predicates.surrogates(node.predicate());
    int shown = surrogates.size() > MAX_SURROGATES ? MAX_SURROGATES - 1 : surrogates.size();
    for (String surrogate : surrogates.subList(0, shown)) {
      label.wrapped("else " + surrogate, style.smallItalic, style.muted, MAX_LABEL * unit, 3);
    }
    if (shown < surrogates.size()) {
      label.line("else " + (surrogates.size() - shown) + " more", style.smallItalic, style.muted);
    }
    if (parent != null && parent.isDefault(node)) {
      label.line("or missing", style.smallItalic, style.muted);
    }
  }

  private void writeTexts() {
    String prediction = scene.prediction(node);
    double maxWidth = MAX_TEXT * unit;
    if (regression) {
      writeEquations(maxWidth);
    } else if (prediction == null) {
      heading.line("no prediction", style.smallItalic, style.muted);
    } else {
      heading.wrapped(prediction, style.bold, style.text, maxWidth, 3);
    }
    String count = scene.display.show().counts() && statistics.hasCount()
        ? "n = " + scene.numbers.count(statistics.count()) : "";
    String share = scene.display.show().shares() && statistics.hasShare()
        ? scene.numbers.share(statistics.share()) : "";
    String both = count + (count.isEmpty() || share.isEmpty() ? "" : " \u00B7 ") + share;
    details.line(both, style.small, style.muted);
    if (statistics.hasSpread() && !node.isLeaf() || statistics.spread() > 0) {
      details.line("\u00B1 " + scene.numbers.number(statistics.spread()), style.small, style.muted);
    }
    if (node.embedded() instanceof Embedded.Tree inner) {
      details.wrapped(scene.embedded(inner), style.smallItalic, style.muted, maxWidth, 4);
    }
    details.wrapped(scene.remarks(node), style.smallItalic, style.muted, maxWidth, 4);
    if (scene.endsAt(node)) {
      details.wrapped("predicts when no branch applies", style.smallItalic, style.muted, maxWidth,
          2);
    }
    if (onPath && scene.samples.records() > 1) {
      String samples = scene.passing(node) + " of " + scene.samples.records() + " samples";
      details.line(samples, style.small.deriveFont(Font.BOLD), style.highlight);
    }
  }

  /** The equations in short; the tooltip has them in full. */
  private void writeEquations(double maxWidth) {
    List<String> equations = scene.equations(node);
    int shown = equations.size() > MAX_EQUATIONS ? MAX_EQUATIONS - 1 : equations.size();
    for (String equation : equations.subList(0, shown)) {
      heading.wrapped(equation, style.normal, style.text, maxWidth, 3);
    }
    if (shown < equations.size()) {
      heading.line("\u2026 " + (equations.size() - shown) + " more equations", style.small,
          style.muted);
    }
    details.line(RegressionText.kind((Embedded.Regression) node.embedded()), style.smallItalic,
        style.muted);
  }

  /** Draws the box with its upper left corner at a point. */
  void drawBox(Graphics2D g, double x, double y) {
    double arc = 7 * unit;
    RoundRectangle2D box =
        new RoundRectangle2D.Double(x + 0.5, y + 0.5, boxWidth - 1, boxHeight - 1, arc, arc);
    Color color = color();
    g.setColor(color == null ? style.background : style.tint(color, strength()));
    g.fill(box);
    g.setColor(onPath ? style.highlight : color == null ? style.line : style.tint(color, 0.75));
    g.setStroke(new BasicStroke((float) ((onPath ? 2.4 : 1) * unit)));
    g.draw(box);
    drawContent(g, x, y);
  }

  private void drawContent(Graphics2D g, double x, double y) {
    double top = y + 5 * unit;
    double inner = boxWidth - 2 * padding();
    double headingWidth = heading.width() + swatchRoom();
    double left = x + padding() + (inner - headingWidth) / 2;
    if (swatch) {
      double side = Math.round(9 * unit);
      double line = heading.height() / heading.texts().size();
      g.setColor(style.group(scene.classIndex(statistics.prediction())));
      g.fill(new Rectangle2D.Double(left, Math.round(top + (line - side) / 2), side, side));
    }
    heading.draw(g, left + swatchRoom(), top, heading.width(), TextBlock.Align.LEFT);
    top += heading.height();
    details.draw(g, x + padding(), top, inner, TextBlock.Align.CENTER);
    top += details.height() + 3 * unit;
    if (bar) {
      Rectangle2D area = new Rectangle2D.Double(x + padding(), Math.round(top), inner, barHeight());
      if (scene.tree.classification()) {
        drawClasses(g, area);
      } else {
        drawScale(g, area);
      }
    }
  }

  /** Nodes of a regression are the stronger in colour the higher their prediction. */
  private double strength() {
    if (scene.tree.classification() || !(scene.statistics.highest() > scene.statistics.lowest())) {
      return TINT;
    }
    return 0.04 + 0.34 * scene.statistics.position(statistics.mean());
  }

  private Color color() {
    if (scene.tree.classification()) {
      return swatch ? style.group(scene.classIndex(statistics.prediction())) : null;
    }
    return statistics.hasMean() ? style.group(0) : null;
  }

  private void drawClasses(Graphics2D g, Rectangle2D area) {
    double sum = 0;
    for (double count : statistics.classCounts()) {
      sum += count;
    }
    double left = area.getX();
    for (int i = 0; i < statistics.classCounts().length; i++) {
      double width = area.getWidth() * statistics.classCounts()[i] / sum;
      if (width > 0) {
        g.setColor(style.group(scene.classIndex(scene.statistics.classes().get(i))));
        g.fill(new Rectangle2D.Double(left, area.getY(), width, area.getHeight()));
        left += width;
      }
    }
    g.setColor(style.background);
    g.setStroke(new BasicStroke((float) (0.8 * unit)));
    left = area.getX();
    for (double count : statistics.classCounts()) {
      left += area.getWidth() * count / sum;
      if (count > 0 && left < area.getMaxX() - 0.5) {
        g.draw(new Line2D.Double(left, area.getY(), left, area.getMaxY()));
      }
    }
  }

  private void drawScale(Graphics2D g, Rectangle2D area) {
    double middle = area.getCenterY();
    g.setColor(style.line);
    g.setStroke(new BasicStroke((float) unit));
    g.draw(new Line2D.Double(area.getX(), middle, area.getMaxX(), middle));
    g.setColor(style.group(0));
    if (statistics.hasSpread()) {
      double from = position(statistics.mean() - statistics.spread(), area);
      double to = position(statistics.mean() + statistics.spread(), area);
      double half = area.getHeight() / 4;
      g.setColor(style.tint(style.group(0), 0.55));
      g.fill(new Rectangle2D.Double(from, middle - half, to - from, 2 * half));
      g.setColor(style.group(0));
    }
    double width = Math.max(2, Math.round(3 * unit));
    double at = position(statistics.mean(), area);
    double left = Math.min(area.getMaxX() - width, Math.max(area.getX(), at - width / 2));
    g.fill(new Rectangle2D.Double(left, area.getY(), width, area.getHeight()));
  }

  private double position(double value, Rectangle2D area) {
    return area.getX() + area.getWidth() * scene.statistics.position(value);
  }

  /** Draws the badge around a point, with the line that leads to it. */
  void drawBadge(Graphics2D g, double centerX, double centerY, boolean leftToRight) {
    double x = leftToRight ? centerX - badgeWidth / 2 - badgeStem : centerX;
    double y = leftToRight ? centerY : centerY - badgeHeight / 2 - badgeStem;
    g.setColor(style.line);
    g.setStroke(new BasicStroke((float) (1.2 * unit)));
    g.draw(new Line2D.Double(x, y, centerX, centerY));
    drawBadge(g, style, unit, badge, badgeFont(), centerX, centerY, badgeWidth, badgeHeight);
  }

  static void drawBadge(Graphics2D g, TreeStyle style, double unit, String text, Font font,
      double centerX, double centerY, double width, double height) {
    double left = centerX - width / 2;
    double top = centerY - height / 2;
    RoundRectangle2D pill = new RoundRectangle2D.Double(left, top, width, height, height, height);
    g.setColor(style.background);
    g.fill(pill);
    g.setColor(style.muted);
    g.setStroke(new BasicStroke((float) unit));
    g.draw(pill);
    new TextBlock().line(text, font, style.text)
        .draw(g, left, top + unit, width, TextBlock.Align.CENTER);
  }
}
