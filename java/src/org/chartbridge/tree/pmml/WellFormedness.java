// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.io.IOException;
import java.io.StringReader;
import java.util.Locale;
import javax.xml.XMLConstants;
import javax.xml.parsers.ParserConfigurationException;
import javax.xml.parsers.SAXParserFactory;
import org.chartbridge.xml.SafeXml;
import org.xml.sax.InputSource;
import org.xml.sax.SAXException;
import org.xml.sax.SAXParseException;
import org.xml.sax.XMLReader;
import org.xml.sax.helpers.DefaultHandler;

/**
 * Finds out what is wrong with XML, in English whatever the machine's locale, which the streaming
 * parser cannot do.
 */
final class WellFormedness {
  private WellFormedness() {}

  /** The first fault of a document, or null. */
  static SAXParseException fault(String text) {
    try {
      SAXParserFactory factory = SAXParserFactory.newDefaultInstance();
      factory.setNamespaceAware(true);
      factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
      factory.setFeature("http://apache.org/xml/features/disallow-doctype-decl", true);
      XMLReader reader = factory.newSAXParser().getXMLReader();
      SafeXml.setLimits(reader::setProperty);
      reader.setErrorHandler(new DefaultHandler());
      useEnglish(reader);
      reader.parse(new InputSource(new StringReader(text)));
      return null;
    } catch (SAXParseException e) {
      return e;
    } catch (SAXException | IOException | ParserConfigurationException e) {
      return null;
    }
  }

  @SuppressWarnings("deprecation")
  private static void useEnglish(XMLReader reader) throws SAXException {
    if (reader instanceof org.xml.sax.Parser parser) {
      parser.setLocale(Locale.ROOT);
    }
  }
}
