// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import org.xml.sax.ContentHandler;
import org.xml.sax.SAXException;
import org.xml.sax.helpers.AttributesImpl;

/** Hands formatting objects to the formatter, element by element. */
final class FoEvents {
  private static final String FO = "http://www.w3.org/1999/XSL/Format";
  private static final String EXTENSIONS = "http://xmlgraphics.apache.org/fop/extensions";
  private static final String XML = "http://www.w3.org/XML/1998/namespace";

  private final ContentHandler out;

  FoEvents(ContentHandler out) {
    this.out = out;
  }

  /** What goes wrong while the formatter works on an event. */
  static final class FormattingException extends RuntimeException {
    private static final long serialVersionUID = 1L;

    FormattingException(SAXException cause) {
      super(cause);
    }
  }

  void startDocument() {
    call(() -> {
      out.startDocument();
      out.startPrefixMapping("fo", FO);
      out.startPrefixMapping("fox", EXTENSIONS);
    });
  }

  void endDocument() {
    call(() -> {
      out.endPrefixMapping("fox");
      out.endPrefixMapping("fo");
      out.endDocument();
    });
  }

  /**
   * @param attributes names and values in turn; a null value leaves the attribute out
   */
  FoEvents open(String name, String... attributes) {
    AttributesImpl all = new AttributesImpl();
    for (int i = 0; i < attributes.length; i += 2) {
      if (attributes[i + 1] != null) {
        add(all, attributes[i], attributes[i + 1]);
      }
    }
    call(() -> out.startElement(FO, name, "fo:" + name, all));
    return this;
  }

  private static void add(AttributesImpl all, String name, String value) {
    String local = name.substring(name.indexOf(':') + 1);
    String namespace = "";
    if (name.startsWith("fox:")) {
      namespace = EXTENSIONS;
    } else if (name.startsWith("xml:")) {
      namespace = XML;
    }
    all.addAttribute(namespace, local, name, "CDATA", value);
  }

  FoEvents close(String name) {
    call(() -> out.endElement(FO, name, "fo:" + name));
    return this;
  }

  FoEvents text(String text) {
    call(() -> out.characters(text.toCharArray(), 0, text.length()));
    return this;
  }

  /** An element without content. */
  FoEvents empty(String name, String... attributes) {
    return open(name, attributes).close(name);
  }

  @FunctionalInterface
  private interface Call {
    void run() throws SAXException;
  }

  private static void call(Call call) {
    try {
      call.run();
    } catch (SAXException e) {
      throw new FormattingException(e);
    }
  }
}
