// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.Charset;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.figure.FigureRenderer;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.html.HtmlWriter;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.odt.OdtWriter;
import org.chartbridge.document.pdf.PdfWriter;
import org.chartbridge.document.text.CsvTables;
import org.chartbridge.document.text.TextWriter;
import org.chartbridge.image.OutputFiles;

/** Runs an export of a document that was read. */
public final class DocumentExport {
  private DocumentExport() {}

  /**
   * Writes the file that a request asks for, whole or not at all.
   *
   * @param charset the encoding of CSV and text when the request names none
   * @throws ChartException when that is impossible; the message says what and where. That of a
   *     check has a line for each finding.
   */
  public static void run(Document document, ExportRequest request, Charset charset) {
    Document asked = request.paper() == null ? document : document.on(request.paper());
    Locale locale =
        request.language() == null ? document.metadata().locale() : request.language();
    asked = new Document(asked.metadata().in(locale), asked.paper(), asked.blocks());
    FigureRenderer renderer = new FigureRenderer(locale, request.style());
    if (request.to() == Target.CHECK) {
      check(asked, renderer);
      return;
    }
    // CSV has no figures.
    Map<Figure, Illustration> figures = request.to() == Target.CSV
        ? Map.of() : ExportSettings.figures(asked, renderer);
    ExportSettings settings = new ExportSettings(
        figures, request.charset() == null ? charset : request.charset(), request.table());
    byte[] bytes = bytes(asked, settings, writer(request.to()));
    OutputFiles.write(OutputFiles.path(request.output()), out -> out.write(bytes));
  }

  private static byte[] bytes(Document document, ExportSettings settings, DocumentWriter writer) {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream(1 << 16);
    try {
      writer.write(document, settings, bytes);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return bytes.toByteArray();
  }

  private static DocumentWriter writer(Target target) {
    return switch (target) {
      case HTML -> new HtmlWriter();
      case PDF -> new PdfWriter();
      case ODT -> new OdtWriter();
      case CSV -> new CsvTables();
      case TEXT -> new TextWriter();
      default -> throw new IllegalArgumentException(target.name());
    };
  }

  /** All findings, one a line. */
  private static void check(Document document, FigureRenderer renderer) {
    List<String> findings = new ArrayList<>();
    for (Block block : document.blocks()) {
      if (block instanceof Figure figure) {
        try {
          renderer.render(figure);
        } catch (ChartException e) {
          findings.add(e.getMessage());
        }
      }
    }
    if (!findings.isEmpty()) {
      throw new FindingsException(findings);
    }
  }
}
