// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.Table;

/**
 * Blocks that follow each other on pages of one orientation.
 *
 * @param isTurned whether the pages are wider than they are high
 */
public record PageGroup(boolean isTurned, List<Block> blocks) {
  /** All blocks of a document in groups, at least one. Headings go with what follows them. */
  public static List<PageGroup> of(Document document, PageTables tables) {
    List<PageGroup> groups = new ArrayList<>();
    PageGroup last = new PageGroup(false, new ArrayList<>());
    groups.add(last);
    for (Block block : document.blocks()) {
      boolean turned = block instanceof Table table && tables.isTurned(table);
      if (turned != last.isTurned) {
        List<Block> headings = headings(turned ? last.blocks : List.of());
        boolean begins = groups.size() == 1 && headings.size() == last.blocks.size()
            && document.metadata().isEmpty();
        if (begins) {
          groups.clear();
        }
        last.blocks.removeAll(headings);
        last = new PageGroup(turned, new ArrayList<>(headings));
        groups.add(last);
      }
      last.blocks.add(block);
    }
    return groups;
  }

  /** The headings at the end of blocks. */
  private static List<Block> headings(List<Block> blocks) {
    int from = blocks.size();
    while (from > 0 && blocks.get(from - 1) instanceof Heading) {
      from--;
    }
    return List.copyOf(blocks.subList(from, blocks.size()));
  }
}
