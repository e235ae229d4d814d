// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Words;

/** Reads {@code column} statements. */
final class ColumnParser {
  private final Cursor cursor;
  private final ChartPlaces places;
  private final String path;
  private final List<String> order = new ArrayList<>();
  private String pattern;
  private String label;

  ColumnParser(Cursor cursor, ChartPlaces places, String path) {
    this.cursor = cursor;
    this.places = places;
    this.path = path;
  }

  ColumnDeclaration read() {
    place("");
    place(".name");
    String name = cursor.name("a column name").text();
    cursor.sign(":");
    cursor.takeBreak();
    ColumnKind kind = Words.find(ColumnKind.class, cursor.word(Words.all(ColumnKind.class)).text());
    if (kind == ColumnKind.CATEGORY) {
      readOrder();
    }
    if (kind == ColumnKind.TIME && cursor.takeWord("written")) {
      place(".pattern");
      pattern = cursor.text().text();
    }
    if (cursor.takeSeparator()) {
      new Clauses(cursor).add("label", this::readLabel).read();
    }
    return new ColumnDeclaration(name, kind, label, pattern, order);
  }

  private void readOrder() {
    TokenKind next = cursor.peek().kind();
    if (next != TokenKind.WORD && next != TokenKind.TEXT) {
      return;
    }
    do {
      cursor.takeBreak();
      place(".order[" + order.size() + "]");
      order.add(cursor.name("a category").text());
    } while (cursor.takeSign("<"));
  }

  private void readLabel() {
    place(".label");
    label = cursor.text().text();
  }

  private void place(String part) {
    int offset = cursor.peek().offset();
    places.put(path + part, () -> cursor.position(offset));
  }
}
