// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.io.IOException;
import java.nio.file.Path;
import javax.xml.XMLConstants;
import javax.xml.parsers.ParserConfigurationException;
import javax.xml.parsers.SAXParser;
import javax.xml.parsers.SAXParserFactory;
import org.chartbridge.xml.SafeXml;
import org.xml.sax.Attributes;
import org.xml.sax.Locator;
import org.xml.sax.SAXException;
import org.xml.sax.SAXParseException;
import org.xml.sax.helpers.DefaultHandler;

/** Looks how deep a schema nests before a compiler walks down into it. */
final class SchemaDepth extends DefaultHandler {
  private Locator locator;
  private int depth;

  private SchemaDepth() {}

  /**
   * @throws SAXException when it nests too deep or is not well-formed
   */
  static void check(Path schema) throws SAXException, IOException {
    try {
      SAXParserFactory factory = SAXParserFactory.newDefaultInstance();
      factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
      SAXParser parser = factory.newSAXParser();
      SafeXml.setLimits(parser::setProperty);
      parser.setProperty(XMLConstants.ACCESS_EXTERNAL_DTD, "");
      parser.setProperty(XMLConstants.ACCESS_EXTERNAL_SCHEMA, "");
      parser.parse(schema.toFile(), new SchemaDepth());
    } catch (ParserConfigurationException e) {
      throw new IllegalStateException("the JDK's XML parser cannot be made safe", e);
    }
  }

  @Override
  public void setDocumentLocator(Locator documentLocator) {
    locator = documentLocator;
  }

  @Override
  public void startElement(String uri, String name, String qualifiedName, Attributes attributes)
      throws SAXException {
    if (++depth > SafeXml.MAX_DEPTH) {
      String place =
          "line " + locator.getLineNumber() + ", column " + locator.getColumnNumber() + ": ";
      throw new SAXParseException(place + SafeXml.TOO_DEEP, locator);
    }
  }

  @Override
  public void endElement(String uri, String name, String qualifiedName) {
    depth--;
  }
}
