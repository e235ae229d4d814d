// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.Locale;
import java.util.Map;
import javax.xml.validation.Schema;
import javax.xml.validation.ValidatorHandler;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;
import org.xml.sax.ErrorHandler;
import org.xml.sax.SAXException;
import org.xml.sax.SAXNotRecognizedException;
import org.xml.sax.SAXNotSupportedException;
import org.xml.sax.SAXParseException;
import org.xml.sax.helpers.AttributesImpl;

/** Holds documents against a schema of the jar. Thread-safe. */
public final class SchemaCheck {
  private static final String LOCALE = "http://apache.org/xml/properties/locale";

  private final String file;
  private volatile Schema schema;

  public SchemaCheck(String file) {
    this.file = file;
  }

  /**
   * The first thing about the document that the schema does not allow, with its position; null when
   * it is valid.
   */
  public ChartException firstError(XmlElement root) {
    Walk walk = new Walk();
    try {
      ValidatorHandler handler = schema().newValidatorHandler();
      useEnglish(handler);
      handler.setErrorHandler(walk);
      handler.startDocument();
      handler.startPrefixMapping("", root.namespace());
      walk.visit(handler, root);
      handler.endPrefixMapping("");
      handler.endDocument();
    } catch (SAXException e) {
      return walk.error(e);
    }
    return walk.first;
  }

  private Schema schema() {
    if (schema == null) {
      synchronized (this) {
        if (schema == null) {
          schema = SafeXml.schema(file);
        }
      }
    }
    return schema;
  }

  private static void useEnglish(ValidatorHandler handler) {
    try {
      handler.setProperty(LOCALE, Locale.ROOT);
    } catch (SAXNotRecognizedException | SAXNotSupportedException e) {
      // Then the validator's part of a message is in the language of the machine; nothing else
      // changes.
      return;
    }
  }

  /**
   * Feeds a tree to the validator and knows at which element it is when the validator complains.
   */
  private static final class Walk implements ErrorHandler {
    private XmlElement current;
    private ChartException first;

    void visit(ValidatorHandler handler, XmlElement element) throws SAXException {
      current = element;
      handler.startElement(
          element.namespace(), element.name(), element.name(), attributes(element));
      for (XmlNode node : element.content()) {
        if (node instanceof XmlElement child) {
          visit(handler, child);
        } else if (node instanceof XmlText text && !text.text().isBlank()) {
          // Blank text means nothing in any version, but a validator minds it in empty elements.
          handler.characters(text.text().toCharArray(), 0, text.text().length());
        }
      }
      current = element;
      handler.endElement(element.namespace(), element.name(), element.name());
    }

    private static AttributesImpl attributes(XmlElement element) {
      AttributesImpl attributes = new AttributesImpl();
      for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
        String name = attribute.getKey();
        // Charts in JSON may have any name.
        int brace = name.startsWith("{") ? name.lastIndexOf('}') : -1;
        String uri = brace < 0 ? "" : name.substring(1, brace);
        String local = name.substring(brace + 1);
        // Hints about where a schema lies are for editors; which schema holds is decided here.
        if (!uri.equals(AttributeReader.SCHEMA_INSTANCE)) {
          attributes.addAttribute(uri, local, local, "CDATA", attribute.getValue());
        }
      }
      return attributes;
    }

    ChartException error(SAXException cause) {
      String message = "<" + current.name() + "> is not allowed like this: " + cause.getMessage();
      return new ChartException(current.error(message).getMessage(), cause);
    }

    @Override
    public void warning(SAXParseException warning) {
      // Warnings leave a document valid.
    }

    @Override
    public void error(SAXParseException e) {
      if (first == null) {
        first = error((SAXException) e);
      }
    }

    @Override
    public void fatalError(SAXParseException e) {
      error(e);
    }
  }
}
