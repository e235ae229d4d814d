// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.util.ArrayList;
import java.util.List;
import java.util.logging.Level;
import java.util.logging.Logger;

/**
 * Keeps the libraries that write PDF and draw SVG from the host's standard error, where their log
 * goes when nobody sets it up. What they have to say comes back as exceptions and events, which
 * become our messages.
 */
public final class LibraryLogs {
  private static final List<String> NAMES = List.of("org.apache.fop", "org.apache.xmlgraphics",
      "org.apache.batik", "org.apache.fontbox", "org.apache.pdfbox");

  /** Held, since a logger that nobody holds is forgotten with its level. */
  private static final List<Logger> SILENCED = new ArrayList<>();

  private LibraryLogs() {}

  /**
   * Turns the logs off for this JVM, except where the host has set a level for one of them. Costs
   * nothing after the first call.
   */
  public static synchronized void silence() {
    if (!SILENCED.isEmpty()) {
      return;
    }
    for (String name : NAMES) {
      Logger logger = Logger.getLogger(name);
      if (logger.getLevel() == null) {
        logger.setLevel(Level.OFF);
      }
      SILENCED.add(logger);
    }
  }
}
