// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import java.nio.charset.Charset;
import java.nio.charset.IllegalCharsetNameException;
import java.util.regex.Pattern;
import javax.xml.XMLConstants;
import javax.xml.transform.OutputKeys;
import javax.xml.transform.Templates;
import javax.xml.transform.Transformer;
import javax.xml.transform.TransformerConfigurationException;
import javax.xml.transform.TransformerException;
import javax.xml.transform.TransformerFactory;
import javax.xml.transform.stream.StreamResult;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartSource;
import org.chartbridge.format.GraphConversion;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/**
 * One application of a style sheet, by the JDK's own XSLT 1.0 processor. A style sheet is a program
 * that somebody else may have written: it can load nothing, call no Java and write no files.
 */
public final class StyleSheet {
  private static final Pattern NOTHING = Pattern.compile("(<\\?xml[^>]*\\?>)?\\s*");

  /** No XML declaration is longer. */
  private static final int DECLARATION_BYTES = 400;

  private final XmlElement root;
  private final byte[] sheet;
  private final SheetMessages messages = new SheetMessages();

  private StyleSheet(byte[] sheet) {
    root = parsed("The style sheet", sheet);
    this.sheet = sheet;
  }

  /**
   * Applies a style sheet.
   *
   * @param document XML, or a chart in the graph language, which becomes chart XML first
   * @param sheet XSLT 1.0
   * @return the result in the encoding that {@code xsl:output} names, else in UTF-8; empty when the
   *     style sheet puts out nothing, never null
   * @throws ChartException when one of them cannot be read or the style sheet fails; the message
   *     names which one, the place where that is known, and the reason
   */
  public static byte[] apply(byte[] document, byte[] sheet) {
    byte[] xml = xml(document);
    parsed("The document", xml);
    return new StyleSheet(sheet).transform(xml);
  }

  private static byte[] xml(byte[] document) {
    if (document == null || document.length == 0 || ChartSource.isXml(document)) {
      return document;
    }
    try {
      return GraphConversion.toXml(document);
    } catch (ChartException e) {
      throw new ChartException("The document: " + e.getMessage(), e);
    }
  }

  private static XmlElement parsed(String what, byte[] xml) {
    if (xml == null || xml.length == 0) {
      throw new ChartException(what + " is empty.");
    }
    try {
      return SafeXml.parse(xml);
    } catch (ChartException e) {
      throw new ChartException(what + ": " + e.getMessage(), e);
    }
  }

  private byte[] transform(byte[] document) {
    try {
      Templates templates = templates();
      checkEncoding(templates.getOutputProperties().getProperty(OutputKeys.ENCODING));
      Transformer transformer = templates.newTransformer();
      transformer.setErrorListener(messages);
      transformer.setURIResolver(messages);
      LimitedBytes result = new LimitedBytes();
      transformer.transform(SafeXml.source(document), new StreamResult(result));
      byte[] bytes = result.toByteArray();
      return isNothing(bytes) ? new byte[0] : bytes;
    } catch (TransformerException | RuntimeException e) {
      throw failure(e);
    } catch (StackOverflowError e) {
      throw failed("its templates or variables need each other without end", e);
    }
  }

  private Templates templates() throws TransformerConfigurationException {
    TransformerFactory factory = TransformerFactory.newDefaultInstance();
    // This also takes functions and elements away that are written in Java.
    factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
    factory.setAttribute(XMLConstants.ACCESS_EXTERNAL_DTD, "");
    factory.setAttribute(XMLConstants.ACCESS_EXTERNAL_STYLESHEET, "");
    factory.setErrorListener(messages);
    factory.setURIResolver(messages);
    return factory.newTemplates(SafeXml.source(sheet));
  }

  /** The processor would take UTF-8 instead and say so where nobody looks. */
  private void checkEncoding(String encoding) {
    if (encoding != null && !isKnown(encoding)) {
      throw failed("the output encoding \"" + encoding + "\" is not known", null);
    }
  }

  private static boolean isKnown(String encoding) {
    try {
      return Charset.isSupported(encoding);
    } catch (IllegalCharsetNameException e) {
      return false;
    }
  }

  /** A result tree without anything still gets an XML declaration. */
  private static boolean isNothing(byte[] result) {
    if (result.length > DECLARATION_BYTES) {
      return false;
    }
    // Every encoding of a declaration has its ASCII letters, some with zeros around them.
    String text = new String(result, java.nio.charset.StandardCharsets.ISO_8859_1);
    return NOTHING.matcher(text.replaceAll("[\\x00\\xFE\\xFF]", "")).matches();
  }

  private ChartException failure(Exception e) {
    for (Throwable cause = e; cause != null; cause = cause.getCause()) {
      if (cause instanceof ChartException known) {
        return known;
      }
      if (cause instanceof StackOverflowError) {
        return failed("its templates or variables need each other without end", e);
      }
    }
    return failed(messages.reason(e), e);
  }

  private ChartException failed(String reason, Throwable cause) {
    SheetPlaces places = new SheetPlaces(root);
    return new ChartException("The style sheet: " + places.located(reason), cause);
  }
}
