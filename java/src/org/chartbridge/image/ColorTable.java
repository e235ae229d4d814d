// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.util.Arrays;

/**
 * The colours of a picture when there are at most 256, which holds for most charts: text is blended
 * with one ground only. Such a picture needs a third of the bytes.
 */
final class ColorTable {
  static final int MAX_COLORS = 256;
  private static final int SLOTS = 2048;
  private static final int FREE = -1;

  private final int[] keys = new int[SLOTS];
  private final byte[] indices = new byte[SLOTS];
  private final int[] colors = new int[MAX_COLORS];
  private int size;

  private ColorTable() {
    Arrays.fill(keys, FREE);
  }

  /**
   * @param pixels colours as 0x00RRGGBB; the top byte does not count
   * @return null when there are more than 256 colours
   */
  static ColorTable of(int[] pixels) {
    ColorTable table = new ColorTable();
    int last = FREE;
    for (int pixel : pixels) {
      // The top byte of a pixel can hold anything.
      int color = pixel & 0xFFFFFF;
      if (color != last && !table.add(color)) {
        return null;
      }
      last = color;
    }
    return table;
  }

  private boolean add(int color) {
    int slot = slot(color);
    if (keys[slot] == color) {
      return true;
    }
    if (size == MAX_COLORS) {
      return false;
    }
    keys[slot] = color;
    indices[slot] = (byte) size;
    colors[size++] = color;
    return true;
  }

  /** The slot that holds the colour, or the free one where it belongs. */
  private int slot(int color) {
    int slot = (color * 0x9E3779B1) >>> 21;
    while (keys[slot] != FREE && keys[slot] != color) {
      slot = (slot + 1) & (SLOTS - 1);
    }
    return slot;
  }

  int size() {
    return size;
  }

  int color(int index) {
    return colors[index];
  }

  byte indexOf(int pixel) {
    return indices[slot(pixel & 0xFFFFFF)];
  }
}
