// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.ArrayDeque;
import java.util.Deque;
import java.util.List;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.Metadata;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;

/** Writes a document as formatting objects: the pages, the bookmarks and the flow of its blocks. */
final class FoDocument {
  private static final String PAGE = "page";
  private static final String LAST = "last-page";

  private final Document document;
  private final ExportSettings settings;
  private final PdfFigures figures;
  private final FoEvents out;

  FoDocument(Document document, ExportSettings settings, PdfFigures figures, FoEvents out) {
    this.document = document;
    this.settings = settings;
    this.figures = figures;
    this.out = out;
  }

  void write() {
    out.startDocument();
    out.open("root", "font-family", PdfStyle.FAMILIES, "font-size", PdfStyle.points(PdfStyle.SIZE),
        "line-height", "1.45", "color", PdfStyle.TEXT, "xml:lang",
        document.metadata().language(), "line-height-shift-adjustment", "disregard-shifts");
    pages(document.paper());
    bookmarks(document.headings());
    out.open("page-sequence", "master-reference", PAGE, "id", LAST);
    footer();
    out.open("flow", "flow-name", "xsl-region-body");
    title(document.metadata());
    blocks();
    out.close("flow").close("page-sequence").close("root");
    out.endDocument();
  }

  private void pages(Paper paper) {
    String top = Paper.TOP_MARGIN + "mm";
    out.open("layout-master-set");
    out.open("simple-page-master", "master-name", PAGE, "page-width", paper.width() + "mm",
        "page-height", paper.height() + "mm", "margin-left", Paper.SIDE_MARGIN + "mm",
        "margin-right", Paper.SIDE_MARGIN + "mm");
    out.empty("region-body", "margin-top", top, "margin-bottom", top);
    out.empty("region-after", "extent", top);
    out.close("simple-page-master").close("layout-master-set");
  }

  private void footer() {
    String title = document.metadata().title();
    out.open("static-content", "flow-name", "xsl-region-after");
    out.open("block", "font-size", "8.5pt", "color", PdfStyle.MUTED, "padding-before", "9mm",
        "text-align-last", "justify");
    out.text(title == null ? "" : shortened(title));
    out.empty("leader", "leader-pattern", "space");
    out.empty("page-number").text(" / ").empty("page-number-citation-last", "ref-id", LAST);
    out.close("block").close("static-content");
  }

  private static String shortened(String title) {
    int longest = 80;
    return title.length() <= longest
        ? title : title.substring(0, title.offsetByCodePoints(0, 60)).strip() + "\u2026";
  }

  /** Nested as the levels of the headings ask for. */
  private void bookmarks(List<Heading> headings) {
    if (headings.isEmpty()) {
      return;
    }
    out.open("bookmark-tree");
    Deque<Integer> levels = new ArrayDeque<>();
    for (Heading heading : headings) {
      while (!levels.isEmpty() && levels.peek() >= heading.level()) {
        levels.pop();
        out.close("bookmark");
      }
      levels.push(heading.level());
      out.open("bookmark", "internal-destination", heading.id());
      out.open("bookmark-title").text(PlainText.of(heading.text())).close("bookmark-title");
    }
    levels.forEach(level -> out.close("bookmark"));
    out.close("bookmark-tree");
  }

  private void title(Metadata metadata) {
    if (metadata.isEmpty()) {
      return;
    }
    out.open("block", "space-after", "20pt", "padding-after", "10pt", "border-after-style", "solid",
        "border-after-width", "0.6pt", "border-after-color", PdfStyle.RULE);
    line(metadata.title(), "font-size", "21pt", "font-weight", "bold", "line-height", "1.2",
        "role", "H1");
    line(metadata.subtitle(), "font-size", "12.5pt", "color", "#444444", "space-before", "4pt");
    String byline = metadata.byline();
    line(byline.isEmpty() ? null : byline, "color", PdfStyle.MUTED, "space-before", "6pt");
    out.close("block");
  }

  private void line(String text, String... attributes) {
    if (text != null) {
      out.open("block", attributes).text(text).close("block");
    }
  }

  private void blocks() {
    FoBlocks visitor = new FoBlocks(document, settings, figures, out);
    boolean breakBefore = false;
    boolean any = false;
    for (Block block : document.blocks()) {
      if (block instanceof PageBreak) {
        breakBefore = any || !document.metadata().isEmpty();
        continue;
      }
      if (breakBefore) {
        out.open("block", "break-before", "page");
      }
      block.accept(visitor);
      if (breakBefore) {
        out.close("block");
      }
      breakBefore = false;
      any = true;
    }
    if (!any) {
      out.empty("block");
    }
  }
}
