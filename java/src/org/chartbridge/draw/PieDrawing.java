// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.geom.Arc2D;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Path2D;
import java.awt.geom.Rectangle2D;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * A pie: slices clockwise from the top, named beside it, or in the legend where there is no room
 * beside it.
 */
final class PieDrawing {
  /** A slice with its angles, clockwise from the top, in degrees. */
  record Slice(Group group, int color, double from, double sweep, double share) {}

  /** An en space: viewers of SVG would draw two plain spaces as one. */
  private static final String NAME_GAP = "\u2002";
  private static final double LEAD = 20;
  private static final double LEAST_INSIDE = 14;
  private static final int MOST_SLICES = 100;

  private final LayerSource source;
  private final Plan plan;
  private final ElementPlan element;
  private final List<List<Slice>> pies = new ArrayList<>();

  PieDrawing(LayerSource source) {
    this.source = source;
    plan = source.plan();
    element = source.element();
    List<Group> groups = new ArrayList<>(new Grouping(source,
        java.util.function.DoubleUnaryOperator.identity(),
        java.util.function.DoubleUnaryOperator.identity()).groups());
    if (groups.isEmpty()) {
      throw element.error(
          " has nothing to draw: no row has a value in all of its columns.");
    }
    groups.sort(
        Comparator.<Group>comparingDouble(group -> group.x).thenComparingInt(group -> group.color));
    for (int panel = 0; panel < source.panels().count(); panel++) {
      pies.add(slices(groups, panel));
    }
    if (pies.stream().allMatch(List::isEmpty)) {
      throw element.error("y", "all values are 0, so there is nothing to divide.");
    }
  }

  private List<Slice> slices(List<Group> groups, int panel) {
    double total = 0;
    int count = 0;
    for (Group group : groups) {
      if (group.panel != panel) {
        continue;
      }
      if (group.y < 0) {
        throw element.error("y", "the value " + Formats.plain(group.y) + " of \""
            + source.x().text(element.x, element.xColumn, group.x)
            + "\" is negative, and a slice cannot be; drop it, or use a bar.");
      }
      total += group.y;
      count++;
    }
    if (count > MOST_SLICES) {
      throw element.error("x", "there are " + count + " slices, more than the " + MOST_SLICES
          + " that a pie can show; use a bar, or choose a column with fewer values.");
    }
    List<Slice> slices = new ArrayList<>();
    double from = 0;
    for (Group group : groups) {
      if (group.panel == panel && group.y > 0) {
        double share = group.y / total;
        int color = element.colors == null ? (int) group.x : group.color;
        slices.add(new Slice(group, color, from * 360, share * 360, share));
        from += share;
      }
    }
    return slices;
  }

  private Color color(Slice slice) {
    Color color = element.fill != null ? element.fill : source.inks().color(slice.color);
    return Inks.alpha(color, element.element.opacity());
  }

  String name(Slice slice) {
    return source.x().text(element.x, element.xColumn, slice.group.x);
  }

  /** What a legend says of the pie. */
  LegendBox.Block legend(String title) {
    Map<Integer, LegendBox.Entry> entries = new LinkedHashMap<>();
    for (List<Slice> slices : pies) {
      for (Slice slice : slices) {
        String text = element.colors == null ? name(slice) : element.colors.labels.get(slice.color);
        entries.putIfAbsent(slice.color,
            new LegendBox.Entry(text, color(slice), slice.color, true, false, false));
      }
    }
    String heading = element.colors == null ? plan.label(element.x) : element.colors.title;
    List<LegendBox.Entry> sorted = entries.entrySet().stream()
        .sorted(Map.Entry.comparingByKey()).map(Map.Entry::getValue).toList();
    return new LegendBox.Block(title == null ? heading : title, sorted, null, null);
  }

  /** A name beside the pie. */
  private record Name(Slice slice, List<String> lines, double[] top) {
    double height(Typography type, Font font) {
      return type.height(lines.size(), font);
    }
  }

  /** The room that the names need on each side. */
  private double sideRoom(int panel, double width) {
    double widest = 0;
    for (Slice slice : pies.get(panel)) {
      String text = name(slice) + NAME_GAP + plan.formats.shareLabel(slice.share);
      widest = Math.max(widest, plan.type.width(text, plan.type.legend));
    }
    double lead = LEAD * plan.type.factor;
    return Math.max(60 * plan.type.factor, Math.min(widest + lead + 6, width * 0.32));
  }

  private Ellipse2D circle(int panel, Rectangle2D area, boolean named) {
    double side = Math.min(area.getWidth(), area.getHeight());
    double diameter = side;
    if (named) {
      double rim = plan.type.lineHeight(plan.type.legend) * 1.3;
      double least = sideRoom(panel, area.getWidth());
      diameter = Math.min(area.getHeight() - 2 * rim, area.getWidth() - 2 * least);
      diameter = Math.max(diameter, side * 0.35);
    }
    diameter = Math.max(8, diameter - 2);
    return new Ellipse2D.Double(area.getCenterX() - diameter / 2, area.getCenterY() - diameter / 2,
        diameter, diameter);
  }

  private static Arc2D arc(Ellipse2D circle, Slice slice) {
    return new Arc2D.Double(circle.getBounds2D(), 90 - slice.from, -slice.sweep, Arc2D.PIE);
  }

  void draw(Graphics2D g, int panel, Rectangle2D area, boolean named) {
    Ellipse2D circle = circle(panel, area, named);
    for (Slice slice : pies.get(panel)) {
      source.inks().fill(g, slice.sweep >= 360 ? circle : arc(circle, slice), color(slice),
          element.fill == null ? slice.color : -1);
    }
    g.setPaint(plan.style.background);
    g.setStroke(new BasicStroke(
        (float) (1.2 * plan.type.factor), BasicStroke.CAP_BUTT, BasicStroke.JOIN_BEVEL));
    for (Slice slice : pies.get(panel)) {
      if (slice.sweep < 360) {
        g.draw(arc(circle, slice));
      }
    }
    if (named) {
      drawNames(g, panel, area, circle);
    } else {
      drawShares(g, panel, circle);
    }
  }

  /** Shares within the slices that have room for them. */
  private void drawShares(Graphics2D g, int panel, Ellipse2D circle) {
    Font font = plan.type.label;
    double r = circle.getWidth() / 2;
    for (Slice slice : pies.get(panel)) {
      String text = plan.formats.share(slice.share, 0);
      double angle = Math.toRadians(slice.from + slice.sweep / 2);
      double out = slice.sweep >= 360 ? 0 : r * 0.66;
      double chord = slice.sweep >= 180
          ? r : 2 * out * Math.sin(Math.toRadians(slice.sweep / 2));
      double needs = Math.hypot(plan.type.width(text, font), font.getSize2D()) + 4;
      if (chord < needs || r * 0.6 < needs || slice.sweep < LEAST_INSIDE) {
        continue;
      }
      boolean hatched = source.inks().hatches();
      g.setPaint(hatched ? plan.style.text : Inks.contrast(color(slice)));
      double x = circle.getCenterX() + out * Math.sin(angle);
      double y = circle.getCenterY() - out * Math.cos(angle);
      if (hatched) {
        double w = plan.type.width(text, font);
        g.setPaint(plan.style.background);
        g.fill(new Rectangle2D.Double(
            x - w / 2 - 2, y - font.getSize2D() * 0.6, w + 4, font.getSize2D() * 1.2));
        g.setPaint(plan.style.text);
      }
      plan.type.draw(g, text, font, x, y + plan.type.capHeight(font) / 2, 0.5);
    }
  }

  private void drawNames(Graphics2D g, int panel, Rectangle2D area, Ellipse2D circle) {
    List<Slice> right = new ArrayList<>();
    List<Slice> left = new ArrayList<>();
    for (Slice slice : pies.get(panel)) {
      (slice.from + slice.sweep / 2 < 180 ? right : left).add(slice);
    }
    java.util.Collections.reverse(left);
    drawSide(g, right, area, circle, true);
    drawSide(g, left, area, circle, false);
  }

  private void drawSide(
      Graphics2D g, List<Slice> slices, Rectangle2D area, Ellipse2D circle, boolean right) {
    Font font = plan.type.legend;
    double r = circle.getWidth() / 2;
    double lead = LEAD * plan.type.factor;
    double room = (area.getWidth() - circle.getWidth()) / 2 - lead - 4;
    List<Name> names = new ArrayList<>();
    for (Slice slice : slices) {
      String share = plan.formats.shareLabel(slice.share);
      String oneLine = name(slice) + NAME_GAP + share;
      List<String> lines = new ArrayList<>();
      if (plan.type.width(oneLine, font) <= room) {
        lines.add(oneLine);
      } else {
        lines.addAll(plan.type.wrap(name(slice), font, room, 2));
        lines.add(share);
      }
      if (element.element.label() != null && slice.group.label != null) {
        lines.add(plan.type.cut(slice.group.label, font, room));
      }
      double middle =
          circle.getCenterY() - (r + lead * 0.5) * Math.cos(Math.toRadians(middle(slice)));
      names.add(
          new Name(slice, lines, new double[] {middle - plan.type.height(lines.size(), font) / 2}));
    }
    spread(names, area, font);
    for (Name name : names) {
      drawName(g, name, circle, lead, right, font);
    }
  }

  private static double middle(Slice slice) {
    return slice.from + slice.sweep / 2;
  }

  /** Moves names apart; the smallest slices go without one when there is no room for all. */
  private void spread(List<Name> names, Rectangle2D area, Font font) {
    while (true) {
      double needs = 0;
      Name smallest = null;
      for (Name name : names) {
        needs += name.height(plan.type, font);
        smallest = smallest == null || name.slice.share < smallest.slice.share ? name : smallest;
      }
      if (smallest == null || needs <= area.getHeight()) {
        break;
      }
      names.remove(smallest);
    }
    double free = area.getY();
    for (Name name : names) {
      name.top[0] = Math.max(name.top[0], free);
      free = name.top[0] + name.height(plan.type, font);
    }
    double floor = area.getMaxY();
    for (int i = names.size() - 1; i >= 0; i--) {
      Name name = names.get(i);
      name.top[0] = Math.min(name.top[0], floor - name.height(plan.type, font));
      floor = name.top[0];
    }
  }

  private void drawName(
      Graphics2D g, Name name, Ellipse2D circle, double lead, boolean right, Font font) {
    double r = circle.getWidth() / 2;
    double angle = Math.toRadians(middle(name.slice));
    double y = name.top[0] + name.height(plan.type, font) / 2;
    double side = right ? 1 : -1;
    double bottom = name.top[0] + name.height(plan.type, font);
    double nearest =
        Math.max(name.top[0], Math.min(bottom, circle.getCenterY())) - circle.getCenterY();
    double clear = r + lead * 0.7;
    double away = Math.sqrt(Math.max(0, clear * clear - nearest * nearest));
    double textX = circle.getCenterX() + side * Math.max(away, lead * 0.4);
    Path2D path = new Path2D.Double();
    path.moveTo(circle.getCenterX() + r * 1.01 * Math.sin(angle),
        circle.getCenterY() - r * 1.01 * Math.cos(angle));
    path.lineTo(circle.getCenterX() + (r + lead * 0.35) * Math.sin(angle),
        circle.getCenterY() - (r + lead * 0.35) * Math.cos(angle));
    path.lineTo(textX - side * lead * 0.2, y);
    g.setPaint(plan.style.axisColor);
    g.setStroke(new BasicStroke((float) plan.type.factor));
    g.draw(path);
    g.setPaint(plan.style.text);
    double top = name.top[0];
    for (String line : name.lines) {
      plan.type.draw(g, line, font, textX, plan.type.baseline(font, top), right ? 0 : 1);
      top += plan.type.lineHeight(font);
    }
  }

  void marks(int panel, Rectangle2D area, boolean named, List<Mark> marks) {
    Ellipse2D circle = circle(panel, area, named);
    for (Slice slice : pies.get(panel)) {
      Map<String, String> values = new LinkedHashMap<>();
      if (source.panels().label() != null) {
        values.put(source.panels().label(), source.panels().name(panel));
      }
      values.put(plan.label(element.x), name(slice));
      if (element.colors != null) {
        values.putIfAbsent(element.colors.title, element.colors.labels.get(slice.color));
      }
      values.put(plan.label(element.y), plan.format(element.y, element.yColumn, slice.group.y));
      values.put(plan.text("Share"), plan.formats.share(slice.share, 1));
      marks.add(new Mark(slice.sweep >= 360 ? circle : arc(circle, slice), values, element.index,
          source.panels().name(panel)));
    }
  }
}
