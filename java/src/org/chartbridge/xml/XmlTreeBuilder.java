// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.xml.sax.Attributes;
import org.xml.sax.InputSource;
import org.xml.sax.Locator;
import org.xml.sax.SAXParseException;
import org.xml.sax.ext.DefaultHandler2;

/**
 * Builds the tree of a document from the parser's events, and words the parser's errors. Comments
 * in front of the root element become its first content; those behind it are not kept.
 */
final class XmlTreeBuilder extends DefaultHandler2 {
  private static final String DOCTYPE = "<!DOCTYPE";

  private final String text;
  private final int[] lineStarts;
  private final Deque<XmlElement> open = new ArrayDeque<>();
  private final List<XmlComment> prolog = new ArrayList<>();
  private int elements;
  private Locator locator;
  private XmlElement root;

  XmlTreeBuilder(String text) {
    this.text = text;
    this.lineStarts = lineStarts(text);
  }

  XmlElement root() {
    return root;
  }

  @Override
  public void setDocumentLocator(Locator documentLocator) {
    locator = documentLocator;
  }

  @Override
  public void startElement(String uri, String name, String qualifiedName, Attributes attributes) {
    int end = offset(locator.getLineNumber(), locator.getColumnNumber());
    // No start tag holds a second "<": attribute values have to escape it.
    int start = text.lastIndexOf('<', end - 1);
    XmlElement element = new XmlElement(uri, name, text, start, end);
    for (int i = 0; i < attributes.getLength(); i++) {
      String attributeUri = attributes.getURI(i);
      String prefix = attributeUri.isEmpty() ? "" : "{" + attributeUri + "}";
      element.with(prefix + attributes.getLocalName(i), attributes.getValue(i));
    }
    if (++elements > SafeXml.MAX_ELEMENTS) {
      throw element.error("there are more than " + SafeXml.MAX_ELEMENTS + " elements");
    }
    if (open.size() >= SafeXml.MAX_DEPTH) {
      throw element.error(SafeXml.TOO_DEEP);
    }
    if (open.isEmpty()) {
      root = element;
      prolog.forEach(root::with);
    } else {
      open.peek().with(element);
    }
    open.push(element);
  }

  @Override
  public void endElement(String uri, String name, String qualifiedName) {
    open.pop();
  }

  @Override
  public void characters(char[] characters, int start, int length) {
    open.peek().with(new XmlText(new String(characters, start, length)));
  }

  @Override
  public void comment(char[] characters, int start, int length) {
    XmlComment comment = new XmlComment(new String(characters, start, length));
    if (!open.isEmpty()) {
      open.peek().with(comment);
    } else if (root == null) {
      prolog.add(comment);
    }
  }

  @Override
  public InputSource resolveEntity(String name, String publicId, String baseUri, String systemId) {
    throw new ChartException("external entities are not allowed: " + systemId);
  }

  @Override
  public void error(SAXParseException error) {
    fatalError(error);
  }

  @Override
  public void fatalError(SAXParseException error) {
    int offset = offset(error.getLineNumber(), error.getColumnNumber());
    int doctype = text.lastIndexOf(DOCTYPE, offset);
    if (doctype >= 0 && offset <= doctype + DOCTYPE.length() + 1) {
      String message = ": a document type declaration (" + DOCTYPE + ") is not allowed";
      throw new ChartException(TextPosition.of(text, doctype) + message, error);
    }
    String place = TextPosition.of(text, offset) + ": ";
    if (offset >= text.stripTrailing().length() && root != null && !open.isEmpty()) {
      XmlElement element = open.peek();
      throw new ChartException(place + "the document ends inside <" + element.name()
              + ">, which begins at " + element.position(),
          error);
    }
    throw new ChartException(place + "not well-formed XML: " + error.getMessage(), error);
  }

  private int offset(int line, int column) {
    if (line < 1 || line > lineStarts.length) {
      return text.length();
    }
    return Math.min(text.length(), lineStarts[line - 1] + Math.max(1, column) - 1);
  }

  private static int[] lineStarts(String text) {
    List<Integer> starts = new ArrayList<>();
    starts.add(0);
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      boolean crOfCrLf = c == '\r' && i + 1 < text.length() && text.charAt(i + 1) == '\n';
      if (c == '\n' || (c == '\r' && !crOfCrLf)) {
        starts.add(i + 1);
      }
    }
    return starts.stream().mapToInt(Integer::intValue).toArray();
  }
}
