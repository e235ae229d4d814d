// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

import java.util.ArrayDeque;
import java.util.Base64;
import java.util.Deque;
import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.Words;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.figure.FigureSize;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.BlockVisitor;
import org.chartbridge.document.model.Contents;
import org.chartbridge.document.model.ContentsText;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.ImageData;
import org.chartbridge.document.model.ItemList;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paragraph;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.PictureEncoder;

/** Writes blocks as HTML. */
final class HtmlBlocks implements BlockVisitor {
  private final Document document;
  private final ExportSettings settings;
  private final HtmlText text;
  private final Markup out;
  /** The title of the document is the first heading of the page, so the others are one lower. */
  private final int shift;

  HtmlBlocks(Document document, ExportSettings settings, Markup out) {
    this.document = document;
    this.settings = settings;
    this.out = out;
    text = new HtmlText(document);
    shift = document.metadata().title() == null ? 0 : 1;
  }

  @Override
  public void heading(Heading heading) {
    String name = "h" + Math.min(6, heading.level() + shift);
    out.open(name, "id", heading.id(), "dir", text.of(heading.text()));
    InlineMarkup.write(heading.text(), text, out);
    out.close(name).line();
  }

  @Override
  public void paragraph(Paragraph paragraph) {
    out.open("p", "class", alignment(paragraph.alignment(), Alignment.START), "dir",
        text.of(paragraph.text()));
    InlineMarkup.write(paragraph.text(), text, out);
    out.close("p").line();
  }

  private static String alignment(Alignment alignment, Alignment standard) {
    return alignment == standard ? null : Words.of(alignment);
  }

  @Override
  public void list(ItemList list) {
    list(list, text.of(PlainText.of(list)));
  }

  private void list(ItemList list, String direction) {
    String name = list.numbered() ? "ol" : "ul";
    boolean numbered = list.numbered() && list.start() != 1;
    out.open(name, "start", numbered ? Integer.toString(list.start()) : null, "dir",
        direction).line();
    for (ItemList.Item item : list.items()) {
      out.open("li");
      InlineMarkup.write(item.text(), text, out);
      if (!item.lists().isEmpty()) {
        out.line();
      }
      item.lists().forEach(below -> list(below, null));
      out.close("li").line();
    }
    out.close(name).line();
  }

  @Override
  public void table(Table table) {
    boolean full = table.columns().stream().anyMatch(column -> column.width() > 0);
    out.open("div", "class", "table").open("table", "class", full ? "full" : null).line();
    if (table.caption() != null) {
      String direction = text.of(table.caption());
      out.element("caption", table.caption(), "class", direction == null ? null : text.start(),
          "dir", direction).line();
    }
    columns(table.columns());
    rows(table, 0, table.headerRows(), "thead");
    rows(table, table.headerRows(), table.rows().size(), "tbody");
    out.close("table").close("div").line();
  }

  private void columns(List<Table.Column> columns) {
    if (columns.stream().allMatch(column -> column.width() == 0)) {
      return;
    }
    out.open("colgroup");
    for (Table.Column column : columns) {
      out.empty("col", "style",
          column.width() == 0 ? null : String.format(Locale.ROOT, "width:%.4g%%", column.width()));
    }
    out.close("colgroup").line();
  }

  private void rows(Table table, int from, int to, String section) {
    if (from == to) {
      return;
    }
    out.open(section).line();
    for (int row = from; row < to; row++) {
      out.open("tr");
      for (Table.Cell cell : table.rows().get(row)) {
        cell(cell, row < table.headerRows());
      }
      out.close("tr").line();
    }
    out.close(section).line();
  }

  private void cell(Table.Cell cell, boolean inHeader) {
    String name = cell.header() ? "th" : "td";
    String direction = text.of(cell.text());
    // Cells of a column stand below each other, whatever is in them.
    String alignment = direction != null && cell.alignment() == Alignment.START
        ? text.start() : alignment(cell.alignment(), Alignment.START);
    out.open(name, "scope", scope(cell, inHeader), "colspan", span(cell.columnSpan()), "rowspan",
        span(cell.rowSpan()), "class", alignment, "dir", direction);
    InlineMarkup.write(cell.text(), text, out);
    out.close(name);
  }

  private static String scope(Table.Cell cell, boolean inHeader) {
    if (!cell.header()) {
      return null;
    }
    if (inHeader) {
      return cell.columnSpan() > 1 ? "colgroup" : "col";
    }
    return cell.rowSpan() > 1 ? "rowgroup" : "row";
  }

  private static String span(int span) {
    return span == 1 ? null : Integer.toString(span);
  }

  @Override
  public void figure(Figure figure) {
    Illustration illustration = settings.figures().get(figure);
    FigureSize size = FigureSize.of(figure, illustration);
    out.open("figure").line();
    out.empty("img", "src", dataUri(illustration), "alt", settings.alternative(figure), "width",
        Long.toString(Math.max(1, Math.round(size.width()))), "height",
        Long.toString(Math.max(1, Math.round(size.height()))));
    out.line();
    if (figure.caption() != null) {
      out.element("figcaption", figure.caption(), "dir", text.of(figure.caption())).line();
    }
    out.close("figure").line();
  }

  private static String dataUri(Illustration illustration) {
    ImageData image = illustration.image();
    String type = image == null ? ImageData.Format.SVG.mediaType() : image.format().mediaType();
    byte[] bytes = image == null
        ? PictureEncoder.encode(illustration.picture(), ImageType.SVG) : image.bytes();
    return "data:" + type + ";base64," + Base64.getEncoder().encodeToString(bytes);
  }

  /** Lists within lists, as the levels of the headings ask for. */
  @Override
  public void contents(Contents contents) {
    out.open("nav", "class", "contents", "aria-label",
        contents.title().isEmpty() ? "Contents" : contents.title()).line();
    if (!contents.title().isEmpty()) {
      out.element("p", contents.title(), "class", "contents-title").line();
    }
    Deque<Integer> levels = new ArrayDeque<>();
    for (Heading heading : document.headings()) {
      if (heading.level() <= contents.depth()) {
        entry(heading, levels);
      }
    }
    while (!levels.isEmpty()) {
      levels.pop();
      out.close("li").close("ul").line();
    }
    out.close("nav").line();
  }

  private void entry(Heading heading, Deque<Integer> levels) {
    while (levels.size() > 1 && heading.level() < levels.peek()) {
      int deeper = levels.pop();
      if (heading.level() > levels.peek()) {
        // Between the two: there is no list of that level, so it goes on with the deeper one.
        levels.push(deeper);
        break;
      }
      out.close("li").close("ul").line();
    }
    if (levels.isEmpty() || heading.level() > levels.peek()) {
      out.open("ul").line();
    } else {
      levels.pop();
      out.close("li").line();
    }
    levels.push(heading.level());
    out.open("li").open("a", "href", "#" + heading.id(), "dir", text.of(heading.text()));
    InlineMarkup.write(ContentsText.of(heading), text, out);
    out.close("a");
  }

  @Override
  public void pageBreak(PageBreak pageBreak) {
    out.empty("hr", "class", "page-break").line();
  }
}
