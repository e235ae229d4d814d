// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import org.apache.fop.events.Event;
import org.apache.fop.events.EventFormatter;
import org.apache.fop.events.EventListener;
import org.apache.fop.events.model.EventSeverity;
import org.chartbridge.chart.ChartException;

/**
 * Listens to the formatter, which otherwise writes to the standard error output and goes on without
 * a picture or a character. A document is complete or is not written.
 */
final class FormatterReport implements EventListener {
  private String problem;

  @Override
  public void processEvent(Event event) {
    if (problem != null) {
      return;
    }
    if (event.getEventKey().equals("glyphNotAvailable")) {
      Object character = event.getParam("ch");
      problem = "the fonts that are embedded into PDF lack the character \"" + character + "\""
          + (character instanceof Character c ? String.format(" (U+%04X)", (int) c) : "");
    } else if (event.getSeverity() == EventSeverity.ERROR
        || event.getSeverity() == EventSeverity.FATAL) {
      problem = "the PDF cannot be laid out: " + EventFormatter.format(event);
    }
  }

  /**
   * @throws ChartException when something is missing
   */
  void check() {
    if (problem != null) {
      throw new ChartException(problem);
    }
  }
}
