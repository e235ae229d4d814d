// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.io.StringReader;
import java.util.Arrays;
import java.util.List;
import javax.xml.stream.XMLInputFactory;
import javax.xml.stream.XMLStreamConstants;
import javax.xml.stream.XMLStreamException;
import javax.xml.stream.XMLStreamReader;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.tree.TreeException;
import org.chartbridge.xml.SafeXml;
import org.xml.sax.SAXException;
import org.xml.sax.SAXParseException;

/**
 * Goes through a document element by element. Documents of forests are large and their nodes nest
 * deeply, so nothing is kept but what the reader takes. Elements of other namespaces than the
 * root's are passed over with all that is in them. Document type declarations are refused, so there
 * are no entities to expand and nothing to fetch.
 */
final class PmmlCursor {
  private final String text;
  private final XMLStreamReader reader;
  private String namespace;
  private int depth;
  /** Where the last start tag begins. The parser itself only knows how far it has looked ahead. */
  private int tagStart;

  PmmlCursor(String text) {
    this.text = text;
    XMLInputFactory factory = XMLInputFactory.newDefaultFactory();
    factory.setProperty(XMLInputFactory.SUPPORT_DTD, false);
    factory.setProperty(XMLInputFactory.IS_SUPPORTING_EXTERNAL_ENTITIES, false);
    factory.setProperty(XMLInputFactory.IS_COALESCING, true);
    try {
      SafeXml.setLimits(factory::setProperty);
      reader = factory.createXMLStreamReader(new StringReader(text));
    } catch (XMLStreamException e) {
      throw malformed(e);
    } catch (SAXException e) {
      throw new IllegalStateException("the JDK's XML parser has no limits to set", e);
    }
  }

  /** Goes to the root element, whose namespace becomes the one of the document. */
  void root() {
    while (next() != XMLStreamConstants.START_ELEMENT) {
      if (reader.getEventType() == XMLStreamConstants.END_DOCUMENT) {
        throw error("the document is empty");
      }
    }
    namespace = namespaceUri();
  }

  /** Reads to the end, so that a mistake behind the root element is found too. */
  void finish() {
    while (reader.getEventType() != XMLStreamConstants.END_DOCUMENT) {
      next();
    }
  }

  /**
   * Goes to the next element within the current one; the caller enters or skips each before it asks
   * for the next.
   *
   * @return false when the current element ends
   */
  boolean nextChild() {
    while (true) {
      int event = next();
      if (event == XMLStreamConstants.END_ELEMENT) {
        return false;
      }
      if (event == XMLStreamConstants.START_ELEMENT) {
        if (namespaceUri().equals(namespace)) {
          return true;
        }
        skip();
      }
    }
  }

  /** Passes over the current element with all that is in it. */
  void skip() {
    int open = 1;
    while (open > 0) {
      int event = next();
      open += event == XMLStreamConstants.START_ELEMENT ? 1 : 0;
      open -= event == XMLStreamConstants.END_ELEMENT ? 1 : 0;
    }
  }

  /** The character data of the current element, up to its end; elements in it are passed over. */
  String text() {
    StringBuilder found = new StringBuilder();
    for (int event = next(); event != XMLStreamConstants.END_ELEMENT; event = next()) {
      if (event == XMLStreamConstants.START_ELEMENT) {
        skip();
      } else if (event == XMLStreamConstants.CHARACTERS || event == XMLStreamConstants.CDATA) {
        found.append(reader.getText());
      }
    }
    return found.toString();
  }

  String name() {
    return reader.getLocalName();
  }

  String namespaceUri() {
    return reader.getNamespaceURI() == null ? "" : reader.getNamespaceURI();
  }

  /** The value of an attribute, or null. */
  String attribute(String attribute) {
    return reader.getAttributeValue(null, attribute);
  }

  String required(String attribute) {
    String value = attribute(attribute);
    if (value == null) {
      throw error("<" + name() + "> needs the attribute " + attribute);
    }
    return value;
  }

  /** A number, or {@code otherwise} when the attribute is not there. */
  double number(String attribute, double otherwise) {
    String value = attribute(attribute);
    if (value == null) {
      return otherwise;
    }
    try {
      double number = Double.parseDouble(value.trim());
      if (Double.isFinite(number)) {
        return number;
      }
    } catch (NumberFormatException e) {
      throw notNumber(attribute, value);
    }
    throw notNumber(attribute, value);
  }

  private TreeException notNumber(String attribute, String value) {
    return error("attribute " + attribute + " of <" + name() + ">: found \"" + value
        + "\", expected a number");
  }

  /** The attribute's place in a list of words; {@code otherwise} when it is not there. */
  int choice(String attribute, int otherwise, String... words) {
    String value = attribute(attribute);
    if (value == null) {
      return otherwise;
    }
    int index = Arrays.asList(words).indexOf(value.trim());
    if (index < 0) {
      throw error("attribute " + attribute + " of <" + name() + ">: found \"" + value
          + "\", expected one of " + String.join(", ", List.of(words)));
    }
    return index;
  }

  /** Where the current element begins, to be given to {@link #error(int, String)} later. */
  int offset() {
    return tagStart;
  }

  TreeException error(String message) {
    return error(offset(), message);
  }

  TreeException error(int offset, String message) {
    return new TreeException(
        "PMML document, " + TextPosition.of(text, offset) + ": " + message + ".");
  }

  private int next() {
    int event;
    try {
      event = reader.next();
    } catch (XMLStreamException e) {
      throw malformed(e);
    }
    if (event == XMLStreamConstants.DTD) {
      int doctype = Math.max(0, text.indexOf("<!DOCTYPE"));
      throw error(doctype, "a document type declaration (<!DOCTYPE) is not allowed");
    }
    if (event == XMLStreamConstants.START_ELEMENT) {
      depth++;
      tagStart = nextStartTag(depth == 1 ? 0 : tagStart + 1);
      if (depth > SafeXml.MAX_DEPTH) {
        throw error(SafeXml.TOO_DEEP);
      }
    }
    if (event == XMLStreamConstants.END_ELEMENT) {
      depth--;
    }
    return event;
  }

  /** The next start tag in the text, which is well-formed as far as that. */
  private int nextStartTag(int from) {
    int at = text.indexOf('<', from);
    while (at >= 0 && at + 1 < text.length()) {
      char next = text.charAt(at + 1);
      if (next != '!' && next != '?' && next != '/') {
        return at;
      }
      String end = text.startsWith("<!--", at) ? "-->"
          : text.startsWith("<![CDATA[", at) ? "]]>" : next == '?' ? "?>" : ">";
      int after = text.indexOf(end, at + 2);
      at = after < 0 ? -1 : text.indexOf('<', after);
    }
    return from;
  }

  private TreeException malformed(XMLStreamException e) {
    SAXParseException fault = WellFormedness.fault(text);
    if (fault == null) {
      return new TreeException("PMML document: not well-formed XML: " + e.getMessage() + ".", e);
    }
    TextPosition at = new TextPosition(
        Math.max(1, fault.getLineNumber()), Math.max(1, fault.getColumnNumber()));
    TextPosition end = TextPosition.of(text, text.stripTrailing().length());
    boolean atEnd = depth > 0
        && (at.line() > end.line() || at.line() == end.line() && at.column() >= end.column());
    String reason = fault.getMessage().strip();
    return new TreeException("PMML document, " + at + ": "
        + (atEnd ? "the document ends too early: " : "not well-formed XML: ") + reason
        + (reason.endsWith(".") ? "" : "."), e);
  }
}
