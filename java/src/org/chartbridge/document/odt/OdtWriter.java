// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import java.util.List;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.Markup;
import org.chartbridge.document.export.PageGroup;
import org.chartbridge.document.export.PageTables;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Metadata;

/**
 * Writes OpenDocument text, to go on with in a word processor: named styles, real headings, lists,
 * tables and contents, figures as SVG with a PNG beside it for programs that show no SVG.
 */
public final class OdtWriter implements DocumentWriter {
  @Override
  public void write(Document document, ExportSettings settings, OutputStream out)
      throws IOException {
    OdtPackage files = new OdtPackage(out);
    OdtPictures pictures = new OdtPictures(files);
    files.add("content.xml", content(document, settings, pictures));
    files.add("styles.xml", "text/xml", OdtStyles.of(document).getBytes(StandardCharsets.UTF_8));
    files.add("meta.xml", metadata(document.metadata()));
    pictures.write();
    files.finish();
  }

  private static Markup content(Document document, ExportSettings settings, OdtPictures pictures) {
    Markup body = new Markup();
    Markup styles = new Markup();
    OdtText text = new OdtText(document, styles);
    PageTables tables = new PageTables(document);
    OdtBlocks blocks = new OdtBlocks(document, settings, pictures, tables, text, body, styles);
    List<PageGroup> groups = PageGroup.of(document, tables);
    for (PageGroup group : groups) {
      boolean first = group == groups.get(0);
      if (!first || group.isTurned()) {
        body.empty("text:p", "text:style-name",
            group.isTurned() ? "Turned_20_page" : "Upright_20_page").line();
      }
      if (first) {
        title(document.metadata(), text, body);
      }
      group.blocks().forEach(block -> block.accept(blocks));
    }
    Markup content = new Markup();
    content.open("office:document-content", OdtNamespaces.ROOT).line();
    content.open("office:automatic-styles").line().raw(OdtTable.CELL_STYLES)
        .raw(styles.toString()).close("office:automatic-styles").line();
    content.open("office:body").open("office:text").line().raw(body.toString());
    content.close("office:text").close("office:body");
    return content.close("office:document-content").line();
  }

  private static void title(Metadata metadata, OdtText text, Markup body) {
    paragraph("Title", metadata.title(), text, body);
    paragraph("Subtitle", metadata.subtitle(), text, body);
    if (!metadata.isEmpty()) {
      paragraph("Byline", metadata.byline(), text, body);
    }
  }

  private static void paragraph(String style, String line, OdtText text, Markup body) {
    if (line != null) {
      body.element("text:p", line, "text:style-name", text.style(style, line)).line();
    }
  }

  private static Markup metadata(Metadata metadata) {
    Markup meta = new Markup();
    meta.open("office:document-meta", OdtNamespaces.ROOT).open("office:meta").line();
    meta.element("meta:generator", "chartbridge").line();
    element("dc:title", metadata.title(), meta);
    element("dc:subject", metadata.subtitle(), meta);
    element("meta:initial-creator", metadata.author(), meta);
    element("dc:creator", metadata.author(), meta);
    element("dc:date", metadata.date() == null ? null : metadata.date() + "T00:00:00", meta);
    element("dc:language", metadata.language(), meta);
    return meta.close("office:meta").close("office:document-meta").line();
  }

  private static void element(String name, String text, Markup meta) {
    if (text != null) {
      meta.element(name, text).line();
    }
  }
}
