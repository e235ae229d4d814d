// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.Line2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.image.PictureWords;

/** What stands above a tree: title, facts, notes, and the legend. */
final class Header {
  /** What stands in front of an entry of the legend. */
  private enum Symbol {
    SWATCH,
    PATH,
    BADGE,
    NONE
  }

  private record Entry(Symbol symbol, Color color, String text) {}

  private record Placed(Entry entry, double x, double y, String text) {}

  private static final String BADGE_TEXT = "+n";
  private static final double MAX_ENTRY = 260;

  private final TreeStyle style;
  private final double unit;
  private final List<Entry> entries = new ArrayList<>();
  private String title = "";
  private final List<String> facts = new ArrayList<>();
  private final List<String> notes = new ArrayList<>();

  private TextBlock texts = new TextBlock();
  private final List<Placed> legend = new ArrayList<>();
  private double width;
  private double height;

  Header(TreeStyle style) {
    this.style = style;
    this.unit = style.fontSize / 12;
  }

  Header title(String text) {
    title = text;
    return this;
  }

  Header facts(List<String> texts) {
    facts.addAll(texts);
    return this;
  }

  /** Adds a note; nothing when it is empty. */
  Header note(String text) {
    if (!text.isEmpty()) {
      notes.add(text);
    }
    return this;
  }

  Header group(Color color, String text) {
    entries.add(new Entry(Symbol.SWATCH, color, text));
    return this;
  }

  Header path(String text) {
    entries.add(new Entry(Symbol.PATH, style.highlight, text));
    return this;
  }

  Header badge(String text) {
    entries.add(new Entry(Symbol.BADGE, style.muted, text));
    return this;
  }

  Header remark(String text) {
    entries.add(new Entry(Symbol.NONE, style.muted, text));
    return this;
  }

  /** Lays everything out within a width. */
  void layOut(double maxWidth) {
    texts = new TextBlock();
    legend.clear();
    texts.wrapped(title, style.title, style.text, maxWidth, 4);
    texts.wrapped(String.join(" \u00B7 ", facts), style.normal, style.muted, maxWidth, 6);
    for (String note : notes) {
      texts.wrapped(note, style.small, style.muted, maxWidth, 6);
    }
    width = texts.width();
    height = texts.height();
    if (!entries.isEmpty()) {
      height += 8 * unit;
      layOutLegend(maxWidth);
    }
  }

  private void layOutLegend(double maxWidth) {
    double line = TreeStyle.lineHeight(style.normal) + 3 * unit;
    double x = 0;
    for (Entry entry : entries) {
      double limit =
          Math.min(maxWidth, entry.symbol() == Symbol.NONE ? maxWidth : MAX_ENTRY * unit);
      double room = symbolRoom(entry);
      List<String> lines = TextBlock.wrap(entry.text(), style.normal, limit - room,
          entry.symbol() == Symbol.NONE ? 4 : 1);
      double entryWidth = 0;
      for (String text : lines) {
        entryWidth = Math.max(entryWidth, room + TreeStyle.width(text, style.normal));
      }
      if (x > 0 && x + entryWidth > maxWidth) {
        x = 0;
        height += line;
      }
      for (int i = 0; i < lines.size(); i++) {
        height += i == 0 ? 0 : line;
        Entry shown = i == 0 ? entry : new Entry(Symbol.NONE, entry.color(), "");
        legend.add(new Placed(shown, x, height, lines.get(i)));
      }
      width = Math.max(width, x + entryWidth);
      x += entryWidth + 18 * unit;
    }
    height += line;
  }

  private Font badgeFont() {
    return style.small.deriveFont(Font.BOLD);
  }

  private double badgeWidth() {
    return Math.ceil(TreeStyle.width(BADGE_TEXT, badgeFont()) + 12 * unit);
  }

  private double symbolRoom(Entry entry) {
    return switch (entry.symbol()) {
      case SWATCH -> 17 * unit;
      case PATH -> 30 * unit;
      case BADGE -> badgeWidth() + 6 * unit;
      default -> 0;
    };
  }

  /** The same in words. */
  PictureWords words() {
    List<String> sentences = new ArrayList<>();
    if (!facts.isEmpty()) {
      sentences.add(String.join(", ", facts) + ".");
    }
    notes.forEach(note -> sentences.add(note.endsWith(".") ? note : note + "."));
    List<String> classes = entries.stream().filter(entry -> entry.symbol() == Symbol.SWATCH)
        .map(Entry::text).toList();
    if (!classes.isEmpty()) {
      sentences.add("Classes: " + String.join(", ", classes) + ".");
    }
    String name = title.isBlank() ? "Decision tree" : title.strip();
    // The words of the drawing itself are English, whatever language the model's names are in.
    return new PictureWords(name, String.join(" ", sentences), "en");
  }

  double width() {
    return width;
  }

  double height() {
    return height;
  }

  void draw(Graphics2D g, double x, double y) {
    texts.draw(g, x, y, width, TextBlock.Align.LEFT);
    for (Placed placed : legend) {
      drawEntry(g, placed, x + placed.x(), y + placed.y());
    }
  }

  private void drawEntry(Graphics2D g, Placed placed, double x, double y) {
    double line = TreeStyle.lineHeight(style.normal);
    double middle = y + line / 2;
    Entry entry = placed.entry();
    g.setColor(entry.color());
    switch (entry.symbol()) {
      case SWATCH -> {
        double side = Math.round(11 * unit);
        g.fill(new Rectangle2D.Double(Math.round(x), Math.round(middle - side / 2), side, side));
      }
      case PATH -> {
        g.setStroke(new BasicStroke((float) (3 * unit)));
        g.draw(new Line2D.Double(x + 2 * unit, middle, x + 22 * unit, middle));
      }
      case BADGE -> {
        double high = Math.ceil(TreeStyle.lineHeight(badgeFont()) + 2 * unit);
        NodeBox.drawBadge(g, style, unit, BADGE_TEXT, badgeFont(), x + badgeWidth() / 2, middle,
            badgeWidth(), high);
      }
      default -> { }
    }
    Color color = entry.symbol() == Symbol.NONE ? style.muted : style.text;
    new TextBlock().line(placed.text(), style.normal, color)
        .draw(g, x + symbolRoom(entry), y, 0, TextBlock.Align.LEFT);
  }
}
