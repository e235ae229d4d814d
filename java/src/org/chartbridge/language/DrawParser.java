// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.ChartPlaces;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Words;

/** Reads {@code draw} statements. */
final class DrawParser {
  private final Cursor cursor;
  private final ChartPlaces places;
  private final String path;
  private final Map<String, Channel> channels = new HashMap<>();
  private String fill;
  private double opacity = 1;
  private Integer bins;

  DrawParser(Cursor cursor, ChartPlaces places, String path) {
    this.cursor = cursor;
    this.places = places;
    this.path = path;
  }

  Element read() {
    Arrangement arrangement = readArrangement();
    List<String> expected = new ArrayList<>(Words.all(ElementKind.class));
    if (arrangement == null) {
      expected.addAll(Words.all(Arrangement.class));
    }
    ElementKind kind = Words.find(ElementKind.class, cursor.word(expected).text());
    cursor.sign(":");
    readClauses();
    return new Element(
        kind, channels.get("x"), channels.get("y"), channels.get("color"), channels.get("size"),
        channels.get("label"), arrangement, bins, fill, opacity);
  }

  private Arrangement readArrangement() {
    Token token = cursor.peek();
    boolean word = token.kind() == TokenKind.WORD;
    Arrangement arrangement = word ? Words.find(Arrangement.class, token.text()) : null;
    if (arrangement != null) {
      place(".arrangement");
      cursor.take();
    }
    return arrangement;
  }

  private void readClauses() {
    Clauses clauses = new Clauses(cursor);
    for (String channel : ChannelRules.NAMES) {
      clauses.add(channel, () -> channels.put(channel, readChannel(channel)));
    }
    clauses.add("fill", this::readFill);
    clauses.add("opacity", this::readOpacity);
    clauses.add("bins", this::readBins);
    clauses.read();
  }

  private Channel readChannel(String name) {
    place("." + name);
    Token token = cursor.peek();
    boolean word = token.kind() == TokenKind.WORD;
    Aggregate aggregate = word ? Words.find(Aggregate.class, token.text()) : null;
    boolean sums = aggregate != null && aggregate != Aggregate.NONE;
    if (sums && cursor.nextIsWord("of")) {
      cursor.take();
      cursor.take();
      return new Channel(cursor.name("a column name").text(), aggregate);
    }
    if (aggregate == Aggregate.COUNT) {
      cursor.take();
      return Channel.count();
    }
    Channel channel = Channel.of(
        cursor.name("a column name, count, or sum, mean, median, min or max of one").text());
    TokenKind next = cursor.peek().kind();
    if (sums && (next == TokenKind.WORD || next == TokenKind.TEXT)) {
      throw cursor.error("expected \"of\", \",\" or the end of the line");
    }
    return channel;
  }

  private void readFill() {
    place(".fill");
    fill = cursor.color().text();
  }

  private void readOpacity() {
    place(".opacity");
    opacity = cursor.number();
  }

  private void readBins() {
    place(".bins");
    bins = cursor.whole();
  }

  private void place(String part) {
    int offset = cursor.peek().offset();
    places.put(path + part, () -> cursor.position(offset));
  }
}
