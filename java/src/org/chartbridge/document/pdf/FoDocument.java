// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.ArrayDeque;
import java.util.Deque;
import java.util.List;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.PageGroup;
import org.chartbridge.document.export.PageTables;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.Metadata;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.TextDirection;

/** Writes a document as formatting objects: the pages, the bookmarks and the flow of its blocks. */
final class FoDocument {
  private static final String PAGE = "page";
  private static final String TURNED = "turned-page";
  private static final String LAST = "last-page";

  private final Document document;
  private final PageTables tables;
  private final PdfText setting;
  private final FoBlocks blocks;
  private final FoEvents out;

  FoDocument(Document document, ExportSettings settings, PdfFigures figures, PageTables tables,
      PdfText setting, FoEvents out) {
    this.document = document;
    this.tables = tables;
    this.setting = setting;
    this.out = out;
    blocks = new FoBlocks(document, settings, figures, tables, setting, out);
  }

  void write() {
    out.startDocument();
    out.open("root", "font-family", PdfStyle.FAMILIES, "font-size", PdfStyle.points(PdfStyle.SIZE),
        "line-height", "1.45", "color", PdfStyle.TEXT, "xml:lang",
        document.metadata().language(), "line-height-shift-adjustment", "disregard-shifts",
        "writing-mode", setting.direction() == TextDirection.RIGHT_TO_LEFT
            ? setting.direction().writingMode() : null);
    Paper paper = document.paper();
    out.open("layout-master-set");
    pages(PAGE, paper.width(), paper.height(), Paper.SIDE_MARGIN, Paper.TOP_MARGIN);
    pages(TURNED, paper.height(), paper.width(), Paper.TOP_MARGIN, Paper.SIDE_MARGIN);
    out.close("layout-master-set");
    bookmarks(document.headings());
    List<PageGroup> groups = PageGroup.of(document, tables);
    for (int i = 0; i < groups.size(); i++) {
      PageGroup group = groups.get(i);
      out.open("page-sequence", "master-reference", group.isTurned() ? TURNED : PAGE, "id",
          i == groups.size() - 1 ? LAST : null);
      footer();
      out.open("flow", "flow-name", "xsl-region-body");
      if (i == 0) {
        title(document.metadata());
      }
      blocks(group.blocks(), i > 0 || document.metadata().isEmpty());
      out.close("flow").close("page-sequence");
    }
    out.close("root");
    out.endDocument();
  }

  private void pages(String name, double width, double height, double side, double top) {
    out.open("simple-page-master", "master-name", name, "page-width", width + "mm", "page-height",
        height + "mm", "margin-left", side + "mm", "margin-right", side + "mm");
    out.empty("region-body", "margin-top", top + "mm", "margin-bottom", top + "mm");
    out.empty("region-after", "extent", top + "mm");
    out.close("simple-page-master");
  }

  private void footer() {
    String title = document.metadata().title();
    out.open("static-content", "flow-name", "xsl-region-after");
    out.open("block", "font-size", "8.5pt", "color", PdfStyle.MUTED, "padding-before", "9mm",
        "text-align-last", "justify");
    if (title != null) {
      InlineFo.write(shortened(title), setting, out);
    }
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
      FoDirection turn = FoDirection.open(text, setting, out);
      out.open("block", attributes);
      InlineFo.write(text, setting, out);
      out.close("block");
      turn.close();
    }
  }

  /**
   * @param isNewPage whether there is nothing on the page yet
   */
  private void blocks(List<Block> group, boolean isNewPage) {
    boolean breakBefore = false;
    boolean any = false;
    for (Block block : group) {
      if (block instanceof PageBreak) {
        breakBefore = any || !isNewPage;
        continue;
      }
      if (breakBefore) {
        out.open("block", "break-before", "page");
      }
      block.accept(blocks);
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
