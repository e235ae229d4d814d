// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import java.io.IOException;
import java.io.InputStream;
import java.io.StringReader;
import java.util.Locale;
import javax.xml.XMLConstants;
import javax.xml.parsers.ParserConfigurationException;
import javax.xml.parsers.SAXParserFactory;
import javax.xml.transform.sax.SAXSource;
import javax.xml.transform.stream.StreamSource;
import javax.xml.validation.Schema;
import javax.xml.validation.SchemaFactory;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.xml.sax.InputSource;
import org.xml.sax.SAXException;
import org.xml.sax.XMLReader;

/**
 * The one place where XML is parsed. It is always the JDK's own parser, whatever other parser a
 * class path brings along, and it accepts no document type declaration, so that there are no
 * entities to expand and nothing to fetch.
 */
public final class SafeXml {
  /**
   * Documents describe charts and styles, sometimes with a little data; a larger one is a mistake
   * or an attack.
   */
  public static final int MAX_BYTES = 16 << 20;

  /** Elements nest this deep at most, so that walking a tree never exhausts a stack. */
  public static final int MAX_DEPTH = 512;

  /** What is said of an element that stands deeper. */
  public static final String TOO_DEEP =
      "elements are nested more than " + MAX_DEPTH + " levels deep";

  /** So many elements make a tree of some tens of megabytes. */
  public static final int MAX_ELEMENTS = 100_000;

  private static final String XERCES = "http://apache.org/xml/features/";

  private static final String JDK_LIMITS = "http://www.oracle.com/xml/jaxp/properties/";

  private SafeXml() {}

  /** A parser's method that sets one of its properties. */
  @FunctionalInterface
  public interface Properties {
    void set(String name, Object value) throws SAXException;
  }

  /**
   * Puts our limits in place of those of the JDK, which are other ones in every version: from Java
   * 24 on elements nest 100 deep at most, which trees outgrow. The depth is counted here instead.
   *
   * @throws SAXException when the parser does not know the limits
   */
  public static void setLimits(Properties parser) throws SAXException {
    parser.set(JDK_LIMITS + "maxElementDepth", "0");
    parser.set(JDK_LIMITS + "elementAttributeLimit", "10000");
  }

  /**
   * Reads a document.
   *
   * @param bytes the document in the encoding of its byte order mark or XML declaration, else in
   *     UTF-8
   * @return the root element
   * @throws ChartException when it is not well-formed, too large or too deep, or has a document
   *     type declaration; the message starts with the position
   */
  public static XmlElement parse(byte[] bytes) {
    if (bytes.length > MAX_BYTES) {
      throw new ChartException(
          "the document has " + bytes.length + " bytes; at most " + MAX_BYTES + " are accepted");
    }
    String text = XmlEncoding.decode(bytes);
    if (text.isBlank()) {
      throw new ChartException("the document is empty");
    }
    checkStart(text);
    XmlTreeBuilder builder = new XmlTreeBuilder(text);
    try {
      XMLReader reader = reader();
      reader.setContentHandler(builder);
      reader.setErrorHandler(builder);
      reader.setEntityResolver(builder);
      reader.setProperty("http://xml.org/sax/properties/lexical-handler", builder);
      reader.parse(new InputSource(new StringReader(text)));
    } catch (SAXException e) {
      throw new ChartException("the document cannot be read: " + e.getMessage(), e);
    } catch (IOException e) {
      throw new ChartException("the document cannot be read: " + e.getMessage(), e);
    }
    return builder.root();
  }

  /**
   * A document for those who have to read it themselves, such as a transformer, by the same rules
   * as {@link #parse}; call that first for its limits and its messages.
   *
   * @param bytes in the encoding of the byte order mark or XML declaration, else in UTF-8
   */
  public static SAXSource source(byte[] bytes) {
    try {
      return new SAXSource(reader(), new InputSource(new StringReader(XmlEncoding.decode(bytes))));
    } catch (SAXException e) {
      throw new IllegalStateException("the JDK's XML parser cannot be made safe", e);
    }
  }

  /** Whoever passes another kind of text here should read that, not a remark about prologs. */
  private static void checkStart(String text) {
    int start = text.length() - text.stripLeading().length();
    if (text.charAt(start) != '<') {
      String found = Character.toString(text.codePointAt(start));
      String message = ": found \"" + found + "\", expected \"<\": this is not XML";
      throw new ChartException(TextPosition.of(text, start) + message);
    }
  }

  /**
   * A schema from the jar. Thread-safe; keep it, since compiling takes much longer than using it.
   *
   * @param file the file's name in {@code org/chartbridge/schema}
   */
  public static Schema schema(String file) {
    try (InputStream in = SafeXml.class.getResourceAsStream("/org/chartbridge/schema/" + file)) {
      if (in == null) {
        throw new IllegalStateException("the schema " + file + " is missing in the jar");
      }
      SchemaFactory factory = SchemaFactory.newDefaultInstance();
      factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
      factory.setProperty(XMLConstants.ACCESS_EXTERNAL_DTD, "");
      factory.setProperty(XMLConstants.ACCESS_EXTERNAL_SCHEMA, "");
      return factory.newSchema(new StreamSource(in));
    } catch (SAXException | IOException e) {
      throw new IllegalStateException(
          "the schema " + file + " cannot be used: " + e.getMessage(), e);
    }
  }

  private static XMLReader reader() throws SAXException {
    try {
      SAXParserFactory factory = SAXParserFactory.newDefaultInstance();
      factory.setNamespaceAware(true);
      factory.setXIncludeAware(false);
      factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
      factory.setFeature(XERCES + "disallow-doctype-decl", true);
      factory.setFeature(XERCES + "nonvalidating/load-external-dtd", false);
      factory.setFeature("http://xml.org/sax/features/external-general-entities", false);
      factory.setFeature("http://xml.org/sax/features/external-parameter-entities", false);
      XMLReader reader = factory.newSAXParser().getXMLReader();
      setLimits(reader::setProperty);
      useEnglish(reader);
      return reader;
    } catch (ParserConfigurationException e) {
      throw new IllegalStateException("the JDK's XML parser cannot be made safe", e);
    }
  }

  /**
   * Messages of the parser become part of ours, which are English whatever the machine's locale.
   */
  @SuppressWarnings("deprecation")
  private static void useEnglish(XMLReader reader) throws SAXException {
    if (reader instanceof org.xml.sax.Parser parser) {
      parser.setLocale(Locale.ROOT);
    }
  }
}
