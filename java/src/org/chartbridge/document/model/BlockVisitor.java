// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** Does something for each kind of block. */
public interface BlockVisitor {
  void heading(Heading heading);

  void paragraph(Paragraph paragraph);

  void list(ItemList list);

  void table(Table table);

  void figure(Figure figure);

  void contents(Contents contents);

  void pageBreak(PageBreak pageBreak);
}
