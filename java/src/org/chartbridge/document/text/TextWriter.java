// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.io.IOException;
import java.io.OutputStream;
import org.chartbridge.document.export.DocumentWriter;
import org.chartbridge.document.export.ExportSettings;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Metadata;

/** Writes documents as plain text, in lines of at most 80 columns that end with LF. */
public final class TextWriter implements DocumentWriter {
  static final int WIDTH = 80;

  @Override
  public void write(Document document, ExportSettings settings, OutputStream out)
      throws IOException {
    StringBuilder text = new StringBuilder();
    title(document.metadata(), text);
    TextBlocks blocks = new TextBlocks(document, settings, text);
    document.blocks().forEach(block -> block.accept(blocks));
    EncodedText.write(text.toString().stripTrailing() + "\n", settings.charset(), out);
  }

  private static void title(Metadata metadata, StringBuilder text) {
    if (metadata.isEmpty()) {
      return;
    }
    String rule = "=".repeat(WIDTH);
    text.append(rule).append('\n');
    append(metadata.title(), metadata, text);
    append(metadata.subtitle(), metadata, text);
    append(metadata.author(), metadata, text);
    append(metadata.date(), metadata, text);
    text.append(rule).append("\n\n");
  }

  private static void append(String line, Metadata metadata, StringBuilder text) {
    if (line != null) {
      TextLines.wrap(line, WIDTH, metadata.locale())
          .forEach(part -> text.append(part).append('\n'));
    }
  }
}
