// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** One piece of a document, from margin to margin. */
public sealed interface Block
    permits Heading, Paragraph, ItemList, Table, Figure, Contents, PageBreak {
  void accept(BlockVisitor visitor);
}
