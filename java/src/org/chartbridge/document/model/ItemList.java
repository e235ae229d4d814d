// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.List;

/**
 * A list.
 *
 * @param numbered whether its items have numbers instead of bullets
 * @param start the number of the first item
 */
public record ItemList(boolean numbered, int start, List<Item> items) implements Block {
  /** One item: its text, and lists below it. */
  public record Item(List<Inline> text, List<ItemList> lists) {
    public Item {
      text = List.copyOf(text);
      lists = List.copyOf(lists);
    }
  }

  public ItemList {
    items = List.copyOf(items);
  }

  /** What stands in front of an item. */
  public String label(int index) {
    return numbered ? start + index + "." : "\u2022";
  }

  @Override
  public void accept(BlockVisitor visitor) {
    visitor.list(this);
  }
}
