// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.TableParts;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.BlockVisitor;
import org.chartbridge.document.model.Contents;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.ItemList;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paragraph;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;

/** Writes blocks as plain text, with an empty line behind each. */
final class TextBlocks implements BlockVisitor {
  private static final int WIDTH = TextWriter.WIDTH;
  private static final String[] UNDERLINES = {"=", "-", "~"};

  private final Document document;
  private final ExportSettings settings;
  private final Locale language;
  private final StringBuilder out;

  TextBlocks(Document document, ExportSettings settings, StringBuilder out) {
    this.document = document;
    this.settings = settings;
    language = document.metadata().locale();
    this.out = out;
  }

  @Override
  public void heading(Heading heading) {
    if (heading.level() <= 2 && out.length() > 0) {
      out.append('\n');
    }
    int longest = 0;
    for (String line : TextLines.wrap(PlainText.of(heading.text()), WIDTH, language)) {
      line(line);
      longest = Math.max(longest, TextWidth.of(line));
    }
    if (heading.level() <= UNDERLINES.length) {
      line(UNDERLINES[heading.level() - 1].repeat(longest));
    }
    line("");
  }

  @Override
  public void paragraph(Paragraph paragraph) {
    for (String line : TextLines.wrap(MarkedText.of(paragraph.text()), WIDTH, language)) {
      line(TextLines.aligned(line, WIDTH, paragraph.alignment()));
    }
    line("");
  }

  @Override
  public void list(ItemList list) {
    list(list, "");
    line("");
  }

  private void list(ItemList list, String indent) {
    int last = list.items().size() - 1;
    int widest = label(list, last).length();
    for (int i = 0; i <= last; i++) {
      ItemList.Item item = list.items().get(i);
      String label = indent + " ".repeat(widest - label(list, i).length()) + label(list, i) + " ";
      String inner = " ".repeat(label.length());
      String text = MarkedText.of(item.text());
      List<String> lines = TextLines.wrap(text, Math.max(20, WIDTH - inner.length()), language);
      for (int line = 0; line < lines.size(); line++) {
        line((line == 0 ? label : inner) + lines.get(line));
      }
      item.lists().forEach(below -> list(below, inner));
    }
  }

  /** A hyphen: every encoding has it. */
  private static String label(ItemList list, int index) {
    return list.numbered() ? list.label(index) : "-";
  }

  @Override
  public void table(Table table) {
    List<List<String>> parts = TextTable.draw(table, WIDTH, language);
    for (int i = 0; i < parts.size(); i++) {
      String caption = TableParts.caption(table, i, parts.size());
      if (caption != null) {
        TextLines.wrap(caption, WIDTH, language).forEach(this::line);
      }
      parts.get(i).forEach(this::line);
      line("");
    }
  }

  @Override
  public void figure(Figure figure) {
    String kind = switch (figure.content().kind()) {
      case "chart" -> "Chart";
      case "tree" -> "Decision tree";
      default -> "Image";
    };
    String shown = settings.alternative(figure);
    String text = shown.equals(kind) ? kind : kind + ": " + shown;
    TextLines.wrap("[" + text + "]", WIDTH, language).forEach(this::line);
    if (figure.caption() != null && !figure.caption().strip().equals(shown)) {
      TextLines.wrap(figure.caption(), WIDTH, language).forEach(this::line);
    }
    line("");
  }

  @Override
  public void contents(Contents contents) {
    if (!contents.title().isEmpty()) {
      line(contents.title());
      line(UNDERLINES[1].repeat(TextWidth.of(contents.title())));
    }
    for (Heading heading : document.headings()) {
      if (heading.level() <= contents.depth()) {
        String indent = "  ".repeat(heading.level() - 1);
        String text = PlainText.of(heading.text());
        TextLines.wrap(text, WIDTH - indent.length(), language)
            .forEach(part -> line(indent + part));
      }
    }
    line("");
  }

  @Override
  public void pageBreak(PageBreak pageBreak) {
    line(TextLines.aligned("* * *", WIDTH, Alignment.CENTER));
    line("");
  }

  private void line(String line) {
    out.append(line.stripTrailing()).append('\n');
  }
}
