// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.IdentityHashMap;
import java.util.Map;
import java.util.Set;
import org.apache.batik.anim.dom.SVGDOMImplementation;
import org.apache.batik.anim.dom.SVGOMDocument;
import org.apache.batik.util.ParsedURL;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;
import org.w3c.dom.DOMException;
import org.w3c.dom.Document;
import org.w3c.dom.Element;

/**
 * The document of the SVG library, made from one that was parsed safely, with the place of each
 * element there.
 */
final class SvgDocument {
  private static final String SVG = "http://www.w3.org/2000/svg";
  private static final String XLINK = "http://www.w3.org/1999/xlink";
  private static final String XML = "http://www.w3.org/XML/1998/namespace";

  /** What could act rather than show, and is nothing that a picture needs. */
  private static final Set<String> LEFT_OUT = Set.of("script", "foreignObject");

  /** Without any address the library fails where it wants to tell of a mistake in a style sheet. */
  static final String ADDRESS = "svg:image";

  private final SVGOMDocument document =
      (SVGOMDocument) SVGDOMImplementation.getDOMImplementation().createDocument(SVG, "svg", null);
  private final Map<Element, XmlElement> places = new IdentityHashMap<>();

  private SvgDocument() {}

  /**
   * @throws ChartException when the bytes are no SVG, or refer to something outside
   */
  static SvgDocument read(byte[] bytes) {
    try {
      XmlElement root = SafeXml.parse(bytes);
      if (!root.name().equals("svg") || !root.namespace().equals(SVG)) {
        throw root.error(
            "found <" + root.name() + ">, which is not SVG; expected <svg xmlns=\"" + SVG + "\">");
      }
      SvgReferences.check(root);
      SvgValues.check(root);
      SvgDocument made = new SvgDocument();
      made.document.setParsedURL(new ParsedURL(ADDRESS));
      made.fill(made.document.getDocumentElement(), root);
      return made;
    } catch (ChartException e) {
      throw new ChartException("The SVG image: " + e.getMessage(), e);
    }
  }

  Document document() {
    return document;
  }

  /** The element as it was written; null for one that the library has made itself. */
  XmlElement place(Element element) {
    return places.get(element);
  }

  private void fill(Element target, XmlElement source) {
    places.put(target, source);
    for (Map.Entry<String, String> attribute : source.attributes().entrySet()) {
      setAttribute(target, attribute.getKey(), attribute.getValue());
    }
    for (XmlNode node : source.content()) {
      if (node instanceof XmlText text) {
        target.appendChild(document.createTextNode(text.text()));
      } else if (node instanceof XmlElement child && isShown(child)) {
        Element element = created(child);
        fill(element, child);
        target.appendChild(element);
      }
    }
  }

  private Element created(XmlElement element) {
    try {
      return document.createElementNS(SVG, element.name());
    } catch (DOMException e) {
      throw element.error("found <" + element.name() + ">, which is no element of SVG 1.1");
    }
  }

  /** Editors leave elements of their own in the document. */
  private static boolean isShown(XmlElement element) {
    return element.namespace().equals(SVG) && !LEFT_OUT.contains(element.name());
  }

  private static void setAttribute(Element target, String name, String value) {
    int brace = name.lastIndexOf('}');
    if (brace < 0) {
      target.setAttributeNS(null, name, value);
      // SVG 2 has the attribute without a namespace; the library knows SVG 1.1.
      if (name.equals("href") && !target.hasAttributeNS(XLINK, "href")) {
        target.setAttributeNS(XLINK, "xlink:href", value);
      }
      return;
    }
    String uri = name.substring(1, brace);
    String local = name.substring(brace + 1);
    if (uri.equals(XLINK)) {
      target.setAttributeNS(XLINK, "xlink:" + local, value);
    } else if (uri.equals(XML) && !local.equals("base")) {
      target.setAttributeNS(XML, "xml:" + local, value);
    }
  }
}
