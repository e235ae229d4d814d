// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.atomic.AtomicLong;
import org.apache.xmlgraphics.image.loader.spi.ImageImplRegistry;
import org.chartbridge.document.figure.Illustration;

/**
 * The figures of the documents that are being formatted, each under a URI of its own: the formatter
 * knows pictures by URIs only, and looks for ways to read them in one place for the whole JVM.
 */
final class PdfFigures implements AutoCloseable {
  static final String SCHEME = "figure:";

  private static final Map<String, Illustration> FIGURES = new ConcurrentHashMap<>();
  private static final AtomicLong NEXT = new AtomicLong();

  static {
    ImageImplRegistry registry = ImageImplRegistry.getDefaultInstance();
    registry.registerPreloader(new FigurePreloader());
    registry.registerLoaderFactory(new FigureLoaderFactory());
  }

  private final List<String> own = new ArrayList<>();
  private final MemoryStreams streams = new MemoryStreams();

  /** The figure of a URI, or null. */
  static Illustration find(String uri) {
    return uri == null ? null : FIGURES.get(uri);
  }

  /** Gives a figure a URI, until this object is closed. */
  String add(Illustration illustration) {
    String uri = SCHEME + NEXT.incrementAndGet();
    FIGURES.put(uri, illustration);
    own.add(uri);
    return uri;
  }

  @Override
  public void close() {
    own.forEach(FIGURES::remove);
    own.clear();
    streams.close();
  }
}
