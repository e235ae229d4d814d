// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

/** The namespaces of OpenDocument, each by the prefix that everybody knows it by. */
final class OdtNamespaces {
  private static final String OASIS = "urn:oasis:names:tc:opendocument:xmlns:";

  static final String VERSION = "1.3";

  /** Attributes of a root element, names and values in turn. */
  static final String[] ROOT = {
      "office:version", VERSION,
      "xmlns:office", OASIS + "office:1.0",
      "xmlns:style", OASIS + "style:1.0",
      "xmlns:text", OASIS + "text:1.0",
      "xmlns:table", OASIS + "table:1.0",
      "xmlns:draw", OASIS + "drawing:1.0",
      "xmlns:fo", OASIS + "xsl-fo-compatible:1.0",
      "xmlns:svg", OASIS + "svg-compatible:1.0",
      "xmlns:meta", OASIS + "meta:1.0",
      "xmlns:dc", "http://purl.org/dc/elements/1.1/",
      "xmlns:xlink", "http://www.w3.org/1999/xlink",
  };

  private OdtNamespaces() {}
}
