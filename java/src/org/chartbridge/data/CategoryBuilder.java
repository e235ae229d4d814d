// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.List;
import org.chartbridge.chart.ColumnKind;

/**
 * Collects a column of labels. Every distinct text is kept once, as its UTF-8 bytes in one arena
 * behind an open-addressing hash table; a row that repeats a text makes no object.
 */
final class CategoryBuilder extends ColumnBuilder {
  private static final int MISSING = -1;

  private final String name;
  private int[] codes = new int[INITIAL_CAPACITY];
  private int size;

  private byte[] arena = new byte[INITIAL_CAPACITY];
  /** Text i is the arena from ends[i] to ends[i + 1]. */
  private int[] ends = new int[INITIAL_CAPACITY];
  private int[] hashes = new int[INITIAL_CAPACITY];
  private int texts;
  /** Slot -> text + 1; 0 is a free slot. The length is a power of two. */
  private int[] slots = new int[2 * INITIAL_CAPACITY];

  /**
   * @param order the texts that come first, in this order, whether or not they occur
   */
  CategoryBuilder(String name, List<String> order) {
    this.name = name;
    for (String text : order) {
      byte[] bytes = text.getBytes(StandardCharsets.UTF_8);
      code(bytes, 0, bytes.length);
    }
  }

  @Override
  ColumnKind kind() {
    return ColumnKind.CATEGORY;
  }

  @Override
  boolean add(byte[] bytes, int from, int to, boolean quoted) {
    int code = MISSING;
    if (from != to && (quoted || !isNotAvailable(bytes, from, to))) {
      code = code(bytes, from, to);
      if (code == MISSING) {
        return false;
      }
    }
    if (size == codes.length) {
      codes = Arrays.copyOf(codes, grownCapacity(size));
    }
    codes[size++] = code;
    return true;
  }

  /** The index of the text, new or known; MISSING when it is not UTF-8. */
  private int code(byte[] bytes, int from, int to) {
    int hash = hash(bytes, from, to);
    int mask = slots.length - 1;
    int slot = hash & mask;
    while (slots[slot] != 0) {
      int text = slots[slot] - 1;
      if (hashes[text] == hash
          && Arrays.equals(arena, ends[text], ends[text + 1], bytes, from, to)) {
        return text;
      }
      slot = (slot + 1) & mask;
    }
    // Only a text that is met for the first time needs to be looked at.
    if (Utf8.firstInvalid(bytes, from, to) >= 0) {
      return MISSING;
    }
    append(bytes, from, to, hash);
    slots[slot] = texts;
    if (texts * 2 > slots.length) {
      rehash();
    }
    return texts - 1;
  }

  private void append(byte[] bytes, int from, int to, int hash) {
    int start = ends[texts];
    int length = to - from;
    while (arena.length - start < length) {
      arena = Arrays.copyOf(arena, grownCapacity(arena.length));
    }
    System.arraycopy(bytes, from, arena, start, length);
    if (texts + 1 == ends.length) {
      ends = Arrays.copyOf(ends, grownCapacity(ends.length));
      hashes = Arrays.copyOf(hashes, ends.length);
    }
    hashes[texts] = hash;
    texts++;
    ends[texts] = start + length;
  }

  private void rehash() {
    slots = new int[grownCapacity(slots.length)];
    int mask = slots.length - 1;
    for (int text = 0; text < texts; text++) {
      int slot = hashes[text] & mask;
      while (slots[slot] != 0) {
        slot = (slot + 1) & mask;
      }
      slots[slot] = text + 1;
    }
  }

  private static int hash(byte[] bytes, int from, int to) {
    int hash = 0;
    for (int i = from; i < to; i++) {
      hash = hash * 31 + bytes[i];
    }
    // Texts that differ in their last bytes only (numbered ones) would fill neighbouring slots.
    hash *= 0x9E3779B9;
    return hash ^ (hash >>> 16);
  }

  @Override
  String expectation() {
    return "a text is expected";
  }

  @Override
  Column build() {
    String[] categories = new String[texts];
    for (int text = 0; text < texts; text++) {
      categories[text] = Utf8.decode(arena, ends[text], ends[text + 1]);
    }
    return new CategoryColumn(name, Arrays.copyOf(codes, size), List.of(categories));
  }
}
