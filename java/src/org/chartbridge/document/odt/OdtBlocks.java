// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.util.List;
import java.util.Locale;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.PageTable;
import org.chartbridge.document.export.PageTables;
import org.chartbridge.document.export.TableParts;
import org.chartbridge.document.figure.FigureSize;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.Alignment;
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

/** Writes blocks as OpenDocument. */
final class OdtBlocks implements BlockVisitor {
  private static final double MILLIMETRES_PER_PIXEL = 25.4 / 96;

  private final Document document;
  private final ExportSettings settings;
  private final OdtPictures pictures;
  private final Markup out;
  private final Markup styles;
  private final PageTables parts;
  private final OdtText text;
  private int tables;
  private int figures;
  private int contents;

  /**
   * @param styles takes the styles that only one element has
   */
  OdtBlocks(Document document, ExportSettings settings, OdtPictures pictures, PageTables parts,
      OdtText text, Markup out, Markup styles) {
    this.document = document;
    this.settings = settings;
    this.pictures = pictures;
    this.out = out;
    this.styles = styles;
    this.parts = parts;
    this.text = text;
  }

  /** The style of that alignment; {@code start} completes the name for text of none. */
  static String aligned(String family, Alignment alignment, String start) {
    return family + switch (alignment) {
      case START -> start;
      case CENTER -> "center";
      case RIGHT -> "right";
      case JUSTIFY -> "justify";
      case LEFT -> "left";
    };
  }

  @Override
  public void heading(Heading heading) {
    String style = text.style("Heading_20_" + heading.level(), heading.text());
    out.open("text:h", "text:style-name", style, "text:outline-level",
        Integer.toString(heading.level()));
    out.empty("text:bookmark-start", "text:name", heading.id());
    OdtInline.write(heading.text(), text, out);
    out.empty("text:bookmark-end", "text:name", heading.id()).close("text:h").line();
  }

  @Override
  public void paragraph(Paragraph paragraph) {
    String style = aligned("Text_20_", paragraph.alignment(), "body");
    out.open("text:p", "text:style-name", text.style(style, paragraph.text()));
    OdtInline.write(paragraph.text(), text, out);
    out.close("text:p").line();
  }

  @Override
  public void list(ItemList list) {
    items(list, PlainText.of(list));
    out.empty("text:p", "text:style-name", "After_20_list").line();
  }

  /**
   * @param whole the text of the list that this one is in, which all of it runs like
   */
  private void items(ItemList list, String whole) {
    out.open("text:list", "text:style-name", list.numbered() ? "Numbers" : "Bullets").line();
    for (int i = 0; i < list.items().size(); i++) {
      ItemList.Item item = list.items().get(i);
      boolean started = i == 0 && list.numbered() && list.start() != 1;
      out.open("text:list-item", "text:start-value",
          started ? Integer.toString(list.start()) : null);
      out.open("text:p", "text:style-name", text.style("List_20_item", whole));
      OdtInline.write(item.text(), text, out);
      out.close("text:p");
      item.lists().forEach(below -> items(below, whole));
      out.close("text:list-item").line();
    }
    out.close("text:list").line();
  }

  @Override
  public void table(Table table) {
    List<PageTable> measured = parts.parts(table);
    for (int i = 0; i < measured.size(); i++) {
      String caption = TableParts.caption(table, i, measured.size());
      if (caption != null) {
        out.element("text:p", caption, "text:style-name", text.style("Table_20_caption", caption));
        out.line();
      }
      new OdtTable(measured.get(i), "Table" + ++tables, text, out).write(styles);
      out.empty("text:p", "text:style-name", "After_20_table").line();
    }
  }

  @Override
  public void figure(Figure figure) {
    Illustration illustration = settings.figures().get(figure);
    FigureSize size = FigureSize.of(figure, illustration).within(document.paper());
    boolean captioned = figure.caption() != null;
    out.open("text:p", "text:style-name", captioned ? "Captioned_20_figure" : "Figure");
    out.open("draw:frame", "draw:name", "Figure" + ++figures, "text:anchor-type", "as-char",
        "svg:width", millimetres(size.width()), "svg:height", millimetres(size.height()));
    pictures.refer(illustration, out);
    out.element("svg:desc", settings.alternative(figure)).close("draw:frame").close("text:p");
    out.line();
    if (captioned) {
      out.element("text:p", figure.caption(), "text:style-name",
          text.style("Figure_20_caption", figure.caption())).line();
    }
  }

  private static String millimetres(double pixels) {
    return String.format(Locale.ROOT, "%.2fmm", pixels * MILLIMETRES_PER_PIXEL);
  }

  /** A word processor finds the page numbers when it lays the document out. */
  @Override
  public void contents(Contents block) {
    String name = "Contents" + ++contents;
    out.open("text:table-of-content", "text:name", name, "text:protected", "true").line();
    source(block);
    out.open("text:index-body").line();
    if (!block.title().isEmpty()) {
      out.open("text:index-title", "text:name", name + "_Head");
      out.element("text:p", block.title(), "text:style-name", "Contents_20_Heading");
      out.close("text:index-title").line();
    }
    for (Heading heading : document.headings()) {
      if (heading.level() <= block.depth()) {
        entry(heading);
      }
    }
    out.close("text:index-body").close("text:table-of-content").line();
  }

  private void source(Contents block) {
    out.open("text:table-of-content-source", "text:outline-level",
        Integer.toString(block.depth())).line();
    out.element("text:index-title-template", block.title(), "text:style-name",
        "Contents_20_Heading").line();
    for (int level = 1; level <= block.depth(); level++) {
      out.open("text:table-of-content-entry-template", "text:outline-level",
          Integer.toString(level), "text:style-name", "Contents_20_" + level);
      out.empty("text:index-entry-link-start").empty("text:index-entry-text");
      out.empty("text:index-entry-tab-stop", "style:type", "right", "style:leader-char", ".");
      out.empty("text:index-entry-page-number").empty("text:index-entry-link-end");
      out.close("text:table-of-content-entry-template").line();
    }
    out.close("text:table-of-content-source").line();
  }

  private void entry(Heading heading) {
    out.open("text:p", "text:style-name", "Contents_20_" + heading.level());
    out.open("text:a", "xlink:type", "simple", "xlink:href", "#" + heading.id(),
        "text:style-name", "Contents_20_link");
    OdtInline.write(ContentsText.of(heading), text, out);
    out.empty("text:tab");
    out.open("text:bookmark-ref", "text:reference-format", "page", "text:ref-name", heading.id());
    out.text("1").close("text:bookmark-ref").close("text:a").close("text:p").line();
  }

  @Override
  public void pageBreak(PageBreak pageBreak) {
    out.empty("text:p", "text:style-name", "Page_20_break").line();
  }
}
