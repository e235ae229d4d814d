// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.io.ByteArrayInputStream;
import java.io.FileNotFoundException;
import java.io.IOException;
import java.io.OutputStream;
import java.net.URI;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Set;
import org.apache.xmlgraphics.io.Resource;
import org.apache.xmlgraphics.io.ResourceResolver;
import org.chartbridge.document.figure.Illustration;

/** All that the formatter can read: the figures of the document and the font files. */
final class PdfResources implements ResourceResolver {
  private final Set<URI> fonts;

  PdfResources(Set<URI> fonts) {
    this.fonts = fonts;
  }

  @Override
  public Resource getResource(URI uri) throws IOException {
    Illustration figure = PdfFigures.find(uri.toString());
    if (figure != null) {
      byte[] bytes = figure.image() == null ? new byte[0] : figure.image().bytes();
      return new Resource(new ByteArrayInputStream(bytes));
    }
    if (fonts.contains(uri) && FontCollectionFiles.isOf(uri)) {
      return new Resource(new ByteArrayInputStream(FontCollectionFiles.read(uri)));
    }
    if (fonts.contains(uri)) {
      return new Resource(Files.newInputStream(Path.of(uri)));
    }
    throw new FileNotFoundException(uri.toString());
  }

  @Override
  public OutputStream getOutputStream(URI uri) throws IOException {
    throw new FileNotFoundException(uri.toString());
  }
}
