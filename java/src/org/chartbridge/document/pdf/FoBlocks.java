// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.List;
import org.chartbridge.chart.Words;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.export.PageTables;
import org.chartbridge.document.export.TableParts;
import org.chartbridge.document.figure.FigureSize;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.BlockVisitor;
import org.chartbridge.document.model.Contents;
import org.chartbridge.document.model.ContentsText;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.ItemList;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paragraph;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;
import org.chartbridge.document.model.TextDirection;

/** Writes blocks as formatting objects. */
final class FoBlocks implements BlockVisitor {
  private static final String ALWAYS = "always";
  private static final String AFTER = "7pt";
  private static final int FIRST_INDENT_LEVEL = 1;

  private final Document document;
  private final ExportSettings settings;
  private final PdfFigures figures;
  private final PageTables tables;
  private final PdfText setting;
  private final FoEvents out;

  FoBlocks(Document document, ExportSettings settings, PdfFigures figures, PageTables tables,
      PdfText setting, FoEvents out) {
    this.document = document;
    this.settings = settings;
    this.figures = figures;
    this.tables = tables;
    this.setting = setting;
    this.out = out;
  }

  @Override
  public void heading(Heading heading) {
    boolean titled = document.metadata().title() != null;
    int level = Math.min(6, heading.level() + (titled ? 1 : 0));
    FoDirection turn = FoDirection.open(PlainText.of(heading.text()), setting, out,
        "keep-with-next.within-page", ALWAYS);
    out.open("block", "id", heading.id(), "font-size",
        PdfStyle.points(PdfStyle.heading(heading.level())), "font-weight", "bold", "line-height",
        "1.25", "space-before", heading.level() == 1 ? "20pt" : "13pt", "space-after", "5pt",
        "keep-with-next.within-page", ALWAYS, "keep-together.within-page", ALWAYS, "role",
        "H" + level);
    InlineFo.write(heading.text(), setting, out);
    out.close("block");
    turn.close();
  }

  @Override
  public void paragraph(Paragraph paragraph) {
    FoDirection turn = FoDirection.open(PlainText.of(paragraph.text()), setting, out);
    out.open("block", "space-after", AFTER, "text-align", Words.of(paragraph.alignment()),
        "orphans", "2", "widows", "2");
    InlineFo.write(paragraph.text(), setting, out);
    out.close("block");
    turn.close();
  }

  @Override
  public void list(ItemList list) {
    FoDirection turn = FoDirection.open(PlainText.of(list), setting, out);
    items(list);
    turn.close();
  }

  private void items(ItemList list) {
    int widest = list.label(list.items().size() - 1).length();
    double label = 8 + PdfStyle.SIZE * 0.55 * widest;
    out.open("list-block", "space-after", AFTER, "provisional-distance-between-starts",
        PdfStyle.points(label + 6), "provisional-label-separation", "6pt");
    for (int i = 0; i < list.items().size(); i++) {
      item(list, i);
    }
    out.close("list-block");
  }

  private void item(ItemList list, int index) {
    ItemList.Item item = list.items().get(index);
    out.open("list-item", "space-after", "2.5pt");
    out.open("list-item-label", "end-indent", "label-end()").open("block", "text-align", "end");
    out.text(list.label(index)).close("block").close("list-item-label");
    out.open("list-item-body", "start-indent", "body-start()");
    out.open("block", "space-after", "2pt");
    InlineFo.write(item.text(), setting, out);
    out.close("block");
    item.lists().forEach(this::items);
    out.close("list-item-body").close("list-item");
  }

  @Override
  public void table(Table table) {
    List<PageTable> parts = tables.parts(table);
    for (int i = 0; i < parts.size(); i++) {
      String caption = TableParts.caption(table, i, parts.size());
      new FoTable(parts.get(i), caption, document.paper(), setting, out).write();
    }
  }

  @Override
  public void figure(Figure figure) {
    Illustration illustration = settings.figures().get(figure);
    FigureSize size = FigureSize.of(figure, illustration).within(document.paper());
    out.open("block", "text-align", "center", "space-before", "8pt", "space-after", "12pt",
        "keep-together.within-page", ALWAYS);
    out.open("block", "line-height", "0");
    out.empty("external-graphic", "src", "url('" + figures.add(illustration) + "')",
        "content-width", PdfStyle.pixels(size.width()), "content-height",
        PdfStyle.pixels(size.height()), "scaling", "non-uniform", "fox:alt-text",
        settings.alternative(figure));
    out.close("block");
    if (figure.caption() != null) {
      out.open("block", "font-size", "9pt", "color", "#444444", "space-before", "5pt",
          "keep-with-previous.within-page", ALWAYS);
      FoDirection turn = FoDirection.open(figure.caption(), setting, out);
      out.open("block");
      InlineFo.write(figure.caption(), setting, out);
      out.close("block");
      turn.close();
      out.close("block");
    }
    out.close("block");
  }

  @Override
  public void contents(Contents contents) {
    if (!contents.title().isEmpty()) {
      out.open("block", "font-weight", "bold", "font-size", "12pt", "space-before", "6pt",
          "space-after", "4pt", "keep-with-next.within-page", ALWAYS);
      InlineFo.write(contents.title(), setting, out);
      out.close("block");
    }
    out.open("block", "space-after", "16pt");
    for (Heading heading : document.headings()) {
      if (heading.level() <= contents.depth()) {
        entry(heading);
      }
    }
    out.close("block");
  }

  private void entry(Heading heading) {
    int indent = 14 * (heading.level() - FIRST_INDENT_LEVEL);
    out.open("block", "text-align-last", "justify", "start-indent", indent + "pt", "end-indent",
        "0pt");
    out.open("basic-link", "internal-destination", heading.id());
    InlineFo.write(ContentsText.of(heading), setting, out);
    boolean fromRight = setting.direction() == TextDirection.RIGHT_TO_LEFT;
    if (fromRight || TextDirection.isMixed(PlainText.of(heading.text()))) {
      // Dots would take the direction of the letters beside them, and in a link that is reordered
      // the formatter does not stretch them.
      String mark = Character.toString(setting.direction().mark());
      out.close("basic-link").text(mark);
      leader();
      out.text(mark).open("basic-link", "internal-destination", heading.id());
    } else {
      leader();
    }
    out.empty("page-number-citation", "ref-id", heading.id());
    out.close("basic-link").close("block");
  }

  private void leader() {
    out.empty("leader", "leader-pattern", "dots", "color", "#8a8a8a", "leader-pattern-width", "4pt",
        "leader-length.minimum", "12pt", "leader-length.maximum", "100%");
  }

  @Override
  public void pageBreak(PageBreak pageBreak) {
    throw new IllegalStateException("page breaks belong to the blocks behind them");
  }
}
