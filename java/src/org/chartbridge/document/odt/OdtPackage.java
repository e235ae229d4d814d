// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.charset.StandardCharsets;
import java.time.LocalDateTime;
import java.util.zip.CRC32;
import java.util.zip.ZipEntry;
import java.util.zip.ZipOutputStream;
import org.chartbridge.document.export.Markup;

/** The files of an OpenDocument, in one ZIP file with a list of what is in it. */
final class OdtPackage {
  private static final String MEDIA_TYPE = "application/vnd.oasis.opendocument.text";
  private static final String NAMESPACE = "urn:oasis:names:tc:opendocument:xmlns:manifest:1.0";
  /** The same documents make the same files. */
  private static final LocalDateTime TIME = LocalDateTime.of(2020, 1, 1, 0, 0);

  private final ZipOutputStream out;
  private final Markup manifest = new Markup();

  OdtPackage(OutputStream out) throws IOException {
    this.out = new ZipOutputStream(out);
    manifest.raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    manifest.open("manifest:manifest", "xmlns:manifest", NAMESPACE, "manifest:version",
        OdtNamespaces.VERSION).line();
    entry("/", MEDIA_TYPE);
    mediaType();
  }

  /** It comes first and as it is, so that the kind of file can be told from its first bytes. */
  private void mediaType() throws IOException {
    byte[] bytes = MEDIA_TYPE.getBytes(StandardCharsets.US_ASCII);
    CRC32 sum = new CRC32();
    sum.update(bytes);
    ZipEntry entry = new ZipEntry("mimetype");
    entry.setMethod(ZipEntry.STORED);
    entry.setSize(bytes.length);
    entry.setCrc(sum.getValue());
    write(entry, bytes);
  }

  private void write(ZipEntry entry, byte[] bytes) throws IOException {
    entry.setTimeLocal(TIME);
    out.putNextEntry(entry);
    out.write(bytes);
    out.closeEntry();
  }

  private void entry(String path, String mediaType) {
    manifest.empty("manifest:file-entry", "manifest:full-path", path, "manifest:media-type",
        mediaType, "manifest:version", path.equals("/") ? OdtNamespaces.VERSION : null).line();
  }

  void add(String path, String mediaType, byte[] bytes) throws IOException {
    entry(path, mediaType);
    write(new ZipEntry(path), bytes);
  }

  void add(String path, Markup xml) throws IOException {
    add(path, "text/xml", ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + xml)
        .getBytes(StandardCharsets.UTF_8));
  }

  /** Writes the list of what is in it. The stream below stays open. */
  void finish() throws IOException {
    manifest.close("manifest:manifest").line();
    write(new ZipEntry("META-INF/manifest.xml"),
        manifest.toString().getBytes(StandardCharsets.UTF_8));
    out.finish();
  }
}
