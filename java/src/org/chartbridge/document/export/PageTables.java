// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.IdentityHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Table;

/** The tables of a document as they are set on its pages. */
public final class PageTables {
  private final Map<Table, List<PageTable>> tables = new IdentityHashMap<>();

  public PageTables(Document document) {
    document.tables().forEach(
        table -> tables.computeIfAbsent(table, each -> PageTable.of(each, document)));
  }

  public List<PageTable> parts(Table table) {
    return tables.get(table);
  }

  boolean isTurned(Table table) {
    return parts(table).get(0).isTurned();
  }
}
