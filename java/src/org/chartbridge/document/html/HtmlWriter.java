// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Metadata;
import org.chartbridge.document.model.Paper;

/**
 * Writes one self-contained HTML5 page in UTF-8: pictures within it, no scripts, and nothing that a
 * browser would fetch. The page is well-formed XML too.
 */
public final class HtmlWriter implements DocumentWriter {
  /** A browser that could be talked into fetching or running something refuses to. */
  private static final String POLICY =
      "default-src 'none'; img-src data:; style-src 'unsafe-inline'";

  @Override
  public void write(Document document, ExportSettings settings, OutputStream out)
      throws IOException {
    Metadata metadata = document.metadata();
    HtmlText text = new HtmlText(document);
    Markup page = new Markup();
    page.raw("<!DOCTYPE html>\n").open("html", "lang", metadata.language(), "dir", text.page())
        .line();
    head(document, page);
    page.open("body").line().open("main").line();
    title(metadata, text, page);
    HtmlBlocks blocks = new HtmlBlocks(document, settings, page);
    document.blocks().forEach(block -> block.accept(blocks));
    page.close("main").line().close("body").line().close("html").line();
    out.write(page.toString().getBytes(StandardCharsets.UTF_8));
  }

  private static void head(Document document, Markup page) throws IOException {
    Metadata metadata = document.metadata();
    page.open("head").line().empty("meta", "charset", "utf-8").line();
    page.empty("meta", "http-equiv", "Content-Security-Policy", "content", POLICY).line();
    page.empty("meta", "name", "viewport", "content", "width=device-width, initial-scale=1");
    page.line().element("title", metadata.title() == null ? "Document" : metadata.title()).line();
    if (metadata.author() != null) {
      page.empty("meta", "name", "author", "content", metadata.author()).line();
    }
    if (metadata.date() != null) {
      page.empty("meta", "name", "date", "content", metadata.date()).line();
    }
    page.empty("meta", "name", "generator", "content", "chartbridge").line();
    page.open("style").line().raw(styleSheet()).raw(paper(document.paper())).close("style").line();
    page.close("head").line();
  }

  private static String styleSheet() throws IOException {
    try (InputStream in = HtmlWriter.class.getResourceAsStream("document.css")) {
      if (in == null) {
        throw new IllegalStateException("document.css is missing in the jar");
      }
      String text = new String(in.readAllBytes(), StandardCharsets.UTF_8);
      // The licence of the file is not that of the page.
      return text.substring(text.indexOf('\n') + 1);
    }
  }

  private static String paper(Paper paper) {
    String size = paper == Paper.A4 ? "A4" : "letter";
    return "@page { size: " + size + "; margin: " + (int) Paper.TOP_MARGIN + "mm "
        + (int) Paper.SIDE_MARGIN + "mm; }\n";
  }

  private static void title(Metadata metadata, HtmlText text, Markup page) {
    if (metadata.isEmpty()) {
      return;
    }
    page.open("header").line();
    if (metadata.title() != null) {
      page.element("h1", metadata.title(), "dir", text.of(metadata.title())).line();
    }
    if (metadata.subtitle() != null) {
      page.element("p", metadata.subtitle(), "class", "subtitle", "dir",
          text.of(metadata.subtitle())).line();
    }
    if (!metadata.byline().isEmpty()) {
      page.open("p", "class", "byline");
      if (metadata.author() != null) {
        page.text(metadata.author());
      }
      if (metadata.author() != null && metadata.date() != null) {
        page.text(" \u00B7 ");
      }
      if (metadata.date() != null) {
        page.element("time", metadata.date(), "datetime", metadata.date());
      }
      page.close("p").line();
    }
    page.close("header").line();
  }
}
