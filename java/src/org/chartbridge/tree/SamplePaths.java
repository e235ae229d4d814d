// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.data.Column;
import org.chartbridge.data.CsvReader;
import org.chartbridge.data.Table;

/** Which nodes sample records pass, and how many of them. */
public final class SamplePaths {
  /** No sample records. */
  public static final SamplePaths NONE = new SamplePaths(0);

  private final int records;
  /** By the number of the tree, then by the path of the node. */
  private final Map<Integer, Map<String, Integer>> passing = new HashMap<>();

  private SamplePaths(int records) {
    this.records = records;
  }

  /**
   * Lets the records of CSV data run through all trees of a document.
   *
   * @param csv the records; every field of the data that a predicate needs must be a column, an
   *     empty value is a missing one
   * @throws org.chartbridge.chart.ChartException when the data cannot be read or lack a column
   */
  public static SamplePaths of(TreeDocument document, byte[] csv) {
    if (csv.length == 0) {
      return NONE;
    }
    Table table = read(document, csv);
    SamplePaths paths = new SamplePaths(table.rowCount());
    Map<String, Column> columns = new HashMap<>();
    table.columns().forEach(column -> columns.put(column.name(), column));
    for (TreeModel tree : document.trees()) {
      Map<String, Integer> counts = new HashMap<>();
      for (int row = 0; row < table.rowCount(); row++) {
        int current = row;
        TreeWalk.walk(tree, name -> value(columns.get(name), current),
            node -> counts.merge(node.path(), 1, Integer::sum));
      }
      paths.passing.put(tree.number(), counts);
    }
    return paths;
  }

  /** How many records there are. */
  public int records() {
    return records;
  }

  /** How many records pass a node. */
  public int passing(TreeModel tree, TreeNode node) {
    return passing.getOrDefault(tree.number(), Map.of()).getOrDefault(node.path(), 0);
  }

  private static String value(Column column, int row) {
    return column == null || column.isMissing(row) ? null : column.text(row);
  }

  private static Table read(TreeDocument document, byte[] csv) {
    Map<String, Field> needed = new LinkedHashMap<>();
    for (TreeModel tree : document.trees()) {
      tree.conditions().forEach(condition -> need(tree, condition, needed));
      needBelow(tree, tree.root(), needed);
    }
    List<ColumnDeclaration> declarations = new ArrayList<>();
    for (Field field : needed.values()) {
      ColumnKind kind = field.isNumeric() ? ColumnKind.NUMBER : ColumnKind.CATEGORY;
      declarations.add(new ColumnDeclaration(field.name(), kind, null, null, List.of()));
    }
    Table table = CsvReader.read(ByteBuffer.wrap(csv), declarations, null);
    for (String name : new TreeSet<>(needed.keySet())) {
      table.column(name);
    }
    return table;
  }

  private static void needBelow(TreeModel tree, TreeNode node, Map<String, Field> needed) {
    need(tree, node.predicate(), needed);
    node.children().forEach(child -> needBelow(tree, child, needed));
  }

  private static void need(TreeModel tree, Predicate predicate, Map<String, Field> needed) {
    if (predicate instanceof Predicate.Simple simple) {
      need(tree, simple.field(), needed);
    } else if (predicate instanceof Predicate.Membership membership) {
      need(tree, membership.field(), needed);
    } else if (predicate instanceof Predicate.Compound compound) {
      compound.parts().forEach(part -> need(tree, part, needed));
    }
  }

  private static void need(TreeModel tree, String name, Map<String, Field> needed) {
    Field field = tree.fields().source(name);
    if (field != null) {
      needed.put(field.name(), field);
    }
  }
}
