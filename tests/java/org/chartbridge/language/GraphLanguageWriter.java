// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Words;

/**
 * Writes charts in the graph language, to see that the language can say everything that the model
 * holds.
 */
final class GraphLanguageWriter {
  private final StringBuilder out = new StringBuilder();
  private final String separator;

  private GraphLanguageWriter(String separator) {
    this.separator = separator;
  }

  /** @param separator between clauses: a comma, or a line break and spaces, or both */
  static String of(Chart chart, String separator) {
    GraphLanguageWriter text = new GraphLanguageWriter(separator);
    text.chart(chart);
    return text.out.toString();
  }

  private void chart(Chart chart) {
    line("size " + chart.size().width() + " by " + chart.size().height());
    titled("title", chart.titles().title());
    titled("subtitle", chart.titles().subtitle());
    titled("caption", chart.titles().caption());
    titled("style", chart.style());
    chart.columns().forEach(this::column);
    chart.elements().forEach(this::draw);
    axis("x", chart.x());
    axis("y", chart.y());
    legend(chart.legend());
    panels(chart.facet());
    if (!chart.palette().isEmpty()) {
      line("palette " + String.join(", ", chart.palette()));
    }
  }

  private void line(String line) {
    out.append(line).append('\n');
  }

  private void titled(String word, String text) {
    if (text != null) {
      line(word + " " + quoted(text));
    }
  }

  private void clauses(String start, List<String> clauses) {
    line(start + " " + String.join(separator, clauses));
  }

  private void column(ColumnDeclaration column) {
    StringBuilder kind = new StringBuilder(Words.of(column.kind()));
    if (column.pattern() != null) {
      kind.append(" written ").append(quoted(column.pattern()));
    }
    if (!column.order().isEmpty()) {
      kind.append(' ').append(
          String.join(" < ", column.order().stream().map(GraphLanguageWriter::quoted).toList()));
    }
    List<String> clauses = new ArrayList<>(List.of(kind.toString()));
    if (column.label() != null) {
      clauses.add("label " + quoted(column.label()));
    }
    clauses("column " + quoted(column.name()) + ":", clauses);
  }

  private void draw(Element element) {
    List<String> clauses = new ArrayList<>();
    for (String name : ChannelRules.NAMES) {
      Channel channel = ChannelRules.channel(element, name);
      if (channel != null) {
        clauses.add(name + " " + value(channel));
      }
    }
    if (element.fill() != null) {
      clauses.add("fill " + element.fill());
    }
    if (element.bins() != null) {
      clauses.add("bins " + element.bins());
    }
    clauses.add("opacity " + element.opacity());
    Arrangement arrangement = element.arrangement();
    String adjective = arrangement == null ? "" : Words.of(arrangement) + " ";
    clauses("draw " + adjective + Words.of(element.kind()) + ":", clauses);
  }

  private static String value(Channel channel) {
    if (channel.column() == null) {
      return "count";
    }
    boolean sums = channel.aggregate() != Aggregate.NONE;
    return (sums ? Words.of(channel.aggregate()) + " of " : "") + quoted(channel.column());
  }

  private void axis(String name, Axis axis) {
    List<String> clauses = new ArrayList<>();
    if (axis.scale() != ScaleKind.AUTO) {
      clauses.add(Words.of(axis.scale()));
    }
    if (axis.min() != null) {
      clauses.add("from " + AxisLimit.text(axis.min(), axis.scale()));
    }
    if (axis.max() != null) {
      clauses.add("to " + AxisLimit.text(axis.max(), axis.scale()));
    }
    if (axis.title() != null) {
      clauses.add(axis.title().isEmpty() ? "no title" : "title " + quoted(axis.title()));
    }
    if (axis.reversed()) {
      clauses.add("reversed");
    }
    if (!axis.grid()) {
      clauses.add("no grid");
    }
    if (axis.format() != null) {
      clauses.add("format " + quoted(axis.format()));
    }
    if (!clauses.isEmpty()) {
      clauses("axis " + name + ":", clauses);
    }
  }

  private void legend(Legend legend) {
    List<String> clauses = new ArrayList<>();
    if (legend.position() != null) {
      clauses.add(Words.of(legend.position()));
    }
    if (legend.title() != null) {
      clauses.add("title " + quoted(legend.title()));
    }
    if (!clauses.isEmpty()) {
      clauses("legend:", clauses);
    }
  }

  private void panels(Facet facet) {
    if (facet == null) {
      return;
    }
    List<String> clauses = new ArrayList<>();
    if (facet.columns() != null) {
      clauses.add("rows of " + facet.columns());
    }
    if (!facet.sharedX()) {
      clauses.add("free x");
    }
    if (!facet.sharedY()) {
      clauses.add("free y");
    }
    clauses("panels by " + quoted(facet.column()) + (clauses.isEmpty() ? "" : ":"), clauses);
  }

  private static String quoted(String text) {
    StringBuilder out = new StringBuilder("\"");
    text.codePoints().forEach(c -> {
      switch (c) {
        case '"' -> out.append("\\\"");
        case '\\' -> out.append("\\\\");
        case '\n' -> out.append("\\n");
        case '\t' -> out.append("\\t");
        case '\r' -> out.append("\\u{D}");
        default -> out.appendCodePoint(c);
      }
    });
    return out.append('"').toString();
  }
}
