// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/**
 * Brings the colours of a picture down to 256 by median cut: the space of its colours is cut into
 * boxes, and each box becomes one colour. Where one colour makes up much of its box, that colour
 * stays exact, so a white ground stays white and the bars of one colour keep it; only blended edges
 * and long gradients change.
 */
final class ColorReduction {
  private static final int CHANNELS = 3;

  /** A colour with this share of its box stands for all of it. */
  private static final double DOMINANT = 0.25;

  /** The different colours, in ascending order until they are cut into boxes. */
  private final int[] colors;

  private final int[] counts;

  private ColorReduction(int[] sorted) {
    int[] distinct = new int[sorted.length];
    int[] found = new int[sorted.length];
    int size = 0;
    for (int i = 0; i < sorted.length; i++) {
      if (i == 0 || sorted[i] != sorted[i - 1]) {
        distinct[size++] = sorted[i];
      }
      found[size - 1]++;
    }
    colors = Arrays.copyOf(distinct, size);
    counts = Arrays.copyOf(found, size);
  }

  /**
   * The same picture with fewer colours; the top byte of a pixel does not count.
   *
   * @param most how many colours at most
   */
  static int[] reduce(int[] pixels, int most) {
    int[] masked = new int[pixels.length];
    for (int i = 0; i < pixels.length; i++) {
      masked[i] = pixels[i] & 0xFFFFFF;
    }
    int[] sorted = masked.clone();
    Arrays.sort(sorted);
    ColorReduction reduction = new ColorReduction(sorted);
    int[] known = reduction.colors.clone();
    int[] replacements = reduction.replacements(known, most);
    for (int i = 0; i < masked.length; i++) {
      masked[i] = replacements[Arrays.binarySearch(known, masked[i])];
    }
    return masked;
  }

  /** For each of the known colours, which are all there are in ascending order, its new colour. */
  private int[] replacements(int[] known, int most) {
    int[] replacements = new int[known.length];
    for (Box box : boxes(most)) {
      int color = box.color();
      for (int i = box.from; i < box.to; i++) {
        replacements[Arrays.binarySearch(known, colors[i])] = color;
      }
    }
    return replacements;
  }

  private List<Box> boxes(int most) {
    List<Box> boxes = new ArrayList<>();
    boxes.add(new Box(0, colors.length));
    while (boxes.size() < most) {
      Box worst = boxes.get(0);
      for (Box box : boxes) {
        worst = box.error > worst.error ? box : worst;
      }
      if (worst.error == 0) {
        break;
      }
      boxes.remove(worst);
      int middle = worst.cut();
      boxes.add(new Box(worst.from, middle));
      boxes.add(new Box(middle, worst.to));
    }
    return boxes;
  }

  private static int channel(int color, int channel) {
    return color >> (8 * channel) & 0xFF;
  }

  /** The colours from one index to another. */
  private final class Box {
    final int from;
    final int to;
    final long error;
    private final long population;
    private final int dominant;

    Box(int from, int to) {
      this.from = from;
      this.to = to;
      long sum = 0;
      int most = from;
      for (int i = from; i < to; i++) {
        sum += counts[i];
        most = counts[i] > counts[most] ? i : most;
      }
      dominant = most;
      population = sum;
      error = distances();
    }

    /** How far the colours are from the dominant one, over all pixels. */
    private long distances() {
      long sum = 0;
      for (int i = from; i < to; i++) {
        for (int channel = 0; channel < CHANNELS; channel++) {
          long difference = channel(colors[i], channel) - channel(colors[dominant], channel);
          sum += difference * difference * counts[i];
        }
      }
      return sum;
    }

    int color() {
      if (counts[dominant] >= DOMINANT * population) {
        return colors[dominant];
      }
      int mean = 0;
      for (int channel = 0; channel < CHANNELS; channel++) {
        long sum = 0;
        for (int i = from; i < to; i++) {
          sum += (long) channel(colors[i], channel) * counts[i];
        }
        mean |= (int) Math.round((double) sum / population) << (8 * channel);
      }
      return mean;
    }

    /** Sorts the colours along their widest channel and gives the index that halves the pixels. */
    int cut() {
      int widest = 0;
      int width = -1;
      for (int channel = 0; channel < CHANNELS; channel++) {
        int min = 255;
        int max = 0;
        for (int i = from; i < to; i++) {
          min = Math.min(min, channel(colors[i], channel));
          max = Math.max(max, channel(colors[i], channel));
        }
        if (max - min > width) {
          width = max - min;
          widest = channel;
        }
      }
      sortAlong(widest);
      long half = population / 2;
      long sum = counts[from];
      int middle = from + 1;
      while (middle < to - 1 && sum + counts[middle] <= half) {
        sum += counts[middle++];
      }
      return middle;
    }

    private void sortAlong(int channel) {
      // Channel, colour and count in one key would not fit; the index leads to both.
      long[] keys = new long[to - from];
      for (int i = from; i < to; i++) {
        keys[i - from] = (long) channel(colors[i], channel) << 32 | i;
      }
      Arrays.sort(keys);
      int[] oldColors = Arrays.copyOfRange(colors, from, to);
      int[] oldCounts = Arrays.copyOfRange(counts, from, to);
      for (int i = from; i < to; i++) {
        int old = (int) keys[i - from] - from;
        colors[i] = oldColors[old];
        counts[i] = oldCounts[old];
      }
    }
  }
}
