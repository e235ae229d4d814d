// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.awt.Font;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ScaleKind;

/**
 * The ticks of an axis with their texts, chosen so that no two texts touch.
 *
 * @param ticks in order of value
 * @param angle how the texts are turned, in degrees: 0, 45 or 90
 * @param depth the room they take away from the plot
 * @param before how far they reach beyond the start of the axis
 * @param after how far they reach beyond its end
 */
record AxisLabels(List<Tick> ticks, int angle, double depth, double before, double after) {
  private static final int MOST_LINES = 3;
  private static final double SLANT = Math.sqrt(0.5);

  /** Fits the texts of an axis into its length. */
  static final class Fitter {
    private final Plan plan;
    private final AxisData data;
    private final AxisScale scale;
    private final double length;
    private final double mostDepth;
    private final double roomBefore;
    private final Font font;

    /**
     * @param length the length of the axis in pixels
     * @param mostDepth the most room that its texts may take away from the plot
     * @param roomBefore how far texts may reach beyond its start
     */
    Fitter(Plan plan, AxisData data, AxisScale scale, double length, double mostDepth,
        double roomBefore) {
      this.plan = plan;
      this.data = data;
      this.scale = scale;
      this.length = Math.max(1, length);
      this.mostDepth = mostDepth;
      this.roomBefore = roomBefore;
      font = plan.type.tick;
    }

    AxisLabels fit() {
      if (scale.isCategory()) {
        return data.horizontal ? categoriesBelow() : categoriesBeside();
      }
      return measured(ticks());
    }

    private double gap() {
      return font.getSize2D() * 0.8;
    }

    private List<Tick> ticks() {
      double span = scale.upper() - scale.lower();
      double least = data.horizontal ? Math.max(44 * plan.type.factor, length / 12)
                                     : Math.max(28 * plan.type.factor, length / 8);
      double rough = span * Math.min(least, length / 2) / length;
      return switch (scale.kind()) {
        case LOG -> Ticks.log(
            scale.lower(), scale.upper(), length, this::room, data.pattern, plan.formats);
        case TIME -> TimeTicks.of(scale.lower(), scale.upper(), rough, !data.horizontal,
            data.pattern, plan.formats, this::fits);
        default -> linear(rough);
      };
    }

    private List<Tick> linear(double rough) {
      Ticks.StepFormat format = format();
      List<Tick> ticks =
          Ticks.linear(scale.lower(), scale.upper(), rough, this::fits, format);
      double step = Ticks.step(rough);
      for (int i = 0; i < 6 && ticks.size() < 2; i++) {
        step = Ticks.step(step / 2.6);
        List<Tick> finer = Ticks.linear(scale.lower(), scale.upper(), step, (t, s) -> true, format);
        if (finer.size() >= 2 && fits(finer, step)) {
          return finer;
        }
      }
      return ticks;
    }

    private Ticks.StepFormat format() {
      if (data.pattern != null) {
        return (step, largest) -> data.pattern;
      }
      if (data.shares) {
        int digits = 0;
        return (step, largest) ->
            value -> plan.formats.share(value, step < 0.0099 ? 1 : digits);
      }
      return plan.formats::ticks;
    }

    /** The room that a text takes along the axis. */
    private double room(String text) {
      return data.horizontal ? plan.type.width(text, font) + gap()
                             : plan.type.lineHeight(font) * 1.15;
    }

    private boolean fits(List<Tick> ticks, double step) {
      double before = Double.NEGATIVE_INFINITY;
      List<Tick> order = new ArrayList<>(ticks);
      order.sort(java.util.Comparator.comparingDouble(tick -> scale.unit(tick.value())));
      for (Tick tick : order) {
        double center = scale.unit(tick.value()) * length;
        double half = data.horizontal
            ? plan.type.width(tick.lines(), font) / 2
            : plan.type.height(Math.max(1, tick.lines().size()), font) * 0.55;
        if (center - half < before) {
          return false;
        }
        before = center + half + (data.horizontal ? gap() : 0);
      }
      return true;
    }

    private AxisLabels measured(List<Tick> ticks) {
      double before = 0;
      double after = 0;
      double depth = 0;
      for (Tick tick : ticks) {
        double center = scale.unit(tick.value()) * length;
        double width = plan.type.width(tick.lines(), font);
        double height = plan.type.height(tick.lines().size(), font);
        double half = data.horizontal ? width / 2 : height / 2;
        before = Math.max(before, half - center);
        after = Math.max(after, center + half - length);
        depth = Math.max(depth, data.horizontal ? height : width);
      }
      return new AxisLabels(ticks, 0, depth, before, after);
    }

    private List<Integer> shown() {
      List<Integer> shown = new ArrayList<>();
      for (int i = 0; i < data.categories.size(); i++) {
        if (scale.shows(i)) {
          shown.add(i);
        }
      }
      return shown;
    }

    private AxisLabels categoriesBelow() {
      List<Integer> shown = shown();
      double slot = length / Math.max(1, shown.size());
      double room = slot - gap() * 0.5;
      boolean oneLine = true;
      boolean words = true;
      for (int i : shown) {
        String text = data.categories.get(i);
        oneLine &= plan.type.width(text, font) <= room;
        words &= plan.type.wordsFit(text, font, room)
            && plan.type.wrap(text, font, room, MOST_LINES + 1).size() <= MOST_LINES;
      }
      if (oneLine || words && MOST_LINES * plan.type.lineHeight(font) <= mostDepth) {
        return wrapped(shown, room);
      }
      if (shown.size() <= 3 && mostDepth >= 2 * plan.type.lineHeight(font)
          && slot > 60 * plan.type.factor) {
        return wrapped(shown, room);
      }
      AxisLabels slanted = slot >= font.getSize2D() * 1.9 ? slanted(shown, slot) : null;
      return slanted != null ? slanted : upright(shown, slot);
    }

    private AxisLabels wrapped(List<Integer> shown, double room) {
      List<Tick> ticks = new ArrayList<>();
      double depth = 0;
      int most = Math.max(1, Math.min(MOST_LINES, (int) (mostDepth / plan.type.lineHeight(font))));
      for (int i : shown) {
        List<String> lines = plan.type.wrap(data.categories.get(i), font, room, most);
        ticks.add(new Tick(i, lines));
        depth = Math.max(depth, plan.type.height(lines.size(), font));
      }
      return new AxisLabels(ticks, 0, depth, 0, 0);
    }

    /** Texts at 45 degrees that end below their category; null when they would be cut too short. */
    private AxisLabels slanted(List<Integer> shown, double slot) {
      double reach = mostDepth / SLANT - font.getSize2D();
      double beforeMost = 0;
      double depth = 0;
      boolean cut = false;
      List<Tick> ticks = new ArrayList<>();
      for (int i : shown) {
        double center = scale.unit(i) * length;
        double room = Math.min(reach, (center + roomBefore) / SLANT - font.getSize2D());
        String full = data.categories.get(i);
        String text = plan.type.cut(full, font, room);
        cut |= !text.equals(full) && plan.type.width(text, font) < 60 * plan.type.factor;
        double width = plan.type.width(text, font);
        ticks.add(Tick.of(i, text));
        depth = Math.max(depth, (width + font.getSize2D()) * SLANT);
        beforeMost = Math.max(beforeMost, (width + font.getSize2D() * 0.5) * SLANT - center);
      }
      return cut ? null : new AxisLabels(ticks, 45, depth, beforeMost, 0);
    }

    /** Texts that run upwards, with some left out where they are too many. */
    private AxisLabels upright(List<Integer> shown, double slot) {
      double line = plan.type.lineHeight(font);
      int every = (int) Math.max(1, Math.ceil(line / slot));
      List<Tick> ticks = new ArrayList<>();
      double depth = 0;
      for (int k = 0; k < shown.size(); k++) {
        int i = shown.get(k);
        String text = k % every == 0 ? plan.type.cut(data.categories.get(i), font, mostDepth) : "";
        ticks.add(Tick.of(i, text));
        depth = Math.max(depth, plan.type.width(text, font));
      }
      double half = Math.max(0, line / 2 - slot / 2);
      return new AxisLabels(ticks, 90, depth, half, half);
    }

    private AxisLabels categoriesBeside() {
      List<Integer> shown = shown();
      double slot = length / Math.max(1, shown.size());
      double line = plan.type.lineHeight(font);
      int every = (int) Math.max(1, Math.ceil(line / slot));
      int most = (int) Math.max(1, Math.min(MOST_LINES, slot * 0.95 / line));
      double depth = 0;
      List<Tick> ticks = new ArrayList<>();
      for (int k = 0; k < shown.size(); k++) {
        int i = shown.get(k);
        boolean show = k % every == 0;
        List<String> lines =
            show ? plan.type.wrap(data.categories.get(i), font, mostDepth, most) : List.of();
        ticks.add(new Tick(i, lines));
        depth = Math.max(depth, plan.type.width(lines, font));
      }
      double half = Math.max(0, line / 2 - slot / 2);
      return new AxisLabels(ticks, 0, depth, half, half);
    }
  }

  /**
   * The distance of the first two ticks, to round the ends of the axis by; 0 when there is none.
   */
  static double step(AxisLabels labels, AxisScale scale) {
    if (scale.kind() != ScaleKind.LINEAR || labels.ticks().size() < 2) {
      return 0;
    }
    return labels.ticks().get(1).value() - labels.ticks().get(0).value();
  }

}
