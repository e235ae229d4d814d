// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.ArrayList;
import java.util.List;

/** An output document. */
public record Document(Metadata metadata, Paper paper, List<Block> blocks) {
  public Document {
    blocks = List.copyOf(blocks);
  }

  /** The headings in the order of the document. */
  public List<Heading> headings() {
    List<Heading> headings = new ArrayList<>();
    for (Block block : blocks) {
      if (block instanceof Heading heading) {
        headings.add(heading);
      }
    }
    return headings;
  }

  /** The tables in the order of the document. */
  public List<Table> tables() {
    List<Table> tables = new ArrayList<>();
    for (Block block : blocks) {
      if (block instanceof Table table) {
        tables.add(table);
      }
    }
    return tables;
  }

  /** The same document on other paper. */
  public Document on(Paper other) {
    return new Document(metadata, other, blocks);
  }
}
