// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.Rectangle;
import java.awt.RenderingHints;
import java.awt.Shape;
import java.awt.geom.Rectangle2D;
import java.awt.geom.RoundRectangle2D;
import java.util.ArrayList;
import java.util.HashSet;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.draw.Mark;
import org.chartbridge.image.PictureWords;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.OtherModel;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeModel;

/**
 * The picture of an ensemble: a small drawing of each tree, in the groups that the document puts
 * them in.
 */
final class OverviewPicture implements TreePicture {
  private static final double MARGIN = 22;
  private static final double CARD_WIDTH = 136;
  private static final double THUMBNAIL_HEIGHT = 64;
  private static final double GAP = 12;
  private static final double INDENT = 18;
  private static final int LEAST_COLUMNS = 4;
  private static final int MOST_COLUMNS = 16;

  /** A drawn member of the ensemble. */
  private static final class Card {
    final TreeModel tree;
    final Thumbnail thumbnail;
    final TextBlock texts;
    final Map<String, String> values;
    double x;
    double y;
    double height;

    Card(TreeModel tree, Thumbnail thumbnail, TextBlock texts, Map<String, String> values) {
      this.tree = tree;
      this.thumbnail = thumbnail;
      this.texts = texts;
      this.values = values;
    }
  }

  private record Heading(TextBlock text, double x, double y) {}

  private final TreeDocument document;
  private final TreeDisplay display;
  private final TreeStyle style;
  private final SamplePaths samples;
  private final NumberText numbers;
  private final double unit;
  private final Header header;
  private final List<Card> cards = new ArrayList<>();
  private final List<Heading> headings = new ArrayList<>();
  private final int columns;
  private final int width;
  private final int height;
  /** The lower end of what is laid out so far. */
  private double bottom;

  OverviewPicture(TreeDocument document, TreeDisplay display, TreeStyle style, SamplePaths samples,
      List<String> classes) {
    this.document = document;
    this.display = display;
    this.style = style;
    this.samples = samples;
    numbers = new NumberText(display.locale(), display.digits());
    unit = style.fontSize / 12;
    int largest = largestGroup(document.model());
    columns = (int) Math.max(LEAST_COLUMNS,
        Math.min(MOST_COLUMNS, Math.round(Math.sqrt(1.7 * largest))));
    header = header(classes);
    double contentWidth = columns * (cardWidth() + gap()) - gap() + indent(document.model());
    header.layOut(contentWidth);
    bottom = margin() + header.height() + 14 * unit;
    layOut(document.model(), margin(), true);
    width = (int) Math.ceil(Math.max(contentWidth, header.width()) + 2 * margin());
    height = (int) Math.ceil(bottom - gap() + margin());
  }

  private double margin() {
    return Math.round(MARGIN * unit);
  }

  private double cardWidth() {
    return Math.round(CARD_WIDTH * unit);
  }

  private double gap() {
    return Math.round(GAP * unit);
  }

  private static int largestGroup(ModelPart part) {
    if (!(part instanceof Ensemble ensemble)) {
      return 1;
    }
    int own = 0;
    int largest = 1;
    for (Ensemble.Segment segment : ensemble.segments()) {
      own += segment.model() instanceof Ensemble ? 0 : 1;
      largest = Math.max(largest, largestGroup(segment.model()));
    }
    return Math.max(own, largest);
  }

  private double indent(ModelPart part) {
    double most = 0;
    if (part instanceof Ensemble ensemble) {
      for (Ensemble.Segment segment : ensemble.segments()) {
        if (segment.model() instanceof Ensemble) {
          most = Math.max(most, Math.round(INDENT * unit) + indent(segment.model()));
        }
      }
    }
    return most;
  }

  private Header header(List<String> classes) {
    Header made = new Header(style);
    Ensemble ensemble = (Ensemble) document.model();
    made.title(display.title() != null ? display.title()
        : ensemble.target().isEmpty() ? "Ensemble of trees" : ensemble.target());
    List<String> facts = new ArrayList<>();
    facts.add("Ensemble of " + numbers.count(document.trees().size()) + " trees");
    facts.add(EnsembleText.joining(ensemble));
    made.facts(facts);
    made.note(new RemarkText(numbers).of(ensemble.remarks()));
    if (display.show().legend()) {
      TreeModel first = document.trees().get(0);
      for (int i = 0; i < classes.size(); i++) {
        made.group(style.group(i), first.classLabel(classes.get(i)));
      }
      if (document.trees().stream().anyMatch(tree -> !tree.classification())) {
        made.remark("The darker a node, the higher its prediction within its tree.");
      }
      SampleText.legend(made, samples, document.trees());
    }
    return made;
  }

  private void layOut(ModelPart part, double x, boolean top) {
    Ensemble ensemble = (Ensemble) part;
    List<Card> row = new ArrayList<>();
    int number = 0;
    for (Ensemble.Segment segment : ensemble.segments()) {
      number++;
      if (segment.model() instanceof Ensemble inner) {
        finishRow(row, x);
        heading(inner, segment, number, x);
        layOut(inner, x + Math.round(INDENT * unit), false);
        bottom += top ? gap() / 2 : 0;
        continue;
      }
      row.add(card(segment, number));
      if (row.size() == columns) {
        finishRow(row, x);
      }
    }
    finishRow(row, x);
  }

  private void heading(Ensemble inner, Ensemble.Segment segment, int number, double x) {
    double room = columns * (cardWidth() + gap());
    TextBlock text = new TextBlock();
    String target = inner.target().isEmpty() ? "" : ": " + inner.target();
    text.wrapped("Part " + number + target, style.bold, style.text, room, 2);
    List<String> facts = new ArrayList<>();
    facts.add(EnsembleText.joining(inner));
    addConditions(segment, inner, facts);
    text.wrapped(String.join(" \u00B7 ", facts), style.small, style.muted, room, 3);
    text.wrapped(new RemarkText(numbers).of(inner.remarks()), style.small, style.muted, room, 4);
    headings.add(new Heading(text, x, bottom));
    bottom += text.height() + 6 * unit;
  }

  private void addConditions(Ensemble.Segment segment, ModelPart model, List<String> facts) {
    String weight = EnsembleText.weight(segment, numbers);
    if (!weight.isEmpty()) {
      facts.add(weight);
    }
    boolean always = segment.predicate() instanceof Predicate.Constant constant && constant.value();
    TreeModel inside = always ? null : firstTree(model);
    if (inside != null) {
      facts.add("when "
          + new PredicateText(inside.fields(), numbers, false).of(segment.predicate()));
    } else if (!always) {
      facts.add("on a condition");
    }
  }

  private static TreeModel firstTree(ModelPart part) {
    if (part instanceof TreeModel tree) {
      return tree;
    }
    if (part instanceof Ensemble ensemble) {
      for (Ensemble.Segment segment : ensemble.segments()) {
        TreeModel tree = firstTree(segment.model());
        if (tree != null) {
          return tree;
        }
      }
    }
    return null;
  }

  private Card card(Ensemble.Segment segment, int number) {
    double room = cardWidth() - 14 * unit;
    List<String> facts = new ArrayList<>();
    TextBlock texts = new TextBlock();
    Map<String, String> values = new LinkedHashMap<>();
    TreeModel tree = segment.model() instanceof TreeModel model ? model : null;
    Thumbnail thumbnail = null;
    if (tree == null) {
      String element = ((OtherModel) segment.model()).element();
      texts.wrapped("Part " + number, style.bold, style.text, room, 1);
      texts.wrapped(element + ", no tree", style.small, style.muted, room, 2);
      values.put("Part", Integer.toString(number));
      values.put("Model", element);
    } else {
      thumbnail = new Thumbnail(new Scene(tree, tree, display, style, samples,
          document.classes()));
      texts.wrapped("Tree " + tree.number(), style.bold, style.text, room, 1);
      facts.addAll(thumbnail.facts());
      values.put("Tree", Integer.toString(tree.number()));
      values.put("Size", String.join(", ", facts));
      if (!tree.remarks().isEmpty()) {
        String remarks = new RemarkText(numbers).of(tree.remarks());
        facts.add(remarks);
        values.put("Remarks", remarks);
      }
    }
    if (segment.id() != null) {
      values.put("Segment", segment.id());
    }
    values.put("Weight", segment.weightField() == null
        ? numbers.number(segment.weight()) : "the value of " + segment.weightField());
    List<String> conditions = new ArrayList<>();
    addConditions(segment, segment.model(), conditions);
    facts.addAll(conditions);
    for (String fact : facts) {
      texts.wrapped(fact, style.small, style.muted, room, 3);
    }
    return new Card(tree, thumbnail, texts, values);
  }

  private void finishRow(List<Card> row, double x) {
    if (row.isEmpty()) {
      return;
    }
    double texts = 0;
    boolean drawn = false;
    for (Card card : row) {
      texts = Math.max(texts, card.texts.height());
      drawn |= card.thumbnail != null;
    }
    double rowHeight =
        Math.ceil(texts + (drawn ? (THUMBNAIL_HEIGHT + 8) * unit : 0) + 14 * unit);
    for (int i = 0; i < row.size(); i++) {
      Card card = row.get(i);
      card.x = x + i * (cardWidth() + gap());
      card.y = Math.round(bottom);
      card.height = rowHeight;
    }
    cards.addAll(row);
    row.clear();
    bottom = Math.round(bottom) + rowHeight + gap();
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
    return style.background;
  }

  @Override
  public void draw(Graphics2D g) {
    g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    g.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
    g.setColor(style.background);
    g.fillRect(0, 0, width, height);
    header.draw(g, margin(), margin());
    Shape clip = g.getClip();
    Rectangle visible = clip == null ? new Rectangle(width, height) : clip.getBounds();
    for (Heading heading : headings) {
      heading.text().draw(
          g, heading.x(), heading.y(), heading.text().width(), TextBlock.Align.LEFT);
    }
    for (Card card : cards) {
      if (area(card).intersects(visible)) {
        draw(g, card);
      }
    }
  }

  private Rectangle2D area(Card card) {
    return new Rectangle2D.Double(card.x, card.y, cardWidth(), card.height);
  }

  private void draw(Graphics2D g, Card card) {
    double arc = 8 * unit;
    g.setColor(style.tint(style.line, 0.45));
    g.setStroke(new BasicStroke((float) unit));
    g.draw(new RoundRectangle2D.Double(
        card.x + 0.5, card.y + 0.5, cardWidth() - 1, card.height - 1, arc, arc));
    card.texts.draw(g, card.x + 7 * unit, card.y + 6 * unit, cardWidth(), TextBlock.Align.LEFT);
    if (card.thumbnail != null) {
      double high = THUMBNAIL_HEIGHT * unit;
      card.thumbnail.draw(g, new Rectangle2D.Double(card.x + 8 * unit,
          card.y + card.height - high - 8 * unit, cardWidth() - 16 * unit, high));
    }
  }

  @Override
  public List<Mark> marks() {
    List<Mark> marks = new ArrayList<>();
    for (Card card : cards) {
      marks.add(new Mark(
          area(card), card.values, card.tree == null ? -1 : card.tree.number() - 1, ""));
    }
    return marks;
  }

  @Override
  public Hit hit(double x, double y) {
    for (Card card : cards) {
      if (card.tree != null && area(card).contains(x, y)) {
        return new Hit(card.tree.number(), null);
      }
    }
    return null;
  }

  /** All areas that hold something, for checks of the layout. */
  List<Rectangle2D> areas() {
    List<Rectangle2D> areas = new ArrayList<>();
    cards.forEach(card -> areas.add(area(card)));
    Set<Heading> seen = new HashSet<>(headings);
    seen.forEach(heading -> areas.add(new Rectangle2D.Double(
        heading.x(), heading.y(), heading.text().width(), heading.text().height())));
    return areas;
  }
}
