// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.io.IOException;
import java.io.OutputStream;
import org.chartbridge.document.model.Document;

/** Writes documents in one format. */
@FunctionalInterface
public interface DocumentWriter {
  /**
   * @param out is not closed
   */
  void write(Document document, ExportSettings settings, OutputStream out) throws IOException;
}
