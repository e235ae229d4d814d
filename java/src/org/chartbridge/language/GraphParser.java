// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.Problem;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.chart.Titles;
import org.chartbridge.chart.Words;

/** Reads one text, statement by statement, and collects the mistakes. One use, one thread. */
final class GraphParser {
  private static final int MAX_PROBLEMS = 20;
  private static final List<String> STATEMENTS = List.of("title", "subtitle", "caption", "size",
      "column", "draw", "axis", "legend", "panels", "style", "palette");
  private static final List<String> CLAUSE_WORDS = List.of("x", "y", "color", "label", "fill",
      "opacity", "bins", "from", "to", "format", "free", "rows");

  private final String source;
  private final Cursor cursor;
  private final Clauses statements;
  private final ChartPlaces places = new ChartPlaces();
  private final Map<TextPosition, String> problems = new TreeMap<>(GraphParser::compare);

  private ChartSize size = ChartSize.DEFAULT;
  private String title;
  private String subtitle;
  private String caption;
  private final List<ColumnDeclaration> columns = new ArrayList<>();
  private Axis x = Axis.DEFAULT;
  private Axis y = Axis.DEFAULT;
  private final List<Element> elements = new ArrayList<>();
  private LegendPosition legendPosition;
  private String legendTitle;
  private Facet facet;
  private String style;
  private final List<String> palette = new ArrayList<>();

  GraphParser(String source) {
    this.source = source;
    this.cursor = new Cursor(source);
    this.statements = new Clauses(cursor);
  }

  GraphReading parse() {
    while (cursor.peek().kind() != TokenKind.END && problems.size() < MAX_PROBLEMS) {
      readStatement();
    }
    Chart chart =
        new Chart(
            size, new Titles(title, subtitle, caption), columns, x, y, elements,
            new Legend(legendPosition, legendTitle), facet, style, palette, null, null, places);
    if (problems.isEmpty()) {
      checkMeaning(chart);
    }
    if (!problems.isEmpty()) {
      List<String> lines = new ArrayList<>();
      problems.forEach(
          (position, message) -> lines.add(ChartException.oneLine(position + ": " + message)));
      throw new GraphLanguageException(lines, problems.size() < MAX_PROBLEMS);
    }
    return new GraphReading(chart, places.paths());
  }

  private void readStatement() {
    try {
      statement();
      endStatement();
    } catch (SyntaxError e) {
      problems.putIfAbsent(cursor.position(e.offset), e.getMessage());
      cursor.skipStatement();
    }
  }

  private void endStatement() {
    if (cursor.peek().kind() == TokenKind.BREAK) {
      cursor.take();
      throw cursor.error(
          "but the statement above is complete; do not indent the line of the next one");
    }
    if (!cursor.peek().endsStatement()) {
      throw cursor.error("expected the end of the line");
    }
    cursor.take();
  }

  private void checkMeaning(Chart chart) {
    places.put("", () -> TextPosition.of(source, source.length()));
    for (Problem problem : ChartRules.check(chart)) {
      problems.putIfAbsent(places.of(problem.path()), problem.message());
    }
  }

  private void statement() {
    Token token = cursor.peek();
    if (token.kind() != TokenKind.WORD || !STATEMENTS.contains(token.text())) {
      throw noStatement(token);
    }
    String word = token.text();
    switch (word) {
      case "column" -> column();
      case "draw" -> draw();
      case "axis" -> axis();
      default -> {
        statements.once(word);
        cursor.take();
        single(word);
      }
    }
  }

  private SyntaxError noStatement(Token token) {
    boolean clause = token.kind() == TokenKind.WORD && CLAUSE_WORDS.contains(token.text());
    if (clause) {
      String hint = "; indent this line if it goes on with the statement above";
      return cursor.error(Suggestions.oneOf(STATEMENTS) + hint);
    }
    return cursor.expected(STATEMENTS);
  }

  private void single(String word) {
    switch (word) {
      case "title" -> title = text("titles.title");
      case "subtitle" -> subtitle = text("titles.subtitle");
      case "caption" -> caption = text("titles.caption");
      case "size" -> size();
      case "legend" -> legend();
      case "panels" -> panels();
      case "style" -> style();
      case "palette" -> palette();
      default -> throw new IllegalStateException(word);
    }
  }

  private String text(String path) {
    place(path, cursor.peek());
    return cursor.text().text();
  }

  private void size() {
    place("size.width", cursor.peek());
    int width = cursor.whole();
    cursor.word("by");
    place("size.height", cursor.peek());
    size = new ChartSize(width, cursor.whole());
  }

  private void style() {
    place("style", cursor.peek());
    style = cursor.name("the name of a style").text();
  }

  private void palette() {
    do {
      cursor.takeBreak();
      place("palette[" + palette.size() + "]", cursor.peek());
      palette.add(cursor.color().text());
    } while (cursor.takeSign(","));
  }

  private void column() {
    cursor.take();
    columns.add(new ColumnParser(cursor, places, "columns[" + columns.size() + "]").read());
  }

  private void draw() {
    Token word = cursor.take();
    String path = "elements[" + elements.size() + "]";
    place(path, word);
    elements.add(new DrawParser(cursor, places, path).read());
  }

  private void axis() {
    cursor.take();
    Token name = cursor.peek();
    boolean isX = name.isWord("x");
    if (!isX && !name.isWord("y")) {
      throw cursor.expected(List.of("x", "y"));
    }
    statements.once("axis " + name.text());
    place(name.text(), cursor.take());
    cursor.sign(":");
    Axis axis = new AxisParser(cursor, places, name.text()).read();
    x = isX ? axis : x;
    y = isX ? y : axis;
  }

  private void legend() {
    cursor.sign(":");
    Clauses clauses = new Clauses(cursor);
    for (LegendPosition position : LegendPosition.values()) {
      clauses.add(Words.of(position), "the position", () -> legendPosition = position);
    }
    clauses.add("title", () -> legendTitle = text("legend.title"));
    clauses.read();
  }

  private void panels() {
    cursor.word("by");
    place("facet", cursor.peek());
    String column = cursor.name("a column name").text();
    Integer[] rows = new Integer[1];
    boolean[] free = new boolean[2];
    if (cursor.takeSign(":")) {
      Clauses clauses = new Clauses(cursor);
      clauses.add("rows", () -> rows[0] = panelsInARow());
      clauses.addRepeated("free", () -> free(clauses, free));
      clauses.read();
    }
    facet = new Facet(column, rows[0], !free[0], !free[1]);
  }

  private int panelsInARow() {
    cursor.word("of");
    place("facet.columns", cursor.peek());
    return cursor.whole();
  }

  private void free(Clauses clauses, boolean[] free) {
    cursor.take();
    Token axis = cursor.peek();
    if (axis.isWord("x") || axis.isWord("y")) {
      clauses.once("free " + axis.text());
    }
    cursor.word("x", "y");
    free[axis.text().equals("x") ? 0 : 1] = true;
  }

  private void place(String path, Token token) {
    places.put(path, () -> cursor.position(token.offset()));
  }

  private static int compare(TextPosition a, TextPosition b) {
    int lines = Integer.compare(a.line(), b.line());
    return lines != 0 ? lines : Integer.compare(a.column(), b.column());
  }
}
