// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import org.chartbridge.chart.Axis;
import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Words;

/** Reads what {@code axis} statements say about an axis. */
final class AxisParser {
  private final Cursor cursor;
  private final ChartPlaces places;
  private final String path;
  private final Clauses clauses;
  private ScaleKind scale = ScaleKind.AUTO;
  private String title;
  private Double min;
  private Double max;
  private boolean reversed;
  private boolean grid = true;
  private String format;

  AxisParser(Cursor cursor, ChartPlaces places, String path) {
    this.cursor = cursor;
    this.places = places;
    this.path = path;
    this.clauses = new Clauses(cursor);
  }

  Axis read() {
    for (ScaleKind kind : ScaleKind.values()) {
      clauses.add(Words.of(kind), "the scale", () -> readScale(kind));
    }
    clauses.add("from", this::readFrom);
    clauses.add("to", this::readTo);
    clauses.add("title", () -> title = readText(".title"));
    clauses.add("format", () -> format = readText(".format"));
    clauses.add("reversed", () -> reversed = true);
    clauses.addRepeated("no", this::readNo);
    clauses.read();
    return new Axis(scale, title, min, max, reversed, grid, format);
  }

  private void readScale(ScaleKind kind) {
    place(".scale");
    scale = kind;
  }

  private void readFrom() {
    place(".min");
    min = cursor.limit();
    if (cursor.peek().isWord("to")) {
      clauses.once("to");
      cursor.take();
      readTo();
    }
  }

  private void readTo() {
    place(".max");
    max = cursor.limit();
  }

  private void readNo() {
    cursor.take();
    Token what = cursor.peek();
    if (what.isWord("grid")) {
      clauses.once("no grid");
      grid = false;
    } else if (what.isWord("title")) {
      clauses.once("title");
      title = "";
    }
    cursor.word("grid", "title");
  }

  private String readText(String part) {
    place(part);
    return cursor.text().text();
  }

  private void place(String part) {
    int offset = cursor.peek().offset();
    places.put(path + part, () -> cursor.position(offset));
  }
}
