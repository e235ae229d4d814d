// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.AffineTransform;
import java.awt.geom.Line2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ColumnKind;

/** The legend: what colours, shapes and sizes mean. */
final class LegendBox {
  private static final int SLICES = 64;

  /** A colour's name with a sample of the marks that have it. */
  record Entry(String text, Color color, int ink, boolean surface, boolean line, boolean point) {}

  /** A heading with entries, a colour scale, or sizes; one of the three. */
  record Block(String title, List<Entry> entries, ColorAssignment scale, Sizes sizes) {}

  /** Markers of the size channel with what they stand for. */
  record Sizes(PointLayer.SizeScale scale, List<Double> values, List<String> texts) {}

  /** A legend laid out: how large it is, and its parts. */
  record Laid(double width, double height, List<Part> parts) {
    void draw(Graphics2D g, double x, double y) {
      parts.forEach(part -> part.draw(g, x, y));
    }
  }

  /** Something that draws itself relative to the legend's corner. */
  interface Part {
    void draw(Graphics2D g, double x, double y);
  }

  private final Plan plan;
  private final Inks inks;
  private final List<Block> blocks;
  private final Typography type;
  private final Font font;
  private final Font titleFont;
  private final double line;
  private final double swatch;
  private final double gap;

  LegendBox(Plan plan, Inks inks, List<Block> blocks) {
    this.plan = plan;
    this.inks = inks;
    this.blocks = blocks;
    type = plan.type;
    font = type.legend;
    titleFont = type.legendTitle;
    line = type.lineHeight(font);
    swatch = Math.round(15 * font.getSize2D() / 12);
    gap = font.getSize2D() * 0.55;
  }

  boolean isEmpty() {
    return blocks.isEmpty();
  }

  /** Blocks below each other, for a legend at a side. */
  Laid vertical(double maxWidth, double maxHeight) {
    List<Part> parts = new ArrayList<>();
    double width = 0;
    double y = 0;
    for (int i = 0; i < blocks.size(); i++) {
      Block block = blocks.get(i);
      double share = (maxHeight - y) / (blocks.size() - i);
      if (i > 0) {
        y += line * 0.7;
      }
      double[] size = vertical(block, maxWidth, Math.max(share, line * 3), y, parts);
      width = Math.max(width, size[0]);
      y += size[1];
    }
    return new Laid(width, y, parts);
  }

  private double[] vertical(
      Block block, double maxWidth, double maxHeight, double top, List<Part> parts) {
    double y = top;
    double width = 0;
    for (String text : titleLines(block, maxWidth)) {
      width = Math.max(width, type.width(text, titleFont));
      title(text, 0, y, parts);
      y += line;
    }
    y += y > top ? line * 0.2 : 0;
    double[] body;
    if (block.scale != null) {
      body = verticalScale(block.scale, Math.min(maxHeight - (y - top), line * 10), y, parts);
    } else if (block.sizes != null) {
      body = verticalSizes(block.sizes, maxWidth, y, parts);
    } else {
      body = columns(block.entries, maxWidth, maxHeight - (y - top), y, parts);
    }
    return new double[] {Math.max(width, body[0]), y - top + body[1]};
  }

  private List<String> titleLines(Block block, double maxWidth) {
    return block.title == null || block.title.isBlank()
        ? List.of() : type.wrap(block.title, titleFont, maxWidth, 2);
  }

  private void title(String text, double x, double y, List<Part> parts) {
    parts.add((g, ox, oy) -> {
      g.setPaint(plan.style.text);
      type.draw(g, text, titleFont, ox + x, type.baseline(titleFont, oy + y), 0);
    });
  }

  private void text(String text, double x, double baseline, List<Part> parts) {
    parts.add((g, ox, oy) -> {
      g.setPaint(plan.style.text);
      type.draw(g, text, font, ox + x, oy + baseline, 0);
    });
  }

  private double[] columns(
      List<Entry> entries, double maxWidth, double maxHeight, double top, List<Part> parts) {
    int perColumn = (int) Math.max(1, Math.floor(maxHeight / line));
    int wanted = (entries.size() + perColumn - 1) / perColumn;
    int columns =
        Math.max(1, Math.min(wanted, (int) (maxWidth / (swatch + gap + 50 * type.factor))));
    double column = (maxWidth - (columns - 1) * gap * 2) / columns;
    double room = column - swatch - gap;
    boolean wraps = columns == 1 && lines(entries, room) <= perColumn;
    int shown = Math.min(entries.size(), perColumn * columns);
    boolean more = shown < entries.size();
    shown = more ? Math.max(0, perColumn * columns - 1) : shown;
    int rows = columns == 1 ? shown + (more ? 1 : 0)
        : (shown + (more ? 1 : 0) + columns - 1) / columns;
    double x = 0;
    double width = 0;
    double y = top;
    double bottom = top;
    double columnWidth = 0;
    for (int i = 0; i < shown; i++) {
      if (i > 0 && columns > 1 && i % rows == 0) {
        x += columnWidth + gap * 2;
        columnWidth = 0;
        y = top;
      }
      Entry entry = entries.get(i);
      List<String> texts =
          wraps ? type.wrap(entry.text, font, room, 3) : List.of(type.cut(entry.text, font, room));
      columnWidth = Math.max(columnWidth, swatch + gap + type.width(texts, font));
      entry(entry, texts, x, y, parts);
      y += line * Math.max(1, texts.size());
      width = Math.max(width, x + columnWidth);
      bottom = Math.max(bottom, y);
    }
    if (more) {
      String rest = type.cut("\u2026 +" + plan.formats.number(entries.size() - shown), font, room);
      text(rest, x + swatch + gap, type.baseline(font, y), parts);
      width = Math.max(width, x + swatch + gap + type.width(rest, font));
      bottom = Math.max(bottom, y + line);
    }
    return new double[] {width, bottom - top};
  }

  private int lines(List<Entry> entries, double room) {
    int lines = 0;
    for (Entry entry : entries) {
      lines += Math.max(1, type.wrap(entry.text, font, room, 3).size());
    }
    return lines;
  }

  private void entry(Entry entry, List<String> texts, double x, double y, List<Part> parts) {
    parts.add((g, ox, oy) -> {
      sample(g, entry, ox + x, oy + y);
      g.setPaint(plan.style.text);
      double top = oy + y;
      for (String text : texts) {
        type.draw(g, text, font, ox + x + swatch + gap, type.baseline(font, top), 0);
        top += line;
      }
    });
  }

  private void sample(Graphics2D g, Entry entry, double x, double y) {
    double side = swatch * 0.8;
    double middle = y + line / 2;
    if (entry.surface) {
      double left = x + (swatch - side) / 2;
      inks.fillRect(g, new Rectangle2D.Double(Math.round(left), Math.round(middle - side / 2),
          Math.round(side), Math.round(side)), entry.color, entry.ink);
    }
    if (entry.line) {
      g.setPaint(entry.color);
      g.setStroke(inks.line(Math.max(0, entry.ink)));
      g.draw(new Line2D.Double(x, middle, x + swatch, middle));
    }
    if (entry.point) {
      double diameter = Math.min(swatch, plan.style.markerSize * type.factor * 1.15);
      g.setPaint(entry.color);
      g.fill(AffineTransform.getTranslateInstance(x + swatch / 2, middle)
          .createTransformedShape(Inks.marker(inks.shape(Math.max(0, entry.ink)), diameter)));
    }
  }

  private List<Tick> scaleTicks(ColorAssignment scale, double length, boolean below) {
    double min = scale.extent.min();
    double max = scale.extent.max();
    boolean time = scale.column != null && scale.column.kind() == ColumnKind.TIME
        && scale.channel.aggregate() != org.chartbridge.chart.Aggregate.COUNT;
    if (!(max > min)) {
      return List.of(Tick.of(min, plan.format(scale.channel, scale.column, min)));
    }
    if (time) {
      return List.of(Tick.of(min, plan.format(scale.channel, scale.column, min)),
          Tick.of(max, plan.format(scale.channel, scale.column, max)));
    }
    double rough = (max - min) / Math.max(2, length / (below ? 50 * type.factor : line * 1.35));
    List<Tick> ticks = Ticks.linear(min, max, rough,
        (list, step)
            -> !below
            || type.width(list.get(list.size() - 1).lines(), font) + gap * 1.5
                < step / (max - min) * length,
        plan.formats::ticks);
    return ticks.size() >= 2 ? ticks : List.of(Tick.of(min, plan.formats.number(min)),
        Tick.of(max, plan.formats.number(max)));
  }

  private double[] verticalScale(
      ColorAssignment scale, double height, double top, List<Part> parts) {
    double bar = swatch * 0.9;
    double inset = line / 2;
    double length = Math.max(line * 2, height - line);
    parts.add((g, ox, oy) -> slices(g, scale, ox, oy + top + inset, bar, length, false));
    double width = bar;
    for (Tick tick : scaleTicks(scale, length, false)) {
      double share = share(scale, tick.value());
      double y = top + inset + (1 - share) * length;
      String text = String.join(" ", tick.lines());
      text(text, bar + gap, y + type.capHeight(font) / 2, parts);
      width = Math.max(width, bar + gap + type.width(text, font));
    }
    return new double[] {width, length + line};
  }

  private static double share(ColorAssignment scale, double value) {
    double span = scale.extent.max() - scale.extent.min();
    return span > 0 ? (value - scale.extent.min()) / span : 0.5;
  }

  private void slices(Graphics2D g, ColorAssignment scale, double x, double y, double width,
      double height, boolean lying) {
    double min = scale.extent.min();
    double span = scale.extent.max() - min;
    for (int i = 0; i < SLICES; i++) {
      Color color = scale.color(plan.style, min + span * (i + 0.5) / SLICES);
      double from = (double) i / SLICES;
      double to = (i + 1.0) / SLICES;
      Rectangle2D slice = lying
          ? new Rectangle2D.Double(x + from * width, y, (to - from) * width, height)
          : new Rectangle2D.Double(x, y + (1 - to) * height, width, (to - from) * height);
      inks.fillRect(g, slice, color, -1);
    }
  }

  private double[] verticalSizes(Sizes sizes, double maxWidth, double top, List<Part> parts) {
    double widest = sizes.scale.diameter(sizes.values.get(0));
    double y = top;
    double width = 0;
    double column = Math.max(swatch, widest);
    for (int i = 0; i < sizes.values.size(); i++) {
      double diameter = sizes.scale.diameter(sizes.values.get(i));
      double height = Math.max(line, diameter + 2);
      String text = type.cut(sizes.texts.get(i), font, maxWidth - column - gap);
      circle(diameter, column / 2, y + height / 2, parts);
      text(text, column + gap, y + height / 2 + type.capHeight(font) / 2, parts);
      width = Math.max(width, column + gap + type.width(text, font));
      y += height;
    }
    return new double[] {width, y - top};
  }

  private void circle(double diameter, double x, double y, List<Part> parts) {
    parts.add((g, ox, oy) -> {
      g.setPaint(plan.style.axisColor);
      g.fill(AffineTransform.getTranslateInstance(ox + x, oy + y)
          .createTransformedShape(Inks.marker(0, diameter)));
    });
  }

  /** Blocks beside each other in rows, for a legend above or below. */
  Laid horizontal(double maxWidth, double maxHeight) {
    List<Part> parts = new ArrayList<>();
    double[] cursor = {0, 0};
    double width = 0;
    double bottom = 0;
    for (Block block : blocks) {
      if (cursor[0] > 0) {
        cursor[0] = 0;
        cursor[1] = bottom + line * 0.2;
      }
      String title = block.title == null ? "" : type.cut(block.title, titleFont, maxWidth * 0.4);
      if (!title.isBlank()) {
        title(title, 0, cursor[1], parts);
        cursor[0] = type.width(title, titleFont) + gap * 2;
      }
      double[] size;
      if (block.scale != null) {
        size = horizontalScale(block.scale, maxWidth, cursor, parts);
      } else if (block.sizes != null) {
        size = horizontalSizes(block.sizes, maxWidth, cursor, parts);
      } else {
        size = flow(block.entries, maxWidth, Math.max(line, maxHeight - cursor[1]), cursor, parts);
      }
      width = Math.max(width, size[0]);
      bottom = size[1];
      cursor[0] = 1;
    }
    return new Laid(width, bottom, parts);
  }

  private double[] flow(
      List<Entry> entries, double maxWidth, double maxHeight, double[] cursor, List<Part> parts) {
    double indent = cursor[0];
    double x = indent;
    double y = cursor[1];
    double last = cursor[1] + maxHeight - line;
    double width = x;
    double reserve = swatch + gap + type.width("\u2026 +000", font);
    for (int i = 0; i < entries.size(); i++) {
      Entry entry = entries.get(i);
      boolean lastRow = y + line > last + 0.01;
      double kept = lastRow && i < entries.size() - 1 ? reserve + gap * 2.4 : 0;
      String text = type.cut(entry.text, font, maxWidth - indent - swatch - gap - kept);
      double needs = swatch + gap + type.width(text, font);
      double room = lastRow && i < entries.size() - 1 ? maxWidth - reserve : maxWidth;
      if (x > indent && x + needs > room) {
        if (lastRow) {
          String rest = "\u2026 +" + plan.formats.number(entries.size() - i);
          text(rest, x, type.baseline(font, y), parts);
          width = Math.max(width, x + type.width(rest, font));
          break;
        }
        x = indent;
        y += line * 1.1;
      }
      entry(entry, List.of(text), x, y, parts);
      x += needs + gap * 2.4;
      width = Math.max(width, x - gap * 2.4);
    }
    return new double[] {width, y + line};
  }

  private double[] horizontalScale(
      ColorAssignment scale, double maxWidth, double[] cursor, List<Part> parts) {
    double inset = 14 * type.factor;
    double x = cursor[0] + inset;
    double length = Math.max(40, Math.min(220 * type.factor, maxWidth - x - inset * 2));
    double top = cursor[1] + line * 0.2;
    double bar = line * 0.6;
    parts.add((g, ox, oy) -> slices(g, scale, ox + x, oy + top, length, bar, true));
    for (Tick tick : scaleTicks(scale, length, true)) {
      String text = String.join(" ", tick.lines());
      double center = x + share(scale, tick.value()) * length;
      double left = Math.max(cursor[0] - inset, Math.min(maxWidth - type.width(text, font),
          center - type.width(text, font) / 2));
      text(text, left, type.baseline(font, top + bar + 2), parts);
    }
    return new double[] {x + length + inset * 2, top + bar + 2 + line};
  }

  private double[] horizontalSizes(
      Sizes sizes, double maxWidth, double[] cursor, List<Part> parts) {
    double x = cursor[0];
    double height = Math.max(line, sizes.scale.diameter(sizes.values.get(0)) + 2);
    double middle = cursor[1] + height / 2;
    for (int i = 0; i < sizes.values.size(); i++) {
      double diameter = sizes.scale.diameter(sizes.values.get(i));
      double needs = diameter + gap + type.width(sizes.texts.get(i), font);
      if (x + needs > maxWidth) {
        break;
      }
      circle(diameter, x + diameter / 2, middle, parts);
      text(sizes.texts.get(i), x + diameter + gap, middle + type.capHeight(font) / 2, parts);
      x += needs + gap * 2.4;
    }
    return new double[] {x - gap * 2.4, cursor[1] + height};
  }
}
