// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.awt.Font;
import java.io.ByteArrayInputStream;
import java.net.URI;
import java.nio.file.Path;
import java.util.Collection;
import java.util.LinkedHashSet;
import java.util.Set;
import org.apache.fop.configuration.Configuration;
import org.apache.fop.configuration.ConfigurationException;
import org.apache.fop.configuration.DefaultConfigurationBuilder;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.FontFace;
import org.chartbridge.document.export.Typeface;
import org.chartbridge.image.FontFiles;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlWriter;

/** The fonts that documents are set in, as the formatter wants to be told of them. */
final class PdfFontList {
  private final XmlElement fonts = element("fonts");
  private final Set<URI> files = new LinkedHashSet<>();

  /**
   * @param typefaces that the document is set in; those among them that are not always there are
   *     added
   */
  PdfFontList(Collection<Typeface> typefaces) {
    for (FontFiles.Family family : FontFiles.FAMILIES) {
      for (int face = 0; face < family.fileNames().size(); face++) {
        Path file = FontFiles.find(family.fileNames().get(face));
        if (file != null) {
          files.add(file.toUri());
          fonts.with(font(family.name(), face, file.toUri()));
        }
      }
    }
    typefaces.stream().filter(typeface -> !isUsual(typeface)).forEach(this::add);
    if (files.isEmpty()) {
      throw new ChartException("there are no fonts for PDF: neither the Liberation nor the DejaVu"
          + " fonts are installed");
    }
  }

  private static boolean isUsual(Typeface typeface) {
    return FontFiles.FAMILIES.stream().anyMatch(family -> family.name().equals(typeface.name()));
  }

  private void add(Typeface typeface) {
    for (int style = 0; style < typeface.faces().size(); style++) {
      FontFace face = typeface.face(style);
      URI uri = FontCollectionFiles.uri(face);
      files.add(uri);
      XmlElement font = font(typeface.name(), style, uri);
      // Bold letters that no file has are made of the others.
      boolean made = (style & Font.BOLD) != 0 && typeface.faces().get(Font.BOLD) == null;
      fonts.with(made ? font.with("simulate-style", "true") : font);
    }
  }

  private static XmlElement element(String name) {
    return new XmlElement("", name);
  }

  private static XmlElement font(String family, int face, URI file) {
    // No kerning: the figures are laid out by Java's metrics, which have none.
    return element("font").with("embed-url", file.toString()).with("kerning", "no")
        .with(element("font-triplet").with("name", family)
            .with("style", (face & Font.ITALIC) != 0 ? "italic" : "normal")
            .with("weight", (face & Font.BOLD) != 0 ? "bold" : "normal"));
  }

  Set<URI> files() {
    return files;
  }

  Configuration configuration() {
    XmlElement root = element("fop").with("version", "1.0").with(element("renderers")
        .with(element("renderer").with("mime", "application/pdf").with(fonts)));
    try {
      return new DefaultConfigurationBuilder().build(
          new ByteArrayInputStream(XmlWriter.write(root)));
    } catch (ConfigurationException e) {
      throw new IllegalStateException("the formatter does not take its configuration", e);
    }
  }
}
