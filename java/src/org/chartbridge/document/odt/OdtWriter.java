// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.Markup;
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
    title(document.metadata(), body);
    OdtBlocks blocks = new OdtBlocks(document, settings, pictures, body, styles);
    document.blocks().forEach(block -> block.accept(blocks));
    Markup content = new Markup();
    content.open("office:document-content", OdtNamespaces.ROOT).line();
    content.open("office:automatic-styles").line().raw(OdtTable.CELL_STYLES)
        .raw(styles.toString()).close("office:automatic-styles").line();
    content.open("office:body").open("office:text").line().raw(body.toString());
    content.close("office:text").close("office:body");
    return content.close("office:document-content").line();
  }

  private static void title(Metadata metadata, Markup body) {
    paragraph("Title", metadata.title(), body);
    paragraph("Subtitle", metadata.subtitle(), body);
    if (!metadata.isEmpty()) {
      paragraph("Byline", metadata.byline(), body);
    }
  }

  private static void paragraph(String style, String text, Markup body) {
    if (text != null) {
      body.element("text:p", text, "text:style-name", style).line();
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
