// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.nio.ByteBuffer;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.TreeSet;
import java.util.function.Function;
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

  /** By the number of the tree. */
  private final Map<Integer, Set<String>> lacking = new HashMap<>();

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
      FieldNeeds needs = FieldNeeds.of(tree);
      Set<String> lacking = new LinkedHashSet<>(needs.computed().keySet());
      lacking.removeAll(columns.keySet());
      paths.passing.put(tree.number(), counts);
      paths.lacking.put(tree.number(), lacking);
      for (int row = 0; lacking.isEmpty() && row < table.rowCount(); row++) {
        int current = row;
        Function<String, String> values = name -> value(columns.get(name), current);
        if (!rejected(tree, needs, values)) {
          TreeWalk.walk(tree, values, node -> counts.merge(node.path(), 1, Integer::sum));
        }
      }
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

  /**
   * The fields that a tree's predicates need and that the model computes, where the data have no
   * such column; the ways through that tree are then not known, and no node of it is passed.
   */
  public Set<String> lacking(TreeModel tree) {
    return lacking.getOrDefault(tree.number(), Set.of());
  }

  /** Whether a value makes the model give no result. */
  private static boolean rejected(
      TreeModel tree, FieldNeeds needs, Function<String, String> values) {
    for (Field field : needs.sources().values()) {
      if (tree.fields().rejects(field, values.apply(field.name()))) {
        return true;
      }
    }
    return false;
  }

  private static String value(Column column, int row) {
    return column == null || column.isMissing(row) ? null : column.text(row);
  }

  private static Table read(TreeDocument document, byte[] csv) {
    Map<String, Field> needed = new LinkedHashMap<>();
    document.trees().forEach(tree -> needed.putAll(FieldNeeds.of(tree).sources()));
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
}
