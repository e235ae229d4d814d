// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.io.File;
import java.io.IOException;
import java.io.OutputStream;
import java.net.URI;
import org.apache.fop.apps.EnvironmentProfile;
import org.apache.fop.apps.EnvironmentalProfileFactory;
import org.apache.fop.apps.FOPException;
import org.apache.fop.apps.FOUserAgent;
import org.apache.fop.apps.Fop;
import org.apache.fop.apps.FopFactory;
import org.apache.fop.apps.FopFactoryBuilder;
import org.apache.fop.apps.io.ResourceResolverFactory;
import org.apache.xmlgraphics.util.MimeConstants;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.export.PageTables;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Metadata;
import org.chartbridge.image.LibraryLogs;
import org.xml.sax.helpers.DefaultHandler;

/**
 * Writes PDF: pages with numbers, bookmarks, embedded fonts, figures as vectors, and a structure
 * for readers that read aloud.
 */
public final class PdfWriter implements DocumentWriter {
  private static final float PIXELS_PER_INCH = 96;

  static {
    LibraryLogs.silence();
  }

  @Override
  public void write(Document document, ExportSettings settings, OutputStream out)
      throws IOException {
    FormatterReport report = new FormatterReport();
    PageTables tables = new PageTables(document);
    PdfText setting = setting(document, settings, tables);
    try (PdfFigures figures = new PdfFigures()) {
      FOUserAgent agent = factory(setting).newFOUserAgent();
      agent.getEventBroadcaster().addEventListener(report);
      describe(document.metadata(), agent);
      agent.setDocumentHandlerOverride(new LanguageHandler(agent));
      Fop fop = agent.newFop(MimeConstants.MIME_PDF, out);
      FoEvents events = new FoEvents(fop.getDefaultHandler());
      new FoDocument(document, settings, figures, tables, setting, events).write();
    } catch (FOPException | RuntimeException e) {
      throw failure(report, e);
    }
    report.check();
  }

  /** What the formatter reported says more than what it threw afterwards. */
  private static ChartException failure(FormatterReport report, Exception e) {
    if (e instanceof ChartException own) {
      return own;
    }
    report.check();
    Throwable cause = e;
    while (cause.getCause() != null) {
      cause = cause.getCause();
    }
    return new ChartException("the PDF cannot be laid out: " + cause.getMessage(), e);
  }

  /** Goes through the document once to learn which fonts it needs. */
  private static PdfText setting(Document document, ExportSettings settings, PageTables tables) {
    PdfText setting = new PdfText(document);
    try (PdfFigures figures = new PdfFigures()) {
      FoEvents nowhere = new FoEvents(new DefaultHandler());
      new FoDocument(document, settings, figures, tables, setting, nowhere).write();
    }
    setting.check();
    return setting;
  }

  private static FopFactory factory(PdfText setting) {
    PdfFontList fonts = new PdfFontList(setting.typefaces());
    URI root = new File("/").toURI();
    PdfResources resources = new PdfResources(fonts.files());
    EnvironmentProfile environment =
        EnvironmentalProfileFactory.createRestrictedIO(root, resources);
    FopFactory factory = new FopFactoryBuilder(environment)
        .setConfiguration(fonts.configuration())
        .setAccessibility(true)
        .setSourceResolution(PIXELS_PER_INCH)
        .build();
    // The builder leaves the fonts to a resolver of its own, which knows nothing of collections.
    factory.getFontManager().setResourceResolver(
        ResourceResolverFactory.createInternalResourceResolver(root, resources));
    return factory;
  }

  private static void describe(Metadata metadata, FOUserAgent agent) {
    agent.setProducer("chartbridge");
    agent.setCreator("chartbridge");
    agent.setTitle(metadata.title() == null ? "Document" : metadata.title());
    if (metadata.author() != null) {
      agent.setAuthor(metadata.author());
    }
    if (metadata.subtitle() != null) {
      agent.setSubject(metadata.subtitle());
    }
  }
}
